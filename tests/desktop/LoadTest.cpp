// A video comes in, with the real probe tool unless said otherwise.
#include <QDir>
#include <QFile>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class Load : public DesktopTest {
 protected:
  // Loads `path` behind a video of 640 by 360 pixels and expects that nothing but the path changes.
  void ExpectOldStateAfterLoading(const QString& path) {
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    EXPECT_TRUE(WaitFor([&] { return window.ShowsPath(path); }));
    EXPECT_TRUE(HoldsFor([&] { return screen.Windows().size() == 1; }, 500ms)) << "no message";
    EXPECT_TRUE(window.AwaitVideo(QSize(640, 360)));
    EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
    ExpectAnotherVideoLoads();
    CloseAndExpectEnd();
  }

  void ExpectAnotherVideoLoads() {
    const QString other = program.PathOf("other.mp4");
    ASSERT_TRUE(MakeVideo(other, QSize(320, 240), 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
    EXPECT_TRUE(window.AwaitVideo(QSize(320, 240)));
  }
};

TEST_F(Load, ShowsPathSizeCanvasBarsAndReadOuts) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  EXPECT_TRUE(window.ShowsPath(video));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
  EXPECT_EQ(window.Bars(), QRect(0, 0, 640, 360));
}

TEST_F(Load, ReadsSizesOfFourDigits) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(1920, 1080), 1));
  const QImage viewport = screen.Still(window.Place("Picture1(1)").adjusted(0, 0, 0, -4));
  EXPECT_TRUE(AllOf(viewport, QRect(0, 0, viewport.width(), 5), kMarker));
  EXPECT_TRUE(AllOf(viewport, QRect(0, 0, 5, viewport.height()), kMarker));
  EXPECT_EQ(CountOf(viewport, viewport.rect().adjusted(5, 5, 0, 0), kMarker), 0)
      << "the right and the base bar lie out of view";
}

TEST_F(Load, OpensADialogWithQtsTitle) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QList<WindowId> known = screen.Windows();
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Open");
}

TEST_F(Load, OpensTheSameDialogFromTheMenu) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QList<WindowId> known = screen.Windows();
  window.ChooseMenuItem(0, 0);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Open");
}

TEST_F(Load, KeepsTheVideoWhenTheDialogIsCancelled) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  const QList<WindowId> known = screen.Windows();
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
  screen.Strike(kEscape);
  ASSERT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
  EXPECT_TRUE(window.AwaitVideo(QSize(640, 360)));
  EXPECT_TRUE(window.ShowsPath(video));
}

TEST_F(Load, MeasuresTheHiddenBarsOnceItsDialogWasOpened) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QList<WindowId> known = screen.Windows();
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
  screen.Strike(kEscape);
  // The canvas as drawn is 417 by 249 pixels.
  EXPECT_TRUE(window.AwaitCaption("Label1(9)", "0,412"));
  EXPECT_TRUE(window.AwaitCaption("Label1(11)", "0,244"));
  EXPECT_TRUE(window.Shows("Label1(1)", "0,000"));
  EXPECT_TRUE(window.Bars().isEmpty());
}

TEST_F(Load, TakesASecondVideoOfAnotherSize) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  ExpectAnotherVideoLoads();
  EXPECT_TRUE(window.AwaitBarsAround(QSize(320, 240)));
  EXPECT_EQ(window.Bars(), QRect(0, 0, 320, 240));
}

TEST_F(Load, TakesNamesWithBlanksAndLettersOfAnyKind) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QList<std::pair<QString, QSize>> videos = {
      {"a clip  of mine.mp4", {200, 100}},
      {"it's mine & $HOME.mp4", {208, 104}},
      {QString::fromUtf8("Urlaub in Öland – 東京.mp4"), {216, 112}},
      {"-leading dash.mp4", {224, 120}}};
  for (const auto& [name, size] : videos) {
    SCOPED_TRACE(name.toStdString());
    const QString path = program.PathOf(name);
    ASSERT_TRUE(MakeVideo(path, size, 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    ASSERT_TRUE(window.AwaitVideo(size));
    EXPECT_TRUE(window.AwaitBarsAround(size));
  }
}

TEST_F(Load, KeepsTheOldStateOfAnEmptyFile) {
  const QString file = program.PathOf("empty.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(file, ""));
  ExpectOldStateAfterLoading(file);
}

TEST_F(Load, KeepsTheOldStateOfATextFile) {
  const QString file = program.PathOf("text.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(file, "This is no video, and it says nothing of one.\n"));
  ExpectOldStateAfterLoading(file);
}

TEST_F(Load, KeepsTheOldStateOfATruncatedVideo) {
  const QString whole = program.PathOf("whole.mp4");
  const QString file = program.PathOf("truncated.mp4");
  ASSERT_TRUE(MakeVideo(whole, QSize(160, 120), 1));
  const QByteArray content = ContentOf(whole);
  ASSERT_NO_FATAL_FAILURE(WriteFile(file, content.left(content.size() / 2)));
  ExpectOldStateAfterLoading(file);
}

TEST_F(Load, KeepsTheOldStateOfSoundWithoutAPicture) {
  const QString file = program.PathOf("sound.wav");
  ASSERT_TRUE(RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "sine=duration=1", file}));
  ExpectOldStateAfterLoading(file);
}

TEST_F(Load, TakesAPictureAsAVideo) {
  const QString file = program.PathOf("picture.png");
  ASSERT_TRUE(RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "testsrc2=size=320x200",
                                 "-frames:v", "1", file}));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, file));
  EXPECT_TRUE(window.AwaitVideo(QSize(320, 200)));
}

