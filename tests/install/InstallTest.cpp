// The program as it is installed for its users: every file in its place, started from the commands,
// used, and removed again without a trace.
#include <sys/stat.h>
#include <xcb/xcb.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <cstdlib>
#include <memory>

#include "desktop/JoinerTest.h"
#include "desktop/driver/SectionWindow.h"
#include "install/Installation.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(640, 360);
constexpr QSize kUntouchedCrop(634, 354);

const QStringList kCommands = {"kelvane", "kelvane-joiner", "kelvane-sections"};
const QStringList kTools = {"ffmpeg", "ffplay", "ffprobe"};

// By their paths from the prefix, in order.
QStringList WhatIsInstalled() {
  QStringList files = {"share/doc/kelvane/changelog.gz", "share/doc/kelvane/copyright",
                       "share/icons/hicolor/scalable/apps/kelvane.svg",
                       "share/metainfo/org.kelvane.kelvane.metainfo.xml"};
  for (const QString& command : kCommands) {
    files << "bin/" + command << "lib/kelvane/" + command << "share/man/man1/" + command + ".1.gz"
          << "share/applications/" + command + ".desktop";
  }
  for (const QString& tool : kTools) files << "lib/kelvane/" + tool;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    files << QStringLiteral("share/icons/hicolor/%1x%1/apps/kelvane.png").arg(size);
  }
  files.sort();
  return files;
}

QString EntryOf(const Installation& installation, const QString& command, const QString& key) {
  const QSettings entry(installation.PathOf("share/applications/" + command + ".desktop"),
                        QSettings::IniFormat);
  return entry.value("Desktop Entry/" + key).toString();
}

// Both names that the window bears for its program.
QList<QByteArray> ClassOf(WindowId window) {
  const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
      xcb_connect(nullptr, nullptr), &xcb_disconnect);
  constexpr std::uint32_t kWords = 64;
  const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
      xcb_get_property_reply(connection.get(),
                             xcb_get_property(connection.get(), 0, window, XCB_ATOM_WM_CLASS,
                                              XCB_ATOM_STRING, 0, kWords),
                             nullptr),
      &std::free);
  if (!reply) return {};
  return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                    xcb_get_property_value_length(reply.get()))
      .split('\0');
}

TEST(Installed, HasEachFileInItsPlaceAndEveryLinkLeadsToAProgram) {
  const Installation installation;
  installation.Install();
  EXPECT_EQ(installation.Files(), WhatIsInstalled());
  for (const QString& command : kCommands) {
    EXPECT_EQ(QFileInfo(installation.PathOf("bin/" + command)).canonicalFilePath(),
              QFileInfo(installation.PathOf("lib/kelvane/" + command)).canonicalFilePath());
  }
  for (const QString& tool : kTools) {
    EXPECT_TRUE(QFileInfo(installation.PathOf("lib/kelvane/" + tool)).isExecutable())
        << tool.toStdString();
  }
}

TEST(Installed, HasTheSameFilesForASystemAndGoesFromThereToo) {
  const Installation installation;
  installation.InstallSystem();
  QStringList expected = WhatIsInstalled();
  for (QString& file : expected) file.prepend("usr/");
  EXPECT_EQ(installation.Files(), expected);
  EXPECT_EQ(QFile::symLinkTarget(installation.PathOf("usr/lib/kelvane/ffmpeg")),
            installation.PathOf("usr/bin/ffmpeg"))
      << "from one place of the system to another, wherever that system lies";
  installation.UninstallSystem();
  EXPECT_EQ(installation.Things(), QStringList("usr"));
}

