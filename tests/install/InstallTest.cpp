// The build, installed and packed: its files, its commands in use, and its removal.
#include <sys/stat.h>
#include <xcb/xcb.h>

#include <QColor>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLockFile>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <array>
#include <cstdlib>

#include "desktop/JoinerTest.h"
#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

const QStringList kCommands = {"kelvane", "kelvane-joiner", "kelvane-sections",
                               "kelvane-stabiliser"};
const QStringList kTools = {"ffmpeg", "ffplay", "ffprobe"};

const QString kBuild = KELVANE_BUILD_FOLDER;
// A build has only one list of what it installed, so one test at a time may install or pack.
const QString kLock = kBuild + "/install_test.lock";

// Runs a command and returns what it printed. If the command fails, so does the running test.
QString Ran(const QString& command, const QStringList& arguments) {
  QString printed;
  EXPECT_TRUE(RunTool(command, arguments, &printed))
      << command.toStdString() << ' ' << arguments.join(' ').toStdString() << '\n'
      << printed.toStdString();
  return printed;
}

// The prefix of an Installation: its root folder, or /usr in a system with that root folder.
enum class Prefix { kRoot, kUsr };

// An empty folder, the root, into which the build is installed. A failure fails the running test.
class Installation {
 public:
  explicit Installation(Prefix prefix = Prefix::kRoot) {
    QDir().mkpath(Root());
    if (prefix == Prefix::kUsr) environment_ = {"DESTDIR=" + Root()};
    prefix_ = prefix == Prefix::kUsr ? "/usr" : Root();
    for (const QString& folder : {place_.path(), Root()}) {
      QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                        QFile::ReadOther | QFile::ExeOther);
    }
  }

  QString Root() const { return place_.path() + "/root"; }
  QString PathOf(const QString& file) const { return Root() + '/' + file; }

  // Everything below the root, as sorted paths from there.
  QStringList Entries() const {
    QStringList entries;
    QDirIterator entry(Root(),
                       QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (entry.hasNext()) entries << QDir(Root()).relativeFilePath(entry.next());
    entries.sort();
    return entries;
  }
  // The same without folders.
  QStringList Files() const {
    QStringList files = Entries();
    files.removeIf([this](const QString& entry) {
      const QFileInfo info(PathOf(entry));
      return info.isDir() && !info.isSymLink();
    });
    return files;
  }

  // Installs the component that is the whole program: CMake then writes a manifest of the
  // component, and leaves that of the developer's own installation alone.
  void Install() const {
    QLockFile lock(kLock);
    lock.lock();
    Ran("env", environment_ + QStringList{KELVANE_CMAKE, "--install", kBuild, "--component",
                                          "kelvane", "--prefix", prefix_});
    EXPECT_TRUE(QFile::copy(kBuild + "/install_manifest_kelvane.txt", Manifest()));
  }
  void Uninstall() const {
    Ran("env", environment_ + QStringList{KELVANE_CMAKE, "-D", "MANIFEST=" + Manifest(), "-P",
                                          KELVANE_SOURCE_FOLDER "/packaging/uninstall.cmake"});
  }

  // Makes the Debian package outside the root and returns its path.
  QString MakePackage() const {
    QLockFile lock(kLock);
    lock.lock();
    const QDir folder(place_.path() + "/package");
    Ran(KELVANE_CPACK,
        {"-G", "DEB", "--config", kBuild + "/CPackConfig.cmake", "-B", folder.path()});
    const QStringList made = folder.entryList({"*.deb"});
    EXPECT_EQ(made.size(), 1);
    return folder.filePath(made.value(0));
  }

  // Makes the test's program start by an installed command, such as "bin/kelvane".
  void Use(const Program& program, const QString& command) const {
    const QString link = program.ProgramFolder() + '/' + QFileInfo(command).fileName();
    EXPECT_TRUE(QFile::remove(link));
    EXPECT_TRUE(QFile::link(PathOf(command), link));
  }

 private:
  QString Manifest() const { return place_.path() + "/manifest.txt"; }

  QTemporaryDir place_;
  QStringList environment_;
  QString prefix_;
};

constexpr std::array kIconSizes = {16, 22, 24, 32, 48, 64, 128, 256, 512};
QString IconOf(int size) {
  return QStringLiteral("share/icons/hicolor/%1x%1/apps/kelvane.png").arg(size);
}

// The paths of all installed files from the prefix, sorted.
QStringList ExpectedFiles() {
  QStringList files = {"share/doc/kelvane/changelog.gz", "share/doc/kelvane/copyright",
                       "share/icons/hicolor/scalable/apps/kelvane.svg",
                       "share/icons/hicolor/symbolic/apps/kelvane-symbolic.svg",
                       "share/metainfo/org.kelvane.kelvane.metainfo.xml"};
  for (const QString& command : kCommands) {
    files << "bin/" + command << "lib/kelvane/" + command << "share/man/man1/" + command + ".1.gz"
          << "share/applications/" + command + ".desktop";
  }
  for (const QString& tool : kTools) files << "lib/kelvane/" + tool;
  for (const int size : kIconSizes) {
    files << IconOf(size);
  }
  files.sort();
  return files;
}

