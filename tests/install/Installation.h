#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "desktop/driver/Program.h"

namespace kelvane::desktop {

// Where the build is installed: with the root as the prefix, or under the prefix /usr of a system
// whose root it is.
enum class Prefix { kRoot, kUsr };

// An empty folder, the root, into which the build is installed. A failure is one of the running
// test's.
class Installation {
 public:
  explicit Installation(Prefix prefix = Prefix::kRoot);

  QString Root() const { return place_.path() + "/root"; }
  QString PathOf(const QString& file) const { return Root() + '/' + file; }
  // The paths from the root of everything below it, sorted, with and without folders.
  QStringList Entries() const;
  QStringList Files() const;

  void Install() const;
  void Uninstall() const;
  // Makes the Debian package outside the root and returns its path.
  QString MakePackage() const;

  // Has the test's program started by this command, such as "bin/kelvane".
  void Use(const Program& program, const QString& command) const;

 private:
  QString Manifest() const { return place_.path() + "/manifest.txt"; }

  QTemporaryDir place_;
  QStringList environment_;
  QString prefix_;
};

// Runs a command to its end and returns what it printed. The running test fails unless it succeeds.
QString Ran(const QString& command, const QStringList& arguments);

}  // namespace kelvane::desktop
