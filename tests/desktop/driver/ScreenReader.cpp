#include "desktop/driver/ScreenReader.h"

#include <sys/prctl.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QProcessEnvironment>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace kelvane::desktop {
namespace {

const QString kAccessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString kAction = QStringLiteral("org.a11y.atspi.Action");
const QString kText = QStringLiteral("org.a11y.atspi.Text");
const QString kValue = QStringLiteral("org.a11y.atspi.Value");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kRegistry = QStringLiteral("org.a11y.atspi.Registry");
const QString kObjectEvent = QStringLiteral("org.a11y.atspi.Event.Object");

QVariant Ask(const QDBusConnection& bus, const QString& service, const QString& path,
             const QString& interface, const QString& method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
  call.setArguments(arguments);
  return bus.call(call).arguments().value(0);
}

void Hear(const SpokenNode& node, int level, QString& lines) {
  if (!node.Shows()) return;
  const bool layout = node.Role() == QLatin1String("filler") && node.Name().isEmpty();
  if (!layout) lines += QString(2 * level, QLatin1Char(' ')) + node.Line() + QLatin1Char('\n');
  for (const SpokenNode& child : node.Children()) Hear(child, layout ? level : level + 1, lines);
}

template <class Condition>
SpokenNode FindIf(const SpokenNode& node, Condition condition) {
  if (!node.Shows()) return {};
  if (condition(node)) return node;
  for (const SpokenNode& child : node.Children()) {
    SpokenNode found = FindIf(child, condition);
    if (!found.Id().isEmpty()) return found;
  }
  return {};
}

}  // namespace

SpokenNode::SpokenNode(QDBusConnection bus, QString service, QString path)
    : bus_(std::move(bus)), service_(std::move(service)), path_(std::move(path)) {}

QVariant SpokenNode::Call(const QString& interface, const QString& method,
                          const QVariantList& arguments) const {
  return Ask(bus_, service_, path_, interface, method, arguments);
}

QVariant SpokenNode::Property(const QString& interface, const QString& property) const {
  const QVariant answer = Call(kProperties, QStringLiteral("Get"), {interface, property});
  return answer.value<QDBusVariant>().variant();
}

QString SpokenNode::Role() const {
  return Call(kAccessible, QStringLiteral("GetRoleName")).toString();
}

QString SpokenNode::Name() const {
  return Property(kAccessible, QStringLiteral("Name")).toString();
}

QString SpokenNode::Description() const {
  return Property(kAccessible, QStringLiteral("Description")).toString();
}

double SpokenNode::Value() const {
  return Property(kValue, QStringLiteral("CurrentValue")).toDouble();
}

void SpokenNode::SetValue(double value) const {
  Call(kProperties, QStringLiteral("Set"),
       {kValue, QStringLiteral("CurrentValue"), QVariant::fromValue(QDBusVariant(value))});
}

bool SpokenNode::Shows() const {
  constexpr int kShowing = 25;
  QList<uint> states;
  const auto list = Call(kAccessible, QStringLiteral("GetState")).value<QDBusArgument>();
  if (list.currentType() == QDBusArgument::ArrayType) list >> states;
  return (states.value(0) >> kShowing & 1U) != 0;
}

QList<SpokenNode> SpokenNode::Children() const {
  QList<SpokenNode> children;
  const auto list = Call(kAccessible, QStringLiteral("GetChildren")).value<QDBusArgument>();
  if (list.currentType() != QDBusArgument::ArrayType) return children;
  list.beginArray();
  while (!list.atEnd()) {
    QString service;
    QDBusObjectPath path;
    list.beginStructure();
    list >> service >> path;
    list.endStructure();
    children << SpokenNode(bus_, service, path.path());
  }
  list.endArray();
  return children;
}

QString SpokenNode::Line() const {
  QString line = QStringLiteral("%1 \"%2\"").arg(Role(), Name());
  const QStringList interfaces = Call(kAccessible, QStringLiteral("GetInterfaces")).toStringList();
  if (interfaces.contains(kValue)) line += QStringLiteral(" = %1").arg(Value());
  if (interfaces.contains(kText)) {
    line +=
        QStringLiteral(": \"%1\"").arg(Call(kText, QStringLiteral("GetText"), {0, -1}).toString());
  }
  const QString description = Description();
  return description.isEmpty() ? line : line + QStringLiteral(" (%1)").arg(description);
}