QString DesktopEntry(const Installation& installation, const QString& command, const QString& key,
                     const QString& group = "Desktop Entry") {
  const QSettings entry(installation.PathOf("share/applications/" + command + ".desktop"),
                        QSettings::IniFormat);
  return entry.value(group + '/' + key).toString();
}

// Both names in the window's WM_CLASS.
QList<QByteArray> ClassOf(WindowId window) {
  constexpr std::uint32_t kWords = 64;
  xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
  xcb_get_property_reply_t* const reply = xcb_get_property_reply(
      connection,
      xcb_get_property(connection, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, kWords),
      nullptr);
  QByteArray names;
  if (reply != nullptr) {
    names = {static_cast<const char*>(xcb_get_property_value(reply)),
             xcb_get_property_value_length(reply)};
  }
  std::free(reply);
  xcb_disconnect(connection);
  return names.split('\0');
}

QByteArray ContentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

void MakeFile(const QString& path) { ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly)); }

TEST(Installed, HasEachFileInItsPlaceAndWhenRemovedLeavesOnlyForeignFiles) {
  const Installation installation;
  installation.Install();
  EXPECT_EQ(installation.Files(), ExpectedFiles());
  for (const QString& command : kCommands) {
    EXPECT_EQ(QFileInfo(installation.PathOf("bin/" + command)).canonicalFilePath(),
              QFileInfo(installation.PathOf("lib/kelvane/" + command)).canonicalFilePath());
  }
  for (const QString& tool : kTools) {
    EXPECT_TRUE(QFileInfo(installation.PathOf("lib/kelvane/" + tool)).isExecutable())
        << tool.toStdString();
  }
  MakeFile(installation.PathOf("lib/kelvane/files.txt"));  // the joiner's list
  MakeFile(installation.PathOf("share/icons/of-another-program"));
  installation.Uninstall();
  EXPECT_EQ(installation.Entries(),
            (QStringList{"share", "share/icons", "share/icons/of-another-program"}));
}

TEST(Installed, HasTheSameFilesUnderUsrAndIsRemovedFromThere) {
  const Installation installation(Prefix::kUsr);
  installation.Install();
  EXPECT_EQ(installation.Files(),
            ExpectedFiles().replaceInStrings(QRegularExpression("^"), "usr/"));
  EXPECT_EQ(QFile::symLinkTarget(installation.PathOf("usr/lib/kelvane/ffmpeg")),
            installation.PathOf("usr/bin/ffmpeg"))
      << "not a relative link";
  installation.Uninstall();
  EXPECT_EQ(installation.Entries(), QStringList("usr"));
}

TEST(Installed, HasValidDesktopEntriesAndMetadata) {
  const Installation installation;
  installation.Install();
  for (const QString& command : kCommands) {
    EXPECT_EQ(Ran("desktop-file-validate",
                  {installation.PathOf("share/applications/" + command + ".desktop")}),
              "");
    EXPECT_EQ(DesktopEntry(installation, command, "Exec"), command);
    EXPECT_EQ(DesktopEntry(installation, command, "Icon"), "kelvane");
    EXPECT_EQ(DesktopEntry(installation, command, "NoDisplay"),
              command == "kelvane-sections" ? "true" : "");
  }
  const QString metadata = installation.PathOf("share/metainfo/org.kelvane.kelvane.metainfo.xml");
  Ran("appstreamcli", {"validate", "--no-net", metadata});
  EXPECT_TRUE(ContentOf(metadata).contains("<release version=\"" KELVANE_VERSION "\""));
}

TEST(Installed, HasTheAddressesThatTheBuildWasConfiguredWith) {
  const Installation installation;
  installation.Install();
  const QByteArray metadata =
      ContentOf(installation.PathOf("share/metainfo/org.kelvane.kelvane.metainfo.xml"));
  EXPECT_TRUE(metadata.contains("<url type=\"homepage\">" KELVANE_HOME_PAGE "/updates</url>"));
  EXPECT_TRUE(metadata.contains("<url type=\"donation\">" KELVANE_HOME_PAGE "/donate</url>"));

  const QTemporaryDir other;
  Ran(KELVANE_CMAKE,
      {"-S", KELVANE_SOURCE_FOLDER, "-B", other.path(), "-G", "Ninja",
       "-DKELVANE_HOME_PAGE=https://maker.example", "-DKELVANE_TESTS=OFF", "-DKELVANE_BENCH=OFF"});
  for (const char* file :
       {"build.ninja", "CPackConfig.cmake", "packaging/org.kelvane.kelvane.metainfo.xml"}) {
    const QByteArray text = ContentOf(other.filePath(file));
    EXPECT_TRUE(text.contains("https://maker.example")) << file;
    EXPECT_FALSE(text.contains("https://kelvane.example")) << file;
  }
  EXPECT_FALSE(ContentOf(other.filePath("build.ninja")).contains("-Werror"))
      << "warnings are errors without a preset";
}

