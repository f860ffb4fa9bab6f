#pragma once

#include <QProcess>
#include <QString>

namespace kelvane::testing {

// A private D-Bus daemon with the rules of a session bus. The daemon ends with the object.
class PrivateBus {
 public:
  // The socket is in `folder`, which must have a short path and is the home folder of the services
  // that the bus starts. Throws std::runtime_error if the bus doesn't start.
  explicit PrivateBus(const QString& folder);
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus();

  // The value of DBUS_SESSION_BUS_ADDRESS or DBUS_SYSTEM_BUS_ADDRESS.
  const QString& Address() const { return address_; }

 private:
  QProcess daemon_;
  QString address_;
};

}  // namespace kelvane::testing
