#include "install/Installation.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLockFile>

#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

const QString kBuild = QStringLiteral(KELVANE_BUILD_FOLDER);
const QString kCMake = QStringLiteral(KELVANE_CMAKE);

// The build notes what it has installed in one place; only one at a time may do so.
class OneAtATime {
 public:
  OneAtATime() : lock_(kBuild + QStringLiteral("/install_test.lock")) { lock_.lock(); }

 private:
  QLockFile lock_;
};

}  // namespace

QString Ran(const QString& command, const QStringList& arguments) {
  QString printed;
  EXPECT_TRUE(RunTool(command, arguments, &printed))
      << command.toStdString() << ' ' << arguments.join(QLatin1Char(' ')).toStdString() << '\n'
      << printed.toStdString();
  return printed;
}

Installation::Installation() {
  QDir().mkpath(Root());
  // Others may look into it, as into any place for programs.
  for (const QString& folder : {place_.path(), Root()}) {
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                      QFile::ReadOther | QFile::ExeOther);
  }
}

QStringList Installation::Below(bool (*wanted)(const QFileInfo&)) const {
  QStringList found;
  QDirIterator entries(Root(),
                       QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    entries.next();
    if (wanted(entries.fileInfo())) found << entries.filePath().mid(Root().size() + 1);
  }
  found.sort();
  return found;
}

QStringList Installation::Things() const {
  return Below([](const QFileInfo&) { return true; });
}

QStringList Installation::Files() const {
  return Below([](const QFileInfo& entry) { return entry.isSymLink() || !entry.isDir(); });
}

void Installation::Install() const { Put({}, Root()); }

void Installation::Uninstall() const { Remove({}); }

void Installation::InstallSystem() const {
  Put({QStringLiteral("DESTDIR=") + Root()}, QStringLiteral("/usr"));
}

void Installation::UninstallSystem() const { Remove({QStringLiteral("DESTDIR=") + Root()}); }

// By its component, so that the manifest of the developer's own installation stays.
void Installation::Put(const QStringList& environment, const QString& prefix) const {
  const OneAtATime lock;
  Ran(QStringLiteral("env"),
      environment + QStringList{kCMake, QStringLiteral("--install"), kBuild,
                                QStringLiteral("--component"), QStringLiteral("kelvane"),
                                QStringLiteral("--prefix"), prefix});
  EXPECT_TRUE(QFile::copy(kBuild + QStringLiteral("/install_manifest_kelvane.txt"), Manifest()));
}

void Installation::Remove(const QStringList& environment) const {
  Ran(QStringLiteral("env"),
      environment + QStringList{kCMake, QStringLiteral("-D"),
                                QStringLiteral("MANIFEST=") + Manifest(), QStringLiteral("-P"),
                                QStringLiteral(KELVANE_PACKAGING_FOLDER "/uninstall.cmake")});
}

QString Installation::MakePackage() const {
  const OneAtATime lock;
  const QString folder = place_.path() + QStringLiteral("/package");
  Ran(QStringLiteral(KELVANE_CPACK),
      {QStringLiteral("-G"), QStringLiteral("DEB"), QStringLiteral("--config"),
       kBuild + QStringLiteral("/CPackConfig.cmake"), QStringLiteral("-B"), folder});
  const QStringList made = QDir(folder).entryList({QStringLiteral("*.deb")});
  EXPECT_EQ(made.size(), 1);
  return folder + QLatin1Char('/') + made.value(0);
}

void Installation::Use(const Program& program, const QString& command) const {
  const QString link = program.ProgramFolder() + QLatin1Char('/') + QFileInfo(command).fileName();
  EXPECT_TRUE(QFile::remove(link));
  EXPECT_TRUE(QFile::link(PathOf(command), link));
}

}  // namespace kelvane::desktop
