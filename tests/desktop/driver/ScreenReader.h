#pragma once

#include <QDBusConnection>
#include <QList>
#include <QSet>
#include <QString>

#include "desktop/driver/Wait.h"
#include "support/PrivateBus.h"

namespace kelvane::desktop {

// A node of a program's accessibility tree. Each call asks the program over the bus. What can't be
// read is empty.
class AccessibleNode {
 public:
  AccessibleNode() = default;
  AccessibleNode(QDBusConnection bus, QString service, QString path);

  QString Role() const;
  QString Name() const;
  QString Description() const;
  double Value() const;
  void SetValue(double value) const;
  bool Visible() const;
  QList<AccessibleNode> Children() const;
  // Invokes an action such as "Press". Returns false if the node has no such action.
  bool Invoke(const QString& action) const;
  // Unique to this node. Empty if there is no such node.
  QString Id() const { return service_ + path_; }

  // The first visible node at or under this one with that role and description, or else with that
  // role and name. A node without an id if there is none.
  AccessibleNode Find(const QString& role, const QString& text) const;
  // All visible nodes at and under this one, a line for each, indented by two blanks per level:
  // `push button "Load Video"`, `label "0,640" (Width of the video in pixels)`,
  // `slider "Left Bar" = 12`, `text "Selected Video": "/a/path"`. Leaves out the nameless nodes
  // that only group others.
  QString Tree(int level = 0) const;

 private:
  QString Line() const;
  QVariant Call(const QString& interface, const QString& method,
                const QVariantList& arguments = {}) const;
  QVariant Property(const QString& interface, const QString& property) const;

  QDBusConnection bus_{QString()};
  QString service_;
  QString path_;
};

// A screen reader on a private session bus. Programs on this bus make themselves accessible and
// announce their changes. The bus ends with the object.
class ScreenReader : public QObject {
  Q_OBJECT
 public:
  // `socketFolder` must have a short path. Throws std::runtime_error if the bus doesn't start.
  explicit ScreenReader(const QString& socketFolder);
  ~ScreenReader() override;

  // The value of DBUS_SESSION_BUS_ADDRESS.
  const QString& Address() const { return sessionBus_.Address(); }

  // Waits for a window of that title. Returns a node without an id if none comes.
  AccessibleNode AwaitWindow(const QString& title) const;
  // Whether the program has announced that change of the node: "accessible-name" or
  // "accessible-value", "add" for a new child, or "focused".
  bool HasAnnounced(const QString& change, const AccessibleNode& node) const;

 private slots:
  void TakeSignal(const QDBusMessage& signal);

 private:
  void Subscribe();

  testing::PrivateBus sessionBus_;
  QDBusConnection bus_{QString()};
  QSet<QString> announced_;
};

}  // namespace kelvane::desktop
