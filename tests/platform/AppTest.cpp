// The application object, partly in a program of its own: it is made once to a process.
#include "platform/App.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QMouseEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <utility>

#include "platform/Label.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"

namespace kelvane::testing {
namespace {

using Environment = std::vector<std::pair<const char*, QString>>;

// Runs one situation of the test program and returns the lines that it printed.
Events RunTestProgram(const QStringList& arguments, const Environment& environment = {}) {
  QProcess program;
  QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
  all.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
  for (const char* category : {"LC_ALL", "LC_CTYPE", "LC_NUMERIC"}) {
    all.remove(QLatin1String(category));
  }
  for (const auto& [name, value] : environment) all.insert(QLatin1String(name), value);
  program.setProcessEnvironment(all);
  program.start(PLATFORM_TEST_PROGRAM, arguments);
  constexpr int kGoodTime = 30000;  // ms
  if (!program.waitForFinished(kGoodTime)) {
    program.kill();
    program.waitForFinished(kGoodTime);
    return {"did not end"};
  }
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  const std::string complaints = program.readAllStandardError().toStdString();
  EXPECT_EQ(program.exitCode(), 0) << complaints;
  EXPECT_EQ(complaints.find("locale"), std::string::npos) << complaints;
  Events lines;
  for (const QByteArray& line : program.readAllStandardOutput().split('\n')) {
    if (!line.isEmpty()) lines.push_back(line.toStdString());
  }
  return lines;
}

TEST(Application, CountsInThePlainLocaleAndSaysNothingOfTheUsers) {
  const QTemporaryDir locales;
  const QString latin1 = "de_DE.ISO-8859-1";
  ASSERT_EQ(QProcess::execute("localedef", {"--no-archive", "-i", "de_DE", "-f", "ISO-8859-1",
                                            locales.filePath(latin1)}),
            0)
      << "the definitions of locales are missing";
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    for (const QString& locale :
         {u"C"_s, u"POSIX"_s, u"C.UTF-8"_s, latin1, u"xx_XX.not-installed"_s}) {
      Environment environment{
          {"LOCPATH", locales.path()}, {"LC_ALL", {}}, {"LC_CTYPE", {}}, {"LANG", {}}};
      environment.emplace_back(variable, locale);
      EXPECT_EQ(RunTestProgram({"locale"}, environment), Events{"C"});
    }
  }
}

TEST(Application, HasTheNumbersOfALocaleThatIsNotInUtf8) {
  EXPECT_EQ(RunTestProgram({"decimal-point"}, {{"LC_ALL", "de_DE.ISO-8859-1"}}), Events{","});
}

TEST(Application, MeansPixelsOfTheScreenWhateverScaleTheUserHasChosen) {
  for (const Environment& chosen :
       {Environment{},
        {{"QT_SCALE_FACTOR", "2"}},
        {{"QT_SCREEN_SCALE_FACTORS", "3"}},
        {{"QT_ENABLE_HIGHDPI_SCALING", "1"}, {"QT_SCALE_FACTOR", "1.5"}},
        {{"QT_FONT_DPI", "192"}}}) {
    EXPECT_EQ(RunTestProgram({"scale"}, chosen), Events{"1, 300 pixels wide, letters of 11"});
  }
}

TEST(Application, LeavesTheEnvironmentAsItWas) {
  EXPECT_EQ(RunTestProgram({"environment"}, {{"QT_SCALE_FACTOR", "2"},
                                             {"QT_SCREEN_SCALE_FACTORS", "3"},
                                             {"QT_ENABLE_HIGHDPI_SCALING", "1"},
                                             {"LC_ALL", "C"}}),
            (Events{"QT_SCALE_FACTOR 2", "QT_SCREEN_SCALE_FACTORS 3", "QT_ENABLE_HIGHDPI_SCALING 1",
                    "QT_QPA_PLATFORM offscreen", "LC_ALL C", "LC_CTYPE is not set",
                    "LC_NUMERIC is not set"}));
  EXPECT_EQ(RunTestProgram({"environment"}),
            (Events{"QT_SCALE_FACTOR is not set", "QT_SCREEN_SCALE_FACTORS is not set",
                    "QT_ENABLE_HIGHDPI_SCALING is not set", "QT_QPA_PLATFORM offscreen",
                    "LC_ALL is not set", "LC_CTYPE is not set", "LC_NUMERIC is not set"}));
}

TEST(Application, TakesTheNullDeviceForStandardDescriptorsThatAreMissing) {
  EXPECT_EQ(RunTestProgram({"standard-descriptors"}), Events{});
}

TEST(Application, TakesNothingFromTheCommandLineAndKnowsItsFolder) {
  const QString folder = QFileInfo(PLATFORM_TEST_PROGRAM).absolutePath();
  EXPECT_EQ(RunTestProgram({"names", "-platform", "nothing"}),
            (Events{folder.toStdString(), "program", "program"}));
}

TEST(Application, WritesNothingToTheUsersSettingsAfterFileDialogs) {
  const QTemporaryDir home;
  const QString config = home.filePath("config");
  EXPECT_EQ(RunTestProgram({"file-dialogs"}, {{"HOME", home.path()},
                                              {"XDG_CONFIG_HOME", config},
                                              {"XDG_CACHE_HOME", home.filePath("cache")}}),
            Events{"/tmp/new.mp4"});
  QDirIterator files(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    // The system's cache of fonts is no setting of the user's.
    const QString file = files.next();
    if (!file.contains("/cache/fontconfig/"_L1)) ADD_FAILURE() << file.toStdString();
  }
  EXPECT_FALSE(QFile::exists(config));
}

TEST(Application, RunsUntilItsFormIsUnloaded) {
  EXPECT_EQ(RunTestProgram({"run"}), (Events{"tick", "unloaded"}));
}

TEST(Application, EndsAtOnceWhereNoFormIsLoaded) {
  EXPECT_EQ(RunTestProgram({"run-without-a-form"}), Events{});
}

TEST(DoEvents, HandlesTheWaitingEventsOfAllWindows) {
  TestForm first({Design(kLabel, "Label1")});
  TestForm second({Design(kLabel, "Label2")});
  first.Open();
  second.Open();
  Events events;
  for (const TestForm* form : {&first, &second}) {
    auto& label = *form->findChild<Label*>();
    Record(label, events);
    QCoreApplication::postEvent(
        &label,
        new QMouseEvent(QEvent::MouseButtonDblClick, QPointF(), label.mapToGlobal(QPointF()),
                        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
  }
  EXPECT_EQ(events, Events{});
  DoEvents();
  EXPECT_EQ(events, Events(2, "Double button 1 at 0,0"));
}

TEST(DoEvents, ReturnsWhereNoEventWaits) {
  TestForm form;
  form.Open();
  Timer timer(form, "Timer1", 60000);
  timer.Tick = [] { ADD_FAILURE() << "it has waited for the timer"; };
  timer.setEnabled(true);
  for (int round = 0; round < 100; ++round) DoEvents();
}

// Besides the event loops of the application and of dialogs.
TEST(DoEvents, IsTheOnlyPlaceInTheSourcesThatProcessesEvents) {
  const QRegularExpression pump(
      R"(\b(processEvents|sendPostedEvents|QEventLoop|exec|qWait\w*|WaitForMoreEvents)\b)");
  Events found;
  int sources = 0;
  QDirIterator files(PLATFORM_SOURCES, {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ++sources;
    const QString text = QString::fromUtf8(file.readAll());
    for (auto uses = pump.globalMatch(text); uses.hasNext();) {
      found.push_back(
          (QFileInfo(file).fileName() + QLatin1Char(' ') + uses.next().captured()).toStdString());
    }
  }
  EXPECT_GT(sources, 50);
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, (Events{"App.cpp exec", "App.cpp processEvents", "DialogLoop.cpp exec"}));
}

}  // namespace
}  // namespace kelvane::testing
