// Files that players trip over: the window lives, and the next good one plays.
#include <QFile>

#include "desktop/PlayingTest.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kGoodSize(320, 240);

struct Clip {
  const char* name;
  QSize size;
  // For the tool, between the picture source and the file's name.
  QStringList options;
  const char* rate = "25";
};

class PlayerFiles : public Playing {
 protected:
  // Makes a file that plays by itself, whatever came before it.
  void OpenWindowBesideGoodFile() {
    ASSERT_TRUE(MakeVideo(good_, kGoodSize, 20));
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
  }

  void ExpectGoodFilePlays() {
    EXPECT_TRUE(Lives());
    ASSERT_NO_FATAL_FAILURE(LoadAndRun(good_, kGoodSize));
    EXPECT_TRUE(AwaitMoving(kGoodSize));
  }

  // Loads a file without a picture that could be shown, runs it, and goes on to the good one.
  void ExpectNoPictureOf(const QString& path) {
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    ASSERT_TRUE(WaitFor([&] { return window.ShowsPath(path); }));
    window.Click(kRunVideo);
    EXPECT_TRUE(AwaitBlack(kGoodSize));
    EXPECT_EQ(screen.Windows().size(), 1) << "no message";
    ExpectGoodFilePlays();
  }

  // As it is stored: the picture reaches to the last pixel of the canvas and no farther. What was
  // loaded before plays until then.
  void ExpectEveryPixelOf(const QString& path, QSize size) {
    ASSERT_NO_FATAL_FAILURE(LoadAndRun(path, size));
    EXPECT_TRUE(WaitFor([&] {
      const QImage inside = window.Inside(size);
      const QRect corner(inside.width() - 40, inside.height() - 40, 40, 40);
      return CountOf(inside, corner, kBlack) < 40 * 40 / 2;
    }));
    EXPECT_TRUE(AwaitMoving(size));
    EXPECT_TRUE(BarsLieOver(size));
  }

  void ExpectCleanEnd() {
    CloseAndExpectEnd();
    EXPECT_EQ(program.Printed(), "");
  }

  QString MakeClip(const Clip& clip) const {
    QString path = program.PathOf(clip.name);
    const QString picture = QStringLiteral("testsrc2=size=%1x%2:rate=%3:duration=3")
                                .arg(Even(clip.size.width()))
                                .arg(Even(clip.size.height()))
                                .arg(QLatin1String(clip.rate));
    const bool made = RunTool("ffmpeg", QStringList{"-v", "error", "-f", "lavfi", "-i", picture} +
                                            clip.options + QStringList{path});
    return made ? path : QString();
  }

  // The test picture has no odd sizes.
  static int Even(int size) { return size + size % 2; }

  QString good_ = program.PathOf("good.mp4");
};

TEST_F(PlayerFiles, OfEveryShapePlay) {
  const QList<Clip> clips = {
      {"silent.mp4", {320, 200}, {"-pix_fmt", "yuv420p", "-preset", "ultrafast"}},
      {"odd.mkv",
       {321, 201},
       {"-c:v", "ffv1", "-pix_fmt", "yuv420p", "-vf", "crop=321:201:0:0:exact=1"}},
      {"anamorphic.mp4",
       {360, 288},
       {"-pix_fmt", "yuv420p", "-preset", "ultrafast", "-vf", "setsar=64/45"}},
      {"ten-bit.mp4", {320, 180}, {"-pix_fmt", "yuv420p10le", "-preset", "ultrafast"}},
      {"variable.mp4",
       {336, 200},
       {"-pix_fmt", "yuv420p", "-preset", "ultrafast", "-vf", "select=lt(n\\,25)+not(mod(n\\,4))",
        "-fps_mode", "vfr"}},
  };
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const Clip& clip : clips) {
    SCOPED_TRACE(clip.name);
    const QString path = MakeClip(clip);
    ASSERT_FALSE(path.isEmpty());
    ExpectEveryPixelOf(path, clip.size);
  }
  ExpectCleanEnd();
}

