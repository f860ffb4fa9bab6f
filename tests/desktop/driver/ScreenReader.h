#pragma once

#include <QDBusConnection>
#include <QList>
#include <QProcess>
#include <QSet>
#include <QString>

#include "desktop/driver/Wait.h"

namespace kelvane::desktop {

// A node of a program's tree, read anew over the bus by each call. What can't be read is empty.
class SpokenNode {
 public:
  SpokenNode() = default;
  SpokenNode(QDBusConnection bus, QString service, QString path);

  // `push button "Load Video"`, `label "0,640" (Width of the video in pixels)`,
  // `slider "Left Bar" = 12`, `text "Selected Video": "/a/path"`
  QString Line() const;
  QString Role() const;
  QString Name() const;
  QString Description() const;
  double Value() const;
  void SetValue(double value) const;
  bool Shows() const;
  QList<SpokenNode> Children() const;
  // Does the node's action of that name, "Press" or the like. False if it has none.
  bool Do(const QString& action) const;
  // Unlike that of any other node.
  QString Id() const { return service_ + path_; }

 private:
  QVariant Call(const QString& interface, const QString& method,
                const QVariantList& arguments = {}) const;
  QVariant Property(const QString& interface, const QString& property) const;

  QDBusConnection bus_{QString()};
  QString service_;
  QString path_;
};

// A screen reader on a private session bus: programs that find the bus are asked to be read, and
// tell what changes. The bus and all that it starts end with the object.
class ScreenReader : public QObject {
  Q_OBJECT
 public:
  // `privateFolder` is for the buses' sockets: its path must be short. Throws std::runtime_error if
  // there is no bus.
  explicit ScreenReader(const QString& privateFolder);
  ~ScreenReader() override;

  // For DBUS_SESSION_BUS_ADDRESS.
  QString Address() const { return address_; }

  // Waits for a window of that title; a node without a name if none comes.
  SpokenNode AwaitWindow(const QString& title) const;
  // All that shows in a window, itself first, in lines indented by two blanks to the level, with a
  // line break before the first. What only lays others out, and has no name, is passed over.
  static QString HeardIn(const SpokenNode& window);
  // The first node in the window that shows, has that role and is described so, or else called so;
  // a node without an id if there is none.
  static SpokenNode Find(const SpokenNode& window, const QString& role, const QString& text);

  // Whether the node's change of that kind has been announced: "accessible-name",
  // "accessible-value", or "add", as which a node tells of one that has come to it.
  bool Told(const QString& kind, const SpokenNode& node) const;

 private slots:
  void HearOf(const QDBusMessage& signal);

 private:
  void StartBus(const QString& privateFolder);
  void Listen();

  QProcess daemon_;
  QString address_;
  QDBusConnection bus_{QString()};
  QSet<QString> told_;
};

}  // namespace kelvane::desktop