TEST(Installed, OffersTheJoinerAndTheStabiliserAsActionsOfTheMenuEntry) {
  const Installation installation;
  installation.Install();
  for (const auto& [action, name, command] :
       {std::array{"join", "Join Videos", "kelvane-joiner"},
        std::array{"stabilise", "Stabilise a Video", "kelvane-stabiliser"}}) {
    const QString group = QStringLiteral("Desktop Action %1").arg(action);
    EXPECT_EQ(DesktopEntry(installation, "kelvane", "Name", group), name);
    EXPECT_EQ(DesktopEntry(installation, "kelvane", "Exec", group), command);
  }
}

TEST(Installed, HasIconsOfTheSizesOfTheirFoldersAndASymbolicOneOfOneColour) {
  const Installation installation;
  installation.Install();
  for (const int size : kIconSizes) {
    const QImage icon(installation.PathOf(IconOf(size)));
    EXPECT_EQ(icon.size(), QSize(size, size));
    // The icon shows a green bar at the left of a crop region.
    EXPECT_EQ(icon.pixelColor(size * 7 / 32, size / 2), QColor(Qt::green)) << size;
  }
  const QString symbolic =
      ContentOf(installation.PathOf("share/icons/hicolor/symbolic/apps/kelvane-symbolic.svg"));
  EXPECT_EQ(symbolic.count("fill="), 1);
}

TEST(Installed, OpensWindowsWithTheClassesOfTheDesktopEntries) {
  const Installation installation;
  installation.Install();
  for (const QString& command : kCommands) {
    Program program(KELVANE_PROGRAM_FOLDER, TheDisplay(), command);
    installation.Use(program, "bin/" + command);
    program.Start();
    const WindowId window = TheScreen().AwaitNew({});
    ASSERT_NE(window, 0U) << command.toStdString();
    const QString windowClass = DesktopEntry(installation, command, "StartupWMClass");
    EXPECT_TRUE(ClassOf(window).contains(windowClass.toUtf8())) << command.toStdString();
    TheScreen().Close(window);
    EXPECT_EQ(program.AwaitExit(), 0);
  }
}

// The installed joiner, used by an ordinary user, who can't write to its folder.
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

TEST_F(InstalledJoiner, JoinsFromItsCommandForAnOrdinaryUser) {
  for (const char* name : {"a.mp4", "b.mp4"}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", 2));
    ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
  }
  const QString output = program.PathOf("joined.mp4");
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(PicturesWithoutComplaint(output), 4 * 25);
  CloseJoinerAndExpectEnd();
  EXPECT_EQ(installation.Files(), ExpectedFiles());
}

TEST(Package, PassesLintianAndDependsOnWhatTheProgramUses) {
  const Installation installation;
  const QString package = installation.MakePackage();
  EXPECT_EQ(Ran("lintian", {"--allow-root", "--fail-on", "error,warning", package}), "");
  const QString needed = Ran("dpkg-deb", {"--field", package, "Depends"});
  for (const char* name : {"ffmpeg", "qt6-qpa-plugins", "qt6-translations-l10n", "libmpv2",
                           "fonts-liberation", "xdg-utils", "libqt6widgets6", "libsystemd0",
                           "libasound2(t64)?"}) {  // t64 from Debian 13 on
    EXPECT_TRUE(needed.contains(QRegularExpression("\\b" + QString(name) + "\\b"))) << name;
  }
  EXPECT_EQ(Ran("dpkg-deb", {"--field", package, "Version"}).trimmed(), KELVANE_VERSION);
  EXPECT_EQ(Ran("dpkg-deb", {"--field", package, "Homepage"}).trimmed(),
            KELVANE_HOME_PAGE "/updates");
  EXPECT_TRUE(Ran("dpkg-deb", {"--field", package, "Section"}).startsWith("video"));
}

using InstalledPackage = DesktopTest;

TEST_F(InstalledPackage, CropsAndIsRemovedWithoutATrace) {
  const Installation installation;
  for (const char* folder : {"var/lib/dpkg/info", "var/lib/dpkg/updates", "var/log", "usr/bin"}) {
    ASSERT_TRUE(QDir(installation.Root()).mkpath(folder));
  }
  for (const char* file : {"var/lib/dpkg/status", "var/lib/dpkg/available"}) {
    MakeFile(installation.PathOf(file));
  }
  for (const QString& tool : kTools) {
    ASSERT_TRUE(QFile::link("/usr/bin/" + tool, installation.PathOf("usr/bin/" + tool)));
  }
  const auto systemFiles = [&installation] {
    return installation.Entries().filter(QRegularExpression("^usr"));
  };
  const QStringList before = systemFiles();
  const QStringList dpkg = {"--root=" + installation.Root(), "--force-not-root", "--force-depends",
                            "--force-script-chrootless", "--force-bad-path"};
  Ran("dpkg", dpkg + QStringList{"--install", installation.MakePackage()});

  installation.Use(program, "usr/bin/kelvane");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitEndStatus());
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();

  MakeFile(installation.PathOf("usr/lib/kelvane/files.txt"));
  Ran("dpkg", dpkg + QStringList{"--remove", "kelvane"});
  EXPECT_EQ(systemFiles(), before);
}

}  // namespace
}  // namespace kelvane::desktop
