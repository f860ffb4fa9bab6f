// The application object, and the scales of a Wayland compositor's outputs. A process can make the
// object only once, so the tests of the object run the program of TestProgram.cpp.
#include "platform/App.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <utility>
#include <vector>

#include "platform/WaylandOutputs.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

using namespace Qt::StringLiterals;
using Environment = std::vector<std::pair<const char*, QString>>;

// Runs the test program for the situation that the first argument names, and returns its output.
std::string RunTestProgram(const QStringList& arguments, const Environment& environment = {}) {
  QProcess program;
  QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
  all.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
  for (const char* variable : {"LANGUAGE", "LC_ALL", "LC_CTYPE", "LC_MESSAGES", "LC_NUMERIC"}) {
    all.remove(QLatin1String(variable));
  }
  for (const auto& [name, value] : environment) all.insert(QLatin1String(name), value);
  program.setProcessEnvironment(all);
  program.start(PLATFORM_TEST_PROGRAM, arguments);
  EXPECT_TRUE(program.waitForFinished());
  const std::string complaints = program.readAllStandardError().toStdString();
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit) << complaints;
  EXPECT_EQ(program.exitCode(), 0) << complaints;
  EXPECT_EQ(complaints.find("locale"), std::string::npos) << complaints;
  return program.readAllStandardOutput().trimmed().toStdString();
}

TEST(Application, UsesTheUsersDecimalPointInQtAndThatOfTheCLocaleElsewhere) {
  const QTemporaryDir locales;
  const QString latin1 = "de_DE.ISO-8859-1";
  ASSERT_EQ(QProcess::execute("localedef", {"--no-archive", "-i", "de_DE", "-f", "ISO-8859-1",
                                            locales.filePath(latin1)}),
            0)
      << "the definitions of locales are missing";
  for (const std::string variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    for (const QString& locale :
         {u"C"_s, u"POSIX"_s, u"C.UTF-8"_s, latin1, u"xx_XX.not-installed"_s}) {
      Environment environment{
          {"LOCPATH", locales.path()}, {"LC_ALL", {}}, {"LC_CTYPE", {}}, {"LANG", {}}};
      environment.emplace_back(variable.c_str(), locale);
      const bool german = locale == latin1 && variable != "LC_CTYPE";
      EXPECT_EQ(RunTestProgram({"locale"}, environment), german ? "C and ," : "C and .")
          << variable << '=' << locale.toStdString();
    }
  }
}

TEST(Application, UsesPixelsOfTheScreenWhateverScaleTheUserHasChosen) {
  for (const Environment& chosen :
       {Environment{},
        {{"QT_SCALE_FACTOR", "2"}},
        {{"QT_SCREEN_SCALE_FACTORS", "3"}},
        {{"QT_ENABLE_HIGHDPI_SCALING", "1"}, {"QT_SCALE_FACTOR", "1.5"}},
        {{"QT_FONT_DPI", "192"}}}) {
    EXPECT_EQ(RunTestProgram({"scale"}, chosen), "1, 300 pixels wide, letters of 11");
  }
}

TEST(Application, LeavesTheEnvironmentAsItWas) {
  for (const Environment& before : {Environment{},
                                    {{"QT_SCALE_FACTOR", "2"},
                                     {"QT_SCREEN_SCALE_FACTORS", "3"},
                                     {"QT_ENABLE_HIGHDPI_SCALING", "1"},
                                     {"LC_ALL", "C"}}}) {
    EXPECT_EQ(RunTestProgram({"environment"}, before), "unchanged");
  }
}

TEST(Application, OpensTheNullDeviceForMissingStandardDescriptors) {
  RunTestProgram({"standard-descriptors"});
}

TEST(Application, IgnoresTheCommandLineAndKnowsItsFolder) {
  const std::string folder = QFileInfo(PLATFORM_TEST_PROGRAM).absolutePath().toStdString();
  EXPECT_EQ(RunTestProgram({"names", "-platform", "nothing"}), folder + "\nprogram\nprogram");
}

