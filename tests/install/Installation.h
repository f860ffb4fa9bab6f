#pragma once

#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "desktop/driver/Program.h"

namespace kelvane::desktop {

// An empty place into which the build is installed. Failures are the running test's.
class Installation {
 public:
  Installation();

  QString Root() const { return place_.path() + QStringLiteral("/root"); }
  QString PathOf(const QString& file) const { return Root() + QLatin1Char('/') + file; }
  // Everything below the root, folders included, by its path from there, in order.
  QStringList Things() const;
  // The same without folders.
  QStringList Files() const;

  // `cmake --install`, the root being the prefix.
  void Install() const;
  void Uninstall() const;
  // The same for the prefix /usr of a system whose root this is.
  void InstallSystem() const;
  void UninstallSystem() const;
  // The Debian package of the build, made outside of the root; its path.
  QString MakePackage() const;

  // From now on the test's program is the one that this command, "bin/kelvane", starts.
  void Use(const Program& program, const QString& command) const;

 private:
  QString Manifest() const { return place_.path() + QStringLiteral("/manifest.txt"); }
  void Put(const QStringList& environment, const QString& prefix) const;
  void Remove(const QStringList& environment) const;
  QStringList Below(bool (*wanted)(const QFileInfo&)) const;

  QTemporaryDir place_;
};

// Runs a command to its end; a status other than 0 is the running test's failure. What it printed.
QString Ran(const QString& command, const QStringList& arguments);

}  // namespace kelvane::desktop