TEST(Installed, GoesAndTakesTheJoinersListWithItAndNothingElse) {
  const Installation installation;
  installation.Install();
  for (const char* name : {"lib/kelvane/files.txt", "share/icons/of-another-program"}) {
    QFile file(installation.PathOf(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  installation.Uninstall();
  EXPECT_EQ(installation.Things(),
            (QStringList{"share", "share/icons", "share/icons/of-another-program"}));
}

TEST(Installed, HasDesktopEntriesAndMetadataThatAreValidAndLeadToWhatIsThere) {
  const Installation installation;
  installation.Install();
  for (const QString& command : kCommands) {
    EXPECT_EQ(Ran("desktop-file-validate",
                  {installation.PathOf("share/applications/" + command + ".desktop")}),
              "");
    EXPECT_EQ(EntryOf(installation, command, "Exec"), command);
    EXPECT_EQ(EntryOf(installation, command, "Icon"), "kelvane");
  }
  const QString metadata = installation.PathOf("share/metainfo/org.kelvane.kelvane.metainfo.xml");
  Ran("appstreamcli", {"validate", "--no-net", metadata});
  QFile text(metadata);
  ASSERT_TRUE(text.open(QIODevice::ReadOnly));
  EXPECT_TRUE(text.readAll().contains("<release version=\"" KELVANE_VERSION "\""));
}

class InstalledProgram : public DesktopTest {
 protected:
  // To be called with a video in the window.
  void CropAndClose() {
    const QString output = program.PathOf("cropped.mp4");
    ASSERT_NO_FATAL_FAILURE(StartCrop(output));
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(VideoSize(output), kUntouchedCrop);
    job.Cancel();
    EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
    CloseAndExpectEnd();
  }

  Installation installation;
};

TEST_F(InstalledProgram, CropsFromItsCommandUnderTheClassOfItsEntry) {
  installation.Install();
  installation.Use(program, "bin/kelvane");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  EXPECT_TRUE(
      ClassOf(window.Id()).contains(EntryOf(installation, "kelvane", "StartupWMClass").toUtf8()));
  ASSERT_NO_FATAL_FAILURE(CropAndClose());
  EXPECT_EQ(installation.Files(), WhatIsInstalled());
}

class InstalledSections : public DesktopTest {
 protected:
  InstalledSections() : DesktopTest("kelvane-sections") {}
  Installation installation;
  SectionWindow sections{screen};
};

TEST_F(InstalledSections, OpensFromItsCommandUnderTheClassOfItsEntry) {
  installation.Install();
  installation.Use(program, "bin/kelvane-sections");
  program.Start();
  ASSERT_TRUE(sections.Await());
  EXPECT_TRUE(ClassOf(sections.Id())
                  .contains(EntryOf(installation, "kelvane-sections", "StartupWMClass").toUtf8()));
  screen.Close(sections.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

// Installed by root for an ordinary user, who can't write there.
class InstalledJoiner : public JoinerTest {
 protected:
  void SetUp() override {
    installation.Install();
    installation.Use(program, "bin/kelvane-joiner");
    program.RunAsOrdinaryUser();
    ASSERT_EQ(chmod(Folder().constData(), 0555), 0);
    ASSERT_NO_FATAL_FAILURE(JoinerTest::SetUp());
  }
  void TearDown() override {
    chmod(Folder().constData(), 0755);
    JoinerTest::TearDown();
  }
  QByteArray Folder() const { return QFile::encodeName(installation.PathOf("lib/kelvane")); }
  Installation installation;
};

TEST_F(InstalledJoiner, JoinsFromItsCommandForOneWhoCannotWriteInItsFolder) {
  EXPECT_TRUE(ClassOf(joiner.Id())
                  .contains(EntryOf(installation, "kelvane-joiner", "StartupWMClass").toUtf8()));
  for (const char* name : {"a.mp4", "b.mp4"}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", 2));
    ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
  }
  const QString output = program.PathOf("joined.mp4");
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(Pictures(output), 4 * 25);
  CloseJoinerAndExpectEnd();
  EXPECT_EQ(installation.Files(), WhatIsInstalled());
}

TEST(Package, IsCleanAndNeedsWhatTheProgramUses) {
  const Installation installation;
  const QString package = installation.MakePackage();
  EXPECT_EQ(Ran("lintian", {"--allow-root", "--fail-on", "error,warning", package}), "");
  const QString needed = Ran("dpkg-deb", {"--field", package, "Depends"});
  for (const char* name : {"ffmpeg", "qt6-qpa-plugins", "libmpv2", "fonts-liberation", "xdg-utils",
                           "libqt6widgets6", "libasound2(t64)?"}) {  // t64 from Debian 13 on
    EXPECT_TRUE(needed.contains(QRegularExpression("\\b" + QString(name) + "\\b"))) << name;
  }
  EXPECT_EQ(Ran("dpkg-deb", {"--field", package, "Version"}).trimmed(), KELVANE_VERSION);
  EXPECT_TRUE(Ran("dpkg-deb", {"--field", package, "Section"}).startsWith("video"));
}

// A package manager's own root, with nothing in it but the tools.
using InstalledPackage = InstalledProgram;

TEST_F(InstalledPackage, CropsAndIsRemovedWithoutATrace) {
  const QString package = installation.MakePackage();
  for (const char* folder : {"var/lib/dpkg/info", "var/lib/dpkg/updates", "var/log", "usr/bin"}) {
    ASSERT_TRUE(QDir(installation.Root()).mkpath(folder));
  }
  for (const char* file : {"var/lib/dpkg/status", "var/lib/dpkg/available"}) {
    QFile empty(installation.PathOf(file));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
  }
  for (const QString& tool : kTools) {
    ASSERT_TRUE(QFile::link("/usr/bin/" + tool, installation.PathOf("usr/bin/" + tool)));
  }
  const auto outsideOfItsBooks = [this] {
    return installation.Things().filter(QRegularExpression("^usr"));
  };
  const QStringList before = outsideOfItsBooks();
  const QStringList manager = {"--root=" + installation.Root(), "--force-not-root",
                               "--force-depends", "--force-script-chrootless"};
  Ran("dpkg", manager + QStringList{"--install", package});
  EXPECT_TRUE(outsideOfItsBooks().contains("usr/bin/kelvane"));

  installation.Use(program, "usr/bin/kelvane");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  ASSERT_NO_FATAL_FAILURE(CropAndClose());

  QFile list(installation.PathOf("usr/lib/kelvane/files.txt"));
  ASSERT_TRUE(list.open(QIODevice::WriteOnly));
  Ran("dpkg", manager + QStringList{"--remove", "kelvane"});
  EXPECT_EQ(outsideOfItsBooks(), before);
}

}  // namespace
}  // namespace kelvane::desktop