bool SpokenNode::Do(const QString& action) const {
  const int count = Property(kAction, QStringLiteral("NActions")).toInt();
  for (int i = 0; i < count; ++i) {
    if (Call(kAction, QStringLiteral("GetName"), {i}).toString() != action) continue;
    return Call(kAction, QStringLiteral("DoAction"), {i}).toBool();
  }
  return false;
}

ScreenReader::ScreenReader(const QString& privateFolder) {
  StartBus(privateFolder);
  const QString name = QStringLiteral("screen reader of ") + privateFolder;
  const QString service = QStringLiteral("org.a11y.Bus");
  const QString path = QStringLiteral("/org/a11y/bus");
  const QDBusConnection session = QDBusConnection::connectToBus(address_, name);
  Ask(session, service, path, kProperties, QStringLiteral("Set"),
      {QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"),
       QVariant::fromValue(QDBusVariant(true))});
  const QString address =
      Ask(session, service, path, service, QStringLiteral("GetAddress"), {}).toString();
  QDBusConnection::disconnectFromBus(name);
  bus_ = QDBusConnection::connectToBus(address, name);
  if (!bus_.isConnected()) throw std::runtime_error("the accessibility bus doesn't start");
  Listen();
}

// What the bus has started ends when it does.
ScreenReader::~ScreenReader() {
  QDBusConnection::disconnectFromBus(bus_.name());
  daemon_.terminate();
  daemon_.waitForFinished();
}

void ScreenReader::StartBus(const QString& privateFolder) {
  QProcessEnvironment environment;
  environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
  environment.insert(QStringLiteral("HOME"), privateFolder);
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), privateFolder);
  environment.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
  environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
  daemon_.setProcessEnvironment(environment);
  daemon_.setStandardErrorFile(QProcess::nullDevice());
  daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  daemon_.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--nofork"),
                 QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1"),
                 QStringLiteral("--address=unix:path=%1/bus").arg(privateFolder)});
  WaitFor([this] {
    daemon_.waitForReadyRead(0);
    return daemon_.canReadLine() || daemon_.state() == QProcess::NotRunning;
  });
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  if (address_.isEmpty()) throw std::runtime_error("the session bus doesn't start");
}

// Programs tell nothing of which nobody has said that he wants to hear it.
void ScreenReader::Listen() {
  for (const char* event : {"object:property-change:accessible-name",
                            "object:property-change:accessible-value", "object:children-changed"}) {
    Ask(bus_, kRegistry, QStringLiteral("/org/a11y/atspi/registry"), kRegistry,
        QStringLiteral("RegisterEvent"), {QLatin1String(event), QStringList(), QString()});
  }
  for (const char* signal : {"PropertyChange", "ChildrenChanged"}) {
    bus_.connect(QString(), QString(), kObjectEvent, QLatin1String(signal), this,
                 SLOT(HearOf(QDBusMessage)));
  }
}

void ScreenReader::HearOf(const QDBusMessage& signal) {
  told_.insert(signal.arguments().value(0).toString() + QLatin1Char(' ') + signal.service() +
               signal.path());
}

bool ScreenReader::Told(const QString& kind, const SpokenNode& node) const {
  return told_.contains(kind + QLatin1Char(' ') + node.Id());
}

SpokenNode ScreenReader::AwaitWindow(const QString& title) const {
  const SpokenNode root(bus_, kRegistry, QStringLiteral("/org/a11y/atspi/accessible/root"));
  SpokenNode found;
  WaitFor([&] {
    for (const SpokenNode& program : root.Children()) {
      for (const SpokenNode& window : program.Children()) {
        if (window.Name() != title || !window.Shows()) continue;
        found = window;
        return true;
      }
    }
    return false;
  });
  return found;
}

QString ScreenReader::HeardIn(const SpokenNode& window) {
  QString lines = QStringLiteral("\n");
  Hear(window, 0, lines);
  return lines;
}

SpokenNode ScreenReader::Find(const SpokenNode& window, const QString& role, const QString& text) {
  const auto describedSo = [&](const SpokenNode& node) {
    return node.Description() == text && node.Role() == role;
  };
  const auto calledSo = [&](const SpokenNode& node) {
    return node.Name() == text && node.Role() == role;
  };
  const SpokenNode found = FindIf(window, describedSo);
  return found.Id().isEmpty() ? FindIf(window, calledSo) : found;
}

}  // namespace kelvane::desktop
