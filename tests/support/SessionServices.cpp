#include "support/SessionServices.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QDBusConnectionInterface>
#include <QRegularExpression>
#include <array>
#include <stdexcept>

namespace kelvane::testing {

using namespace Qt::StringLiterals;

namespace {

QDBusConnection ConnectTo(const PrivateBus& bus) {
  QDBusConnection connection = QDBusConnection::connectToBus(bus.Address(), bus.Address());
  if (!connection.isConnected()) throw std::runtime_error("a bus doesn't answer");
  return connection;
}

}  // namespace

SessionServices::SessionServices() {
  session_ = ConnectTo(sessionBus_);
  system_ = ConnectTo(systemBus_);
  session_.registerObject("/org/freedesktop/portal/desktop", new PortalAnswers(*this),
                          QDBusConnection::ExportAllSlots);
  system_.registerObject("/org/freedesktop/login1", new LogindAnswers(*this),
                         QDBusConnection::ExportAllSlots);
  session_.connect(QString(), QString(), "com.canonical.Unity.LauncherEntry", "Update", this,
                   SLOT(TakeLauncherUpdate(QString, QVariantMap)));
}

SessionServices::~SessionServices() {
  if (logindsEnd_ >= 0) ::close(logindsEnd_);
  QDBusConnection::disconnectFromBus(session_.name());
  QDBusConnection::disconnectFromBus(system_.name());
}

void SessionServices::Offer(QDBusConnection& bus, const QString& service) {
  if (!bus.registerService(service)) throw std::runtime_error("a service can't be offered");
}

bool SessionServices::Inhibited() const {
  if (!portalsCaller_.isEmpty() && session_.interface()->isServiceRegistered(portalsCaller_)) {
    return true;
  }
  if (logindsEnd_ < 0) return false;
  pollfd end{logindsEnd_, POLLIN, 0};
  return ::poll(&end, 1, 0) == 0;
}

int SessionServices::SystemBusConnections() const {
  const QStringList names = system_.interface()->registeredServiceNames();
  return static_cast<int>(names.filter(QRegularExpression("^:")).size()) - 1;
}

void SessionServices::TakeLauncherUpdate(const QString& entry, const QVariantMap& properties) {
  progress_.clear();
  if (!properties.value("progress-visible").toBool()) return;
  progress_ = u"%1 %2%"_s.arg(entry).arg(qRound(properties.value("progress").toDouble() * 100));
  progressSoFar_ << progress_;
}

QDBusObjectPath PortalAnswers::Inhibit(const QString& /*window*/, uint flags,
                                       const QVariantMap& options, const QDBusMessage& call) {
  services_.asked_ << u"portal: %1, %2"_s.arg(flags).arg(options.value("reason").toString());
  call.setDelayedReply(services_.silent_);
  const QString request = u"/org/freedesktop/portal/desktop/request/1"_s;
  if (!services_.silent_) {
    if (!services_.refuses_) services_.portalsCaller_ = call.service();
    QDBusMessage response = QDBusMessage::createTargetedSignal(
        call.service(), request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
    response << (services_.refuses_ ? 2U : 0U) << QVariantMap();
    services_.session_.send(response);
  }
  return QDBusObjectPath(request);
}

QDBusUnixFileDescriptor LogindAnswers::Inhibit(const QString& what, const QString& who,
                                               const QString& why, const QString& mode) {
  services_.asked_ << u"logind: "_s + QStringList{what, who, why, mode}.join(", ");
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return {};
  if (services_.logindsEnd_ >= 0) ::close(services_.logindsEnd_);
  services_.logindsEnd_ = ends[0];
  QDBusUnixFileDescriptor given(ends[1]);  // a copy
  ::close(ends[1]);
  return given;
}

}  // namespace kelvane::testing
