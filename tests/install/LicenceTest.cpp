// The project's licence, and those of the libraries and tools that the programs use.
#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <map>
#include <set>
#include <string>

#include "desktop/DesktopTest.h"
#include "support/Sanitized.h"
#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

// The text of a file in one line with single blanks.
QString TextOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll()).simplified();
}

QString InSource(const char* file) {
  return QStringLiteral(KELVANE_SOURCE_FOLDER "/") + QLatin1String(file);
}

TEST(Licence, IsTheSameWhereverItIsNamed) {
  const std::string manual = "Licence " KELVANE_LICENSE ":";
  const std::multimap<const char*, std::string> cases = {
      {"LICENSE", "SPDX-License-Identifier: " KELVANE_LICENSE},
      {"README.md", "(`" KELVANE_LICENSE "`): [LICENSE](LICENSE)"},
      {"packaging/desktop/org.kelvane.kelvane.metainfo.xml.in",
       "<project_license>" KELVANE_LICENSE "</project_license>"},
      {"packaging/debian/copyright", "\"GPL-3+\" is this format's name for " KELVANE_LICENSE},
      {"packaging/debian/copyright",
       "Files: * Copyright: 2026 The Kelvane developers License: GPL-3+"},
      {"packaging/man/kelvane.1", manual},
      {"packaging/man/kelvane-joiner.1", manual},
      {"packaging/man/kelvane-sections.1", manual},
      {"packaging/man/kelvane-stabiliser.1", manual},
  };
  for (const auto& [file, words] : cases) {
    const QString text = TextOf(InSource(file));
    EXPECT_TRUE(text.contains(QString::fromStdString(words))) << file;
    EXPECT_FALSE(text.contains("proprietary")) << file;
  }
}

TEST(Licence, HasItsTextWhereTheNoticesSay) {
  const char* const kPlace = "/usr/share/common-licenses/GPL-3";
  for (const char* file : {"LICENSE", "packaging/debian/copyright", "packaging/man/kelvane.1"}) {
    EXPECT_TRUE(TextOf(InSource(file)).contains(kPlace)) << file;
  }
  EXPECT_TRUE(TextOf(kPlace).startsWith("GNU GENERAL PUBLIC LICENSE Version 3,"));
}

// What a shell command prints.
QString Printed(const QString& command) {
  QString printed;
  EXPECT_TRUE(RunTool("sh", {"-c", command}, &printed)) << printed.toStdString();
  return printed.trimmed();
}

// The libraries that the programs are linked to.
std::set<std::string> LinkedLibraries() {
  std::set<std::string> libraries;
  static const QRegularExpression kSanitizer("^lib[a-z]+san\\.");
  const QString names =
      Printed("cd '" KELVANE_PROGRAM_FOLDER
              "' && readelf --dynamic --wide kelvane kelvane-joiner"
              " kelvane-sections kelvane-stabiliser | sed -n 's/.*(NEEDED).*\\[\\(.*\\)\\]/\\1/p'");
  for (const QString& library : names.split('\n')) {
    if (!kSanitized || !library.contains(kSanitizer)) libraries.insert(library.toStdString());
  }
  return libraries;
}

// The copyright file of the package that a library or tool comes from.
QString CopyrightOf(const QString& file) {
  const QString pattern = file.startsWith("lib") ? "*/" + file : "/usr/bin/" + file;
  const QString package = Printed("dpkg-query --search '" + pattern + '\'').section(':', 0, 0);
  return TextOf("/usr/share/doc/" + package + "/copyright");
}

// The README's table: each row's libraries and tools, and their packages' words on the licence.
std::map<QStringList, QString> Table() {
  QFile readme(InSource("README.md"));
  EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
  const QString section = QString::fromUtf8(readme.readAll()).section("\n## Licence\n", 1);
  std::map<QStringList, QString> table;
  static const QRegularExpression kName("`([^`]*)`");
  for (const QString& line : section.split('\n')) {
    const QStringList cells = line.split(" | ");
    if (cells.size() != 4 || !line.startsWith("| `")) continue;
    QStringList names;
    for (const auto& name : kName.globalMatch(cells[0])) names << name.captured(1);
    table.emplace(names, cells[3].chopped(2));
  }
  return table;
}

TEST(LicencesOfLibraries, AreInTheReadmeInTheWordsOfTheirPackages) {
  std::set<std::string> named;
  for (const auto& [names, words] : Table()) {
    for (const QString& name : names) {
      named.insert(name.toStdString());
      EXPECT_TRUE(CopyrightOf(name).contains(words)) << name.toStdString();
    }
  }
  std::set<std::string> used = LinkedLibraries();
  used.insert({"libmpv.so.2", "ffmpeg", "ffprobe", "ffplay", "xdg-open"});
  EXPECT_EQ(named, used);
}

using LoadedLibraries = DesktopTest;

// Libraries that other libraries load, apart from Qt's plug-ins, aren't examined.
TEST_F(LoadedLibraries, AreLibmpvAndPlugInsUnderTheLicenceOfQt) {
  constexpr QSize kSize(320, 240);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 20));
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitMoving(kSize));
  const QString maps = ContentOf(QStringLiteral("/proc/%1/maps").arg(program.Id()));
  EXPECT_TRUE(maps.contains("/libmpv.so.2"));
  std::set<QString> plugIns;
  static const QRegularExpression kPlugIn("/qt6/plugins/.*/(lib[^/]*\\.so)\n");
  for (const auto& plugIn : kPlugIn.globalMatch(maps)) plugIns.insert(plugIn.captured(1));
  EXPECT_TRUE(plugIns.contains("libqxcb.so"));
  const QString words = Table().at({"libQt6Core.so.6", "libQt6Gui.so.6", "libQt6Widgets.so.6"});
  for (const QString& plugIn : plugIns) {
    EXPECT_TRUE(CopyrightOf(plugIn).contains(words)) << plugIn.toStdString();
  }
}

}  // namespace
}  // namespace kelvane::desktop
