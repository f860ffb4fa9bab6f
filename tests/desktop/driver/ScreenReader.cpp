#include "desktop/driver/ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <stdexcept>
#include <utility>

namespace kelvane::desktop {

using namespace Qt::StringLiterals;

namespace {

const QString kAccessible = "org.a11y.atspi.Accessible";
const QString kAction = "org.a11y.atspi.Action";
const QString kText = "org.a11y.atspi.Text";
const QString kValue = "org.a11y.atspi.Value";
const QString kProperties = "org.freedesktop.DBus.Properties";
const QString kRegistry = "org.a11y.atspi.Registry";
const QString kObjectEvent = "org.a11y.atspi.Event.Object";

QVariant Ask(const QDBusConnection& bus, const QString& service, const QString& path,
             const QString& interface, const QString& method, const QVariantList& arguments) {
  QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
  call.setArguments(arguments);
  return bus.call(call).arguments().value(0);
}

template <class Condition>
AccessibleNode FindIf(const AccessibleNode& node, Condition condition) {
  if (!node.Visible()) return {};
  if (condition(node)) return node;
  for (const AccessibleNode& child : node.Children()) {
    AccessibleNode found = FindIf(child, condition);
    if (!found.Id().isEmpty()) return found;
  }
  return {};
}

}  // namespace

AccessibleNode::AccessibleNode(QDBusConnection bus, QString service, QString path)
    : bus_(std::move(bus)), service_(std::move(service)), path_(std::move(path)) {}

QVariant AccessibleNode::Call(const QString& interface, const QString& method,
                              const QVariantList& arguments) const {
  return Ask(bus_, service_, path_, interface, method, arguments);
}

QVariant AccessibleNode::Property(const QString& interface, const QString& property) const {
  const QVariant answer = Call(kProperties, "Get", {interface, property});
  return answer.value<QDBusVariant>().variant();
}

QString AccessibleNode::Role() const { return Call(kAccessible, "GetRoleName").toString(); }

QString AccessibleNode::Name() const { return Property(kAccessible, "Name").toString(); }

QString AccessibleNode::Description() const {
  return Property(kAccessible, "Description").toString();
}

double AccessibleNode::Value() const { return Property(kValue, "CurrentValue").toDouble(); }

void AccessibleNode::SetValue(double value) const {
  Call(kProperties, "Set", {kValue, "CurrentValue", QVariant::fromValue(QDBusVariant(value))});
}

bool AccessibleNode::Visible() const {
  constexpr int kShowing = 25;
  QList<uint> states;
  const auto list = Call(kAccessible, "GetState").value<QDBusArgument>();
  if (list.currentType() == QDBusArgument::ArrayType) list >> states;
  return (states.value(0) >> kShowing & 1U) != 0;
}

QList<AccessibleNode> AccessibleNode::Children() const {
  QList<AccessibleNode> children;
  const auto list = Call(kAccessible, "GetChildren").value<QDBusArgument>();
  if (list.currentType() != QDBusArgument::ArrayType) return children;
  list.beginArray();
  while (!list.atEnd()) {
    QString service;
    QDBusObjectPath path;
    list.beginStructure();
    list >> service >> path;
    list.endStructure();
    children << AccessibleNode(bus_, service, path.path());
  }
  list.endArray();
  return children;
}

QString AccessibleNode::Line() const {
  QString line = u"%1 \"%2\""_s.arg(Role(), Name());
  const QStringList interfaces = Call(kAccessible, "GetInterfaces").toStringList();
  if (interfaces.contains(kValue)) line += u" = %1"_s.arg(Value());
  if (interfaces.contains(kText)) {
    line += u": \"%1\""_s.arg(Call(kText, "GetText", {0, -1}).toString());
  }
  const QString description = Description();
  return description.isEmpty() ? line : line + u" (%1)"_s.arg(description);
}

AccessibleNode AccessibleNode::Find(const QString& role, const QString& text) const {
  const AccessibleNode described = FindIf(*this, [&](const AccessibleNode& node) {
    return node.Description() == text && node.Role() == role;
  });
  if (!described.Id().isEmpty()) return described;
  return FindIf(*this, [&](const AccessibleNode& node) {
    return node.Name() == text && node.Role() == role;
  });
}

QString AccessibleNode::Tree(int level) const {
  if (!Visible()) return {};
  const bool onlyGroups = Role() == "filler" && Name().isEmpty();
  QString lines = onlyGroups ? QString() : QString(2 * level, ' ') + Line() + '\n';
  const int childLevel = onlyGroups ? level : level + 1;
  for (const AccessibleNode& child : Children()) lines += child.Tree(childLevel);
  return lines;
}

bool AccessibleNode::Invoke(const QString& action) const {
  const int count = Property(kAction, "NActions").toInt();
  for (int i = 0; i < count; ++i) {
    if (Call(kAction, "GetName", {i}).toString() != action) continue;
    return Call(kAction, "DoAction", {i}).toBool();
  }
  return false;
}

ScreenReader::ScreenReader(const QString& socketFolder) : sessionBus_(socketFolder) {
  const QString name = "screen reader of " + socketFolder;
  const QString service = "org.a11y.Bus";
  const QString path = "/org/a11y/bus";
  const QDBusConnection session = QDBusConnection::connectToBus(Address(), name);
  Ask(session, service, path, kProperties, "Set",
      {"org.a11y.Status", "IsEnabled", QVariant::fromValue(QDBusVariant(true))});
  const QString address = Ask(session, service, path, service, "GetAddress", {}).toString();
  QDBusConnection::disconnectFromBus(name);
  bus_ = QDBusConnection::connectToBus(address, name);
  if (!bus_.isConnected()) throw std::runtime_error("the accessibility bus doesn't start");
  Subscribe();
}

ScreenReader::~ScreenReader() { QDBusConnection::disconnectFromBus(bus_.name()); }

// Programs announce only the changes to which somebody has subscribed.
void ScreenReader::Subscribe() {
  for (const char* event :
       {"object:property-change:accessible-name", "object:property-change:accessible-value",
        "object:children-changed", "object:state-changed:focused"}) {
    Ask(bus_, kRegistry, "/org/a11y/atspi/registry", kRegistry, "RegisterEvent",
        {QString(event), QStringList(), QString()});
  }
  for (const char* signal : {"PropertyChange", "ChildrenChanged", "StateChanged"}) {
    bus_.connect(QString(), QString(), kObjectEvent, signal, this, SLOT(TakeSignal(QDBusMessage)));
  }
}

void ScreenReader::TakeSignal(const QDBusMessage& signal) {
  announced_.insert(signal.arguments().value(0).toString() + ' ' + signal.service() +
                    signal.path());
}

bool ScreenReader::HasAnnounced(const QString& change, const AccessibleNode& node) const {
  return announced_.contains(change + ' ' + node.Id());
}

AccessibleNode ScreenReader::AwaitWindow(const QString& title) const {
  const AccessibleNode root(bus_, kRegistry, "/org/a11y/atspi/accessible/root");
  AccessibleNode found;
  WaitFor([&] {
    for (const AccessibleNode& program : root.Children()) {
      for (const AccessibleNode& window : program.Children()) {
        if (window.Name() != title || !window.Visible()) continue;
        found = window;
        return true;
      }
    }
    return false;
  });
  return found;
}

}  // namespace kelvane::desktop