TEST(Application, WritesNothingToTheUsersSettingsAfterFileDialogs) {
  const QTemporaryDir home;
  EXPECT_EQ(RunTestProgram({"file-dialogs"}, {{"HOME", home.path()},
                                              {"XDG_CONFIG_HOME", home.filePath("config")},
                                              {"XDG_CACHE_HOME", home.filePath("cache")}}),
            "/tmp/new.mp4");
  QDirIterator files(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    // The font library's cache isn't a setting of the user's.
    const QString file = files.next();
    if (!file.contains("/cache/fontconfig/"_L1)) ADD_FAILURE() << "written: " << file.toStdString();
  }
}

TEST(Application, HasQtsTextsInTheUsersLanguageAndItsWindowsFromLeftToRight) {
  for (const auto& [environment, cancel] :
       {std::pair(Environment{{"LANG", "de_DE.UTF-8"}}, "Abbrechen"),
        {{{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "fr:de"}}, "Annuler"},
        {{{"LANG", "eo.UTF-8"}, {"LANGUAGE", "eo:de"}}, "Abbrechen"},
        {{{"LANG", "he_IL.UTF-8"}}, "ביטול"},
        {{{"LANG", "en_GB.UTF-8"}}, "Cancel"},
        {{{"LANG", "tlh_XX.UTF-8"}}, "Cancel"},
        {{{"LANG", "C.UTF-8"}}, "Cancel"}}) {
    EXPECT_EQ(RunTestProgram({"texts"}, environment), std::string(cancel) + ", left to right");
  }
}

TEST(Application, RunsUntilItsFormIsUnloadedAndNotAtAllWhereNoneIsLoaded) {
  EXPECT_EQ(RunTestProgram({"run"}), "tick\nunloaded");
  EXPECT_EQ(RunTestProgram({"run-without-a-form"}), "");
}

TEST(Sources, ProcessEventsOnlyInDoEventsAndTheProgramsLoopAndDialogs) {
  QProcess grep;
  grep.setWorkingDirectory(PLATFORM_SOURCES);
  grep.start("grep", {"-rowE", "--include=*.cpp", "--include=*.h",
                      "processEvents|sendPostedEvents|QEventLoop|exec|qWait[A-Za-z]*|"
                      "WaitForMoreEvents"});
  ASSERT_TRUE(grep.waitForFinished());
  QStringList uses = QString::fromUtf8(grep.readAllStandardOutput()).split(u'\n');
  uses.sort();
  EXPECT_EQ(uses, (QStringList{"", "platform/App.cpp:exec", "platform/App.cpp:processEvents",
                               "platform/DialogLoop.cpp:exec"}));
}

TEST(ScaleOfOutput, IsTheNumberOfPixelsPerUnitAlthoughSizesAreRoundedToWholeUnits) {
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {1000, 600}, 2), 1.5);
  EXPECT_EQ(ScaleOfOutput({3840, 2160}, {3072, 1728}, 2), 1.25);
  EXPECT_EQ(ScaleOfOutput({1600, 2560}, {640, 1024}, 3), 2.5);
  EXPECT_EQ(ScaleOfOutput({3000, 1800}, {1500, 900}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1366, 768}, {910, 512}, 2), 1.5);
  EXPECT_EQ(ScaleOfOutput({1366, 768}, {911, 512}, 2), 1.5);
}

TEST(ScaleOfOutput, IsTheGivenRoundedUpScaleIfASizeIsEmptyOrTheSizesContradictIt) {
  EXPECT_EQ(ScaleOfOutput({}, {1000, 600}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {1500, 900}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {500, 300}, 2), 2);
}

TEST(WaylandOutputs, AreNoneWithoutACompositor) {
  const QByteArray display = qgetenv("WAYLAND_DISPLAY");
  qputenv("WAYLAND_DISPLAY", "/no/such/socket");
  EXPECT_TRUE(PixelsOfWaylandOutputs().isEmpty());
  display.isNull() ? qunsetenv("WAYLAND_DISPLAY") : qputenv("WAYLAND_DISPLAY", display);
}

}  // namespace
}  // namespace kelvane::testing
