#include "desktop/DesktopTest.h"

#include <QDir>
#include <QFile>
#include <memory>

#include "desktop/driver/QtOnDisplay.h"

namespace kelvane::desktop {
namespace {

// Set up before the first test, since listing the tests must work without a display.
class DisplayEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    const std::string folder = home_.path().toStdString();
    display_ = std::make_unique<PrivateDisplay>(folder);
    qt_ = std::make_unique<QtOnDisplay>(*display_, folder);
    screen_ = std::make_unique<Screen>(display_->Name());
  }

  void TearDown() override {
    screen_.reset();
    qt_.reset();
    display_.reset();
  }

  Screen& screen() { return *screen_; }
  QString displayName() const { return QString::fromStdString(display_->Name()); }

 private:
  QTemporaryDir home_;
  std::unique_ptr<PrivateDisplay> display_;
  std::unique_ptr<QtOnDisplay> qt_;
  std::unique_ptr<Screen> screen_;
};

DisplayEnvironment* environment = nullptr;

}  // namespace

Screen& TheScreen() { return environment->screen(); }

QString TheDisplay() { return environment->displayName(); }

DesktopTest::DesktopTest(const QString& programName)
    : DesktopTest(TheScreen(), TheDisplay(), programName) {}

DesktopTest::DesktopTest(Screen& otherScreen, const QString& display, const QString& programName)
    : screen(otherScreen),
      program(KELVANE_PROGRAM_FOLDER, display, programName),
      window(screen),
      job(screen) {}

void DesktopTest::TearDown() {
  const QString printed = program.Printed();
  EXPECT_FALSE(printed.contains("Sanitizer") || printed.contains("runtime error"))
      << printed.toStdString();
  if (!HasFailure()) return;
  const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
  // The names of parameterised tests contain slashes.
  const QString name =
      QString("%1.%2").arg(test->test_suite_name(), test->name()).replace('/', '-');
  const QString file = QString(KELVANE_FAILURES_FOLDER "/%1.png").arg(name);
  QDir().mkpath(KELVANE_FAILURES_FOLDER);
  screen.Picture().save(file);
  std::cerr << "The screen at the end: " << file.toStdString() << "\nThe program printed:\n"
            << printed.toStdString() << '\n';
}

void DesktopTest::OpenWindow() {
  program.Start();
  ASSERT_TRUE(window.Await()) << "the main window doesn't come";
}

void DesktopTest::OpenWindowWithVideo(QSize size, int seconds) {
  if (video.isEmpty()) video = program.PathOf("video.mp4");
  ASSERT_TRUE(MakeVideo(video, size, seconds));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  ASSERT_TRUE(window.AwaitVideo(size));
  ASSERT_TRUE(window.AwaitCanvas());
}

void DesktopTest::ReplaceProbe() {
  program.ReplaceTool("ffprobe",
                      "case \"$*\" in\n"
                      "*show_entries*) printf 'width=640\\nheight=360\\n' ;;\n"
                      "*) echo '  Duration: 00:00:10.00, start: 0.000000' >&2 ;;\n"
                      "esac");
}

void DesktopTest::OpenWindowWithFakeVideo() {
  video = program.PathOf("pretended.mp4");
  WriteFile(video, "no video");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  ASSERT_TRUE(window.AwaitVideo(QSize(640, 360)));
  ASSERT_TRUE(window.AwaitCanvas());
}

void DesktopTest::StartCrop(const QString& output) {
  ASSERT_TRUE(ChooseFile(screen, window, kCropVideo, output));
  ASSERT_TRUE(job.Await()) << "the job's window doesn't come";
}

void DesktopTest::ExpectEndAndCloseJob() {
  EXPECT_TRUE(job.AwaitEndStatus());
  EXPECT_EQ(screen.Windows().size(), 2) << "a message box is open";
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
}

void DesktopTest::CloseAndExpectEnd() {
  screen.Close(window.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

pid_t DesktopTest::Tool() const {
  const QList<qint64> tools = program.Children("RSDT");
  return tools.size() == 1 ? static_cast<pid_t>(tools.first()) : 0;
}

QByteArray DesktopTest::ContentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
}

QHash<QString, QByteArray> DesktopTest::Files() const {
  QHash<QString, QByteArray> files;
  for (const QFileInfo& file : QDir(program.Folder()).entryInfoList(QDir::Files | QDir::System)) {
    // A device may have endless content.
    const QByteArray content = file.isFile() ? ContentOf(file.filePath()) : QByteArray();
    files.insert(file.fileName(), file.symLinkTarget().toUtf8() + content);
  }
  return files;
}

void DesktopTest::WriteFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(content), content.size());
}

}  // namespace kelvane::desktop

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  kelvane::desktop::environment = new kelvane::desktop::DisplayEnvironment;
  ::testing::AddGlobalTestEnvironment(kelvane::desktop::environment);
  return RUN_ALL_TESTS();
}
