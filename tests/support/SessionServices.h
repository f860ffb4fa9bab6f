#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

#include "support/PrivateBus.h"

namespace kelvane::testing {

// The services that are told of long jobs: the desktop portal and a launcher on a private session
// bus, and logind on a private system bus. They answer while events are served.
class SessionServices : public QObject {
  Q_OBJECT
 public:
  SessionServices();
  ~SessionServices() override;

  const QString& SessionAddress() const { return sessionBus_.Address(); }
  const QString& SystemAddress() const { return systemBus_.Address(); }

  // These put a service on its bus. At first neither is there.
  void OfferPortal() { Offer(session_, "org.freedesktop.portal.Desktop"); }
  void OfferLogind() { Offer(system_, "org.freedesktop.login1"); }
  // From now on the portal takes calls without answering them.
  void KeepThePortalSilent() { silent_ = true; }
  // From now on the portal answers calls, and then says that its backend refuses.
  void LetThePortalRefuse() { refuses_ = true; }

  // One line for each call so far, such as "portal: 4, Cropping a video" (4 is the flag for
  // suspending) or "logind: sleep, Kelvane, Cropping a video, block".
  const QStringList& Asked() const { return asked_; }
  // Whether the portal's last caller is still on its bus, or logind's last descriptor still open.
  bool Inhibited() const;
  // What the launcher shows: "application://kelvane.desktop 42%", or "" for no progress.
  const QString& Progress() const { return progress_; }
  // All progress that the launcher has shown.
  const QStringList& ProgressSoFar() const { return progressSoFar_; }
  // How many connections the system bus has, apart from this object's own.
  int SystemBusConnections() const;

 public slots:
  void TakeLauncherUpdate(const QString& entry, const QVariantMap& properties);

 private:
  friend class PortalAnswers;
  friend class LogindAnswers;

  static void Offer(QDBusConnection& bus, const QString& service);

  QTemporaryDir sessionFolder_;
  QTemporaryDir systemFolder_;
  PrivateBus sessionBus_{sessionFolder_.path()};
  PrivateBus systemBus_{systemFolder_.path()};
  QDBusConnection session_{QString()};
  QDBusConnection system_{QString()};
  bool silent_ = false;
  bool refuses_ = false;
  QStringList asked_;
  QString portalsCaller_;
  int logindsEnd_ = -1;  // of a pipe; logind's last caller has the other end
  QString progress_;
  QStringList progressSoFar_;
};

// These two answer the calls to the portal and to logind.
class PortalAnswers : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Inhibit")
 public:
  explicit PortalAnswers(SessionServices& services) : QObject(&services), services_(services) {}
 public slots:
  QDBusObjectPath Inhibit(const QString& window, uint flags, const QVariantMap& options,
                          const QDBusMessage& call);

 private:
  SessionServices& services_;
};

class LogindAnswers : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")
 public:
  explicit LogindAnswers(SessionServices& services) : QObject(&services), services_(services) {}
 public slots:
  QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why,
                                  const QString& mode);

 private:
  SessionServices& services_;
};

}  // namespace kelvane::testing
