#include "install/Installation.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

const QString kBuild = KELVANE_BUILD_FOLDER;
// The build notes what it installed in one file, so only one test at a time may install or pack.
const QString kLock = kBuild + "/install_test.lock";

}  // namespace

QString Ran(const QString& command, const QStringList& arguments) {
  QString printed;
  EXPECT_TRUE(RunTool(command, arguments, &printed))
      << command.toStdString() << ' ' << arguments.join(' ').toStdString() << '\n'
      << printed.toStdString();
  return printed;
}

Installation::Installation(Prefix prefix) {
  QDir().mkpath(Root());
  if (prefix == Prefix::kUsr) environment_ = {"DESTDIR=" + Root()};
  prefix_ = prefix == Prefix::kUsr ? "/usr" : Root();
  for (const QString& folder : {place_.path(), Root()}) {
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                      QFile::ReadOther | QFile::ExeOther);
  }
}

QStringList Installation::Entries() const {
  QStringList entries;
  QDirIterator entry(Root(), QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
  while (entry.hasNext()) entries << QDir(Root()).relativeFilePath(entry.next());
  entries.sort();
  return entries;
}

QStringList Installation::Files() const {
  QStringList files = Entries();
  files.removeIf([this](const QString& entry) {
    const QFileInfo info(PathOf(entry));
    return info.isDir() && !info.isSymLink();
  });
  return files;
}

// By component, which leaves the manifest of the developer's own installation alone.
void Installation::Install() const {
  QLockFile lock(kLock);
  lock.lock();
  Ran("env", environment_ + QStringList{KELVANE_CMAKE, "--install", kBuild, "--component",
                                        "kelvane", "--prefix", prefix_});
  EXPECT_TRUE(QFile::copy(kBuild + "/install_manifest_kelvane.txt", Manifest()));
}

void Installation::Uninstall() const {
  Ran("env", environment_ + QStringList{KELVANE_CMAKE, "-D", "MANIFEST=" + Manifest(), "-P",
                                        KELVANE_PACKAGING_FOLDER "/uninstall.cmake"});
}

QString Installation::MakePackage() const {
  QLockFile lock(kLock);
  lock.lock();
  const QDir folder(place_.path() + "/package");
  Ran(KELVANE_CPACK, {"-G", "DEB", "--config", kBuild + "/CPackConfig.cmake", "-B", folder.path()});
  const QStringList made = folder.entryList({"*.deb"});
  EXPECT_EQ(made.size(), 1);
  return folder.filePath(made.value(0));
}

void Installation::Use(const Program& program, const QString& command) const {
  const QString link = program.ProgramFolder() + '/' + QFileInfo(command).fileName();
  EXPECT_TRUE(QFile::remove(link));
  EXPECT_TRUE(QFile::link(PathOf(command), link));
}

}  // namespace kelvane::desktop
