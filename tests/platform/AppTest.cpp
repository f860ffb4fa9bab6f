// The application object, partly in a program of its own: it is made once to a process.
#include "platform/App.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QMouseEvent>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <clocale>
#include <utility>

#include "platform/Label.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"
#include "support/Events.h"

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
  program.start(QStringLiteral(PLATFORM_TEST_PROGRAM), arguments);
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

TEST(TheApplication, CountsInThePlainLocaleWhateverTheUsersIs) {
  EXPECT_EQ(RunTestProgram({u"locale"_s}, {{"LC_ALL", u"C.UTF-8"_s}, {"LANG", QString()}}),
            Events{"C"});
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST(TheApplication, SaysNothingOfTheUsersLocale) {
  const QTemporaryDir locales;
  const QString latin1 = u"de_DE.ISO-8859-1"_s;
  ASSERT_EQ(QProcess::execute(u"localedef"_s, {u"--no-archive"_s, u"-i"_s, u"de_DE"_s, u"-f"_s,
                                               u"ISO-8859-1"_s, locales.filePath(latin1)}),
            0)
      << "the definitions of locales are missing";
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    for (const QString& locale : {u"C"_s, u"POSIX"_s, latin1, u"xx_XX.not-installed"_s}) {
      Environment environment{
          {"LOCPATH", locales.path()}, {"LC_ALL", {}}, {"LC_CTYPE", {}}, {"LANG", {}}};
      environment.emplace_back(variable, locale);
      EXPECT_EQ(RunTestProgram({u"locale"_s}, environment), Events{"C"});
    }
  }
}

TEST(TheApplication, SpeaksTheNumbersOfALocaleThatIsNotInUtf8) {
  EXPECT_EQ(RunTestProgram({u"decimal-point"_s}, {{"LC_ALL", u"de_DE.ISO-8859-1"_s}}), Events{","});
}

TEST(TheApplication, MeansPixelsOfTheScreenWhateverScaleTheUserHasChosen) {
  for (const Environment& chosen :
       {Environment{},
        {{"QT_SCALE_FACTOR", u"2"_s}},
        {{"QT_SCREEN_SCALE_FACTORS", u"3"_s}},
        {{"QT_ENABLE_HIGHDPI_SCALING", u"1"_s}, {"QT_SCALE_FACTOR", u"1.5"_s}},
        {{"QT_FONT_DPI", u"192"_s}}}) {
    EXPECT_EQ(RunTestProgram({u"scale"_s}, chosen), Events{"1, 300 pixels wide, letters of 11"});
  }
}

TEST(TheApplication, LeavesTheEnvironmentToWhatItStartsAsItWas) {
  EXPECT_EQ(RunTestProgram({u"environment"_s}, {{"QT_SCALE_FACTOR", u"2"_s},
                                                {"QT_SCREEN_SCALE_FACTORS", u"3"_s},
                                                {"QT_ENABLE_HIGHDPI_SCALING", u"1"_s},
                                                {"LC_ALL", u"C"_s}}),
            (Events{"QT_SCALE_FACTOR 2", "QT_SCREEN_SCALE_FACTORS 3", "QT_ENABLE_HIGHDPI_SCALING 1",
                    "QT_QPA_PLATFORM offscreen", "LC_ALL C", "LC_CTYPE is not set",
                    "LC_NUMERIC is not set"}));
  EXPECT_EQ(RunTestProgram({u"environment"_s}),
            (Events{"QT_SCALE_FACTOR is not set", "QT_SCREEN_SCALE_FACTORS is not set",
                    "QT_ENABLE_HIGHDPI_SCALING is not set", "QT_QPA_PLATFORM offscreen",
                    "LC_ALL is not set", "LC_CTYPE is not set", "LC_NUMERIC is not set"}));
}

TEST(TheApplication, StartedWithoutStandardDescriptorsHasTheNullDeviceInTheirPlace) {
  EXPECT_EQ(RunTestProgram({u"standard-descriptors"_s}), Events{});
}

TEST(TheApplication, TakesNothingFromTheCommandLineAndKnowsItsFolder) {
  const QString folder = QFileInfo(QStringLiteral(PLATFORM_TEST_PROGRAM)).absolutePath();
  const Events lines = RunTestProgram({u"names"_s, u"-platform"_s, u"nothing"_s});
  EXPECT_EQ(lines, (Events{folder.toStdString(), "program", "program"}));
  EXPECT_EQ(App::Path(), QCoreApplication::applicationDirPath().toStdString());
  EXPECT_NE(App::Path().back(), '/');
}