TEST_F(PlayerFiles, WithANoteToTurnThemPlayAsTheyAreStored) {
  const QSize size(352, 208);
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QString path = program.PathOf("turned.mp4");
  ASSERT_TRUE(MakeTurned(
      MakeClip({"plain.mp4", size, {"-pix_fmt", "yuv420p", "-preset", "ultrafast"}}), path, 90));
  ExpectEveryPixelOf(path, size);
  ExpectCleanEnd();
}

TEST_F(PlayerFiles, OfOnePixelAndOfMillionsPlay) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowBesideGoodFile());
  const QString dot =
      MakeClip({"dot.mkv", {64, 64}, {"-vf", "scale=1:1", "-c:v", "ffv1", "-pix_fmt", "yuv444p"}});
  ASSERT_EQ(VideoSize(dot), QSize(1, 1));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, dot));
  ASSERT_TRUE(WaitFor([&] { return window.ShowsPath(dot); }));
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitCaption("Label12", "0:00:03"));
  ExpectGoodFilePlays();

  const QSize large(3840, 2160);
  const QString largePath = MakeClip(
      {"large.mp4", large, {"-t", "3", "-pix_fmt", "yuv420p", "-preset", "ultrafast"}, "60"});
  ASSERT_FALSE(largePath.isEmpty());
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(largePath, large));
  EXPECT_TRUE(AwaitMoving(large));
  ExpectGoodFilePlays();
  ExpectCleanEnd();
}

TEST_F(PlayerFiles, WithoutAPictureLeaveTheWindowAlive) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowBesideGoodFile());
  ExpectGoodFilePlays();

  const QString text = program.PathOf("text.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(text, "This is no video, and it says nothing of one.\n"));
  ExpectNoPictureOf(text);

  const QString empty = program.PathOf("empty.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(empty, ""));
  ExpectNoPictureOf(empty);

  const QString truncated = program.PathOf("truncated.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(truncated, ContentOf(good_).left(20'000)));
  ExpectNoPictureOf(truncated);

  const QString sound = program.PathOf("sound.wav");
  ASSERT_TRUE(RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "sine=duration=9", sound}));
  ExpectNoPictureOf(sound);
  ExpectCleanEnd();
}

TEST_F(PlayerFiles, ThatVanishWhileTheyPlayLeaveTheWindowAlive) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowBesideGoodFile());
  const QString vanishing = program.PathOf("vanishing.mp4");
  ASSERT_TRUE(QFile::copy(good_, vanishing));
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(vanishing, kGoodSize));
  ASSERT_TRUE(AwaitMoving(kGoodSize));
  ASSERT_TRUE(QFile::remove(vanishing));
  EXPECT_TRUE(Lives());
  window.Click(kRunVideo);
  EXPECT_TRUE(AwaitBlack(kGoodSize));
  EXPECT_EQ(screen.Windows().size(), 1) << "no message";
  ExpectGoodFilePlays();
  ExpectCleanEnd();
}

TEST_F(PlayerFiles, ThatGrowWhileTheyPlayLeaveTheWindowAlive) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowBesideGoodFile());
  const QSize size(336, 224);
  const QString whole =
      MakeClip({"whole.mkv", size, {"-pix_fmt", "yuv420p", "-preset", "ultrafast", "-g", "5"}});
  ASSERT_FALSE(whole.isEmpty());
  const QByteArray content = ContentOf(whole);
  const QString growing = program.PathOf("growing.mkv");
  ASSERT_NO_FATAL_FAILURE(WriteFile(growing, content.left(content.size() / 3)));
  ASSERT_NO_FATAL_FAILURE(LoadAndRun(growing, size));
  EXPECT_TRUE(AwaitMoving(size));
  QFile file(growing);
  ASSERT_TRUE(file.open(QIODevice::Append));
  ASSERT_GT(file.write(content.mid(content.size() / 3)), 0);
  file.close();
  ExpectGoodFilePlays();
  ExpectCleanEnd();
}

}  // namespace
}  // namespace kelvane::desktop