TEST_F(Load, KeepsTheOldStateOfAFileThatVanishesBehindTheDialog) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  const QString file = program.PathOf("vanishing.mp4");
  ASSERT_TRUE(MakeVideo(file, QSize(160, 120), 1));
  program.ReplaceTool("ffprobe", "case \"$*\" in *show_entries*) " + program.Gate("size probe") +
                                     ";; esac\n"
                                     "exec \"$real\" \"$@\"");
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, file));
  ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() == 1; }));
  ASSERT_TRUE(QFile::remove(file));
  ASSERT_TRUE(program.Open("size probe"));
  EXPECT_TRUE(WaitFor([&] { return window.ShowsPath(file); }));
  EXPECT_TRUE(window.AwaitVideo(QSize(640, 360)));
  EXPECT_EQ(screen.Windows().size(), 1);
  CloseAndExpectEnd();
}

TEST_F(Load, ShowsTheCanvasAsDrawnWithoutAProbeTool) {
  program.RemoveTool("ffprobe");
  const QString file = program.PathOf("video.mp4");
  ASSERT_TRUE(MakeVideo(file, QSize(160, 120), 1));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, file));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(417, 249)));
  EXPECT_TRUE(window.ShowsPath(file));
  EXPECT_TRUE(window.Shows("Label1(1)", "0,000"));
  EXPECT_TRUE(window.Shows("Label1(3)", "0,000"));
  EXPECT_EQ(screen.Windows().size(), 1);
}

TEST_F(Load, AsksTheProbeToolTwice) {
  ReplaceProbe("00:00:10.00");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  const QList<QStringList> runs = {{"-v", "error", "-show_entries", "stream=width,height", "-of",
                                    "default=noprint_wrappers=1", video},
                                   {"-hide_banner", "-stats", "-i", video}};
  EXPECT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() >= 2; }));
  EXPECT_EQ(program.RunsOf("ffprobe"), runs);
}

TEST_F(Load, TakesASecondVideoWhileTheFirstIsProbed) {
  program.ReplaceTool("ffprobe",
                      "case \"$*\" in\n"
                      "*show_entries*first*) printf 'width=640\\nheight=360\\n' ;;\n"
                      "*show_entries*) printf 'width=320\\nheight=240\\n' ;;\n"
                      "*first*) " +
                          program.TalkingGate("first") +
                          "echo '  Duration: 00:00:10.00,' ;;\n"
                          "*) echo '  Duration: 00:00:20.00,' ;;\n"
                          "esac");
  const QString first = program.PathOf("first.mp4");
  const QString second = program.PathOf("second.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(first, "no video"));
  ASSERT_NO_FATAL_FAILURE(WriteFile(second, "no video"));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, first));
  ASSERT_TRUE(window.AwaitCaption("Label1(1)", "0,640"));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, second));
  EXPECT_TRUE(window.AwaitVideo(QSize(320, 240)));
  EXPECT_EQ(program.RunsOf("ffprobe").size(), 4);
  ASSERT_TRUE(program.Open("first"));
  ASSERT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  EXPECT_TRUE(window.AwaitVideo(QSize(320, 240)));
  EXPECT_TRUE(window.ShowsPath(second));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(320, 240)));
  CloseAndExpectEnd();
}

// Locales whose encoding isn't UTF-8. Names of files are bytes all the same.
class OtherEncoding : public DesktopTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(OtherEncoding, LoadsNamesWithLettersBeyondAsciiAndIsNotMentioned) {
  const QString locales = program.PathOf("locales");
  const QString latin1 = QStringLiteral("de_DE.ISO-8859-1");
  ASSERT_TRUE(QDir().mkpath(locales));
  ASSERT_TRUE(RunTool("localedef",
                      {"--no-archive", "-i", "de_DE", "-f", "ISO-8859-1", locales + '/' + latin1}))
      << "the definitions of locales are missing";
  program.SetVariable("LOCPATH", locales);
  program.SetVariable("LC_CTYPE", GetParam());
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const auto& [name, size] : {std::pair("M\u00e4rz.mp4", QSize(640, 360)),
                                   {"\u00fcber M\u00e4rz.mp4", QSize(480, 270)}}) {
    video = program.PathOf(QString::fromUtf8(name));
    ASSERT_TRUE(MakeVideo(video, size, 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
    EXPECT_TRUE(window.AwaitVideo(size)) << name;
  }
  EXPECT_FALSE(program.Printed().contains("locale")) << program.Printed().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Locales, OtherEncoding,
                         ::testing::Values("C", "POSIX", "de_DE.ISO-8859-1", "xx_XX"));

}  // namespace
}  // namespace kelvane::desktop