TEST(TheApplication, WritesNothingToTheUsersSettingsAfterFileDialogs) {
  const QTemporaryDir home;
  const QString config = home.filePath(u"config"_s);
  const Events lines =
      RunTestProgram({u"file-dialogs"_s}, {{"HOME", home.path()},
                                           {"XDG_CONFIG_HOME", config},
                                           {"XDG_CACHE_HOME", home.filePath(u"cache"_s)}});
  EXPECT_EQ(lines, Events{"/tmp/new.mp4"});
  QDirIterator files(home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    // What the system remembers of its fonts is no setting of the user's.
    const QString file = files.next();
    if (!file.contains("/cache/fontconfig/"_L1)) ADD_FAILURE() << file.toStdString();
  }
  EXPECT_FALSE(QFile::exists(config));
}

TEST(TheApplication, RunsUntilItsFormIsUnloaded) {
  EXPECT_EQ(RunTestProgram({u"run"_s}), (Events{"tick", "unloaded"}));
}

TEST(TheApplication, EndsAtOnceWhereNoFormIsLoadedAnyMore) {
  EXPECT_EQ(RunTestProgram({u"run-without-a-form"_s}), Events{});
}

TEST(TheApplication, IsKnownByItsName) { EXPECT_EQ(App::Title(), u"Kelvane"_s); }

TEST(TheToolsFolder, MayBeAnother) {
  const std::string former = App::Path();
  App::setPath("/somewhere else");
  EXPECT_EQ(App::Path(), "/somewhere else");
  App::setPath(former);
}

// Stands in for the system where a page is opened.
class Browser : public QObject {
  Q_OBJECT
 public:
  Browser() { QDesktopServices::setUrlHandler(u"https"_s, this, "Open"); }
  ~Browser() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

  Events opened;

 public slots:
  void Open(const QUrl& address) { opened.push_back(address.toString().toStdString()); }
};

TEST(OpenWebPage, HandsTheAddressToTheSystem) {
  const Browser browser;
  App::OpenWebPage(u"https://kelvane.example/updates"_s);
  EXPECT_EQ(browser.opened, Events{"https://kelvane.example/updates"});
}

TEST(DoEventsIs, ServingWhatWaitsForAllWindows) {
  TestForm first({Design(kLabel, "Label1")});
  TestForm second({Design(kLabel, "Label2")});
  first.Open();
  second.Open();
  Events events;
  for (const char* name : {"Label1", "Label2"}) {
    auto& form = first.findChild<Label*>(QLatin1String(name)) != nullptr ? first : second;
    auto& label = form.Find<Label>(name);
    label.MouseUp = [&events, name](const MouseEvent&) { events.emplace_back(name); };
    QCoreApplication::postEvent(
        &label, new QMouseEvent(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1),
                                Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
  }
  EXPECT_EQ(events, Events{});
  DoEvents();
  EXPECT_EQ(events, (Events{"Label1", "Label2"}));
}

TEST(DoEventsIs, ReturningWhereNothingWaits) {
  TestForm form;
  form.Open();
  Timer timer(form, "Timer1", 60000);
  timer.Tick = [] { ADD_FAILURE() << "a tick before its time"; };
  timer.setEnabled(true);
  QElapsedTimer clock;
  clock.start();
  for (int round = 0; round < 100; ++round) DoEvents();
  constexpr int kAtOnce = 5000;  // ms
  EXPECT_LT(clock.elapsed(), kAtOnce);
}

// All that serves the queue in some file of the program: DoEvents, the message loop and dialogs.
TEST(DoEventsIs, TheOnlyPlaceThatPumpsTheQueue) {
  const QRegularExpression pump(QStringLiteral(
      R"(\b(processEvents|sendPostedEvents|QEventLoop|exec|qWait\w*|WaitForMoreEvents)\b)"));
  Events found;
  int sources = 0;
  QDirIterator files(QStringLiteral(PLATFORM_SOURCES), {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                     QDirIterator::Subdirectories);
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

#include "AppTest.moc"
