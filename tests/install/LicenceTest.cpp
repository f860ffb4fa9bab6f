// One licence, wherever it is named, and those of the libraries that the programs use.
#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <set>
#include <string>

#include "install/Installation.h"
#include "support/Sanitized.h"

namespace kelvane::desktop {
namespace {

// The text of a file, without line breaks and runs of blanks.
QString TextOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll()).simplified();
}

QString InSource(const char* file) {
  return QStringLiteral(KELVANE_SOURCE_FOLDER "/") + QLatin1String(file);
}

struct Naming {
  const char* name;
  const char* file;
  const char* words;
};

void PrintTo(const Naming& naming, std::ostream* out) { *out << naming.file; }

class Licence : public ::testing::TestWithParam<Naming> {};

TEST_P(Licence, IsNamedAsTheProjectsOwn) {
  const QString text = TextOf(InSource(GetParam().file));
  EXPECT_TRUE(text.contains(GetParam().words)) << text.toStdString();
  EXPECT_FALSE(text.contains("proprietary"));
}

INSTANTIATE_TEST_SUITE_P(
    In, Licence,
    ::testing::Values(
        Naming{"TheNotice", "LICENSE", "SPDX-License-Identifier: " KELVANE_LICENSE},
        Naming{"TheReadme", "README.md", "(`" KELVANE_LICENSE "`): [LICENSE](LICENSE)"},
        Naming{"TheMetadata", "packaging/desktop/org.kelvane.kelvane.metainfo.xml",
               "<project_license>" KELVANE_LICENSE "</project_license>"},
        Naming{"ThePackage", "packaging/debian/copyright",
               "\"GPL-3+\" is this format's name for " KELVANE_LICENSE},
        Naming{"ThePackagesFiles", "packaging/debian/copyright",
               "Files: * Copyright: 2026 The Kelvane developers License: GPL-3+"},
        Naming{"TheManual", "packaging/man/kelvane.1", "Licence " KELVANE_LICENSE ":"},
        Naming{"TheJoinersManual", "packaging/man/kelvane-joiner.1",
               "Licence " KELVANE_LICENSE ":"},
        Naming{"TheSectionWindowsManual", "packaging/man/kelvane-sections.1",
               "Licence " KELVANE_LICENSE ":"}),
    [](const auto& test) { return test.param.name; });

TEST(LicencesText, LiesWhereTheNoticesSay) {
  const char* const kPlace = "/usr/share/common-licenses/GPL-3";
  for (const char* file : {"LICENSE", "packaging/debian/copyright", "packaging/man/kelvane.1"}) {
    EXPECT_TRUE(TextOf(InSource(file)).contains(kPlace)) << file;
  }
  EXPECT_TRUE(TextOf(kPlace).startsWith("GNU GENERAL PUBLIC LICENSE Version 3,"));
}

// What the loader needs at the start of the three programs.
std::set<std::string> LinkedLibraries() {
  std::set<std::string> libraries;
  static const QRegularExpression kNeeded("\\(NEEDED\\).*\\[(.*)\\]");
  static const QRegularExpression kSanitizer("^lib[a-z]+san\\.");
  for (const char* program : {"kelvane", "kelvane-joiner", "kelvane-sections"}) {
    const QString path = QStringLiteral(KELVANE_PROGRAM_FOLDER "/") + QLatin1String(program);
    auto matches = kNeeded.globalMatch(Ran("readelf", {"--dynamic", "--wide", path}));
    while (matches.hasNext()) {
      const QString library = matches.next().captured(1);
      if (!kSanitized || !library.contains(kSanitizer)) libraries.insert(library.toStdString());
    }
  }
  return libraries;
}

// What the copyright file of a file's package says.
QString CopyrightOf(const QString& file) {
  const QString pattern = file.startsWith("lib") ? "*/" + file : "/usr/bin/" + file;
  const QString package = Ran("dpkg-query", {"--search", pattern}).section(':', 0, 0);
  return TextOf("/usr/share/doc/" + package + "/copyright");
}

TEST(LicencesOfLibraries, StandInTheReadmeForEachAsItsPackageSays) {
  QFile readme(InSource("README.md"));
  ASSERT_TRUE(readme.open(QIODevice::ReadOnly));
  const QString section = QString::fromUtf8(readme.readAll()).section("\n## Licence\n", 1);
  std::set<std::string> named;
  static const QRegularExpression kName("`([^`]*)`");
  for (const QString& line : section.split('\n')) {
    const QStringList cells = line.split(" | ");
    if (cells.size() != 4 || !line.startsWith("| `")) continue;
    const QString words = cells[3].chopped(2);
    auto names = kName.globalMatch(cells[0]);
    while (names.hasNext()) {
      const QString name = names.next().captured(1);
      named.insert(name.toStdString());
      EXPECT_TRUE(CopyrightOf(name).contains(words)) << name.toStdString();
    }
  }
  std::set<std::string> used = LinkedLibraries();
  used.insert({"libmpv.so.2", "ffmpeg", "ffprobe", "ffplay"});
  EXPECT_EQ(named, used);
}

}  // namespace
}  // namespace kelvane::desktop
