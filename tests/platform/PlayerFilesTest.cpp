// Files that players trip over. Whatever one of them does, the window lives and the next file
// plays.
#include <QFile>
#include <vector>

#include "platform/PlayerTest.h"

namespace kelvane::testing {
namespace {

class PlayerFiles : public PlayerTest {
 protected:
  static QStringList Plain(const char* size, const char* rate = "25", const char* seconds = "3") {
    return {"-f", "lavfi", "-i",
            u"color=blue:size=%1:rate=%2:duration=%3"_s.arg(
                QLatin1String(size), QLatin1String(rate), QLatin1String(seconds))};
  }
  static QStringList CutTo(const char* size) {
    return QStringList{"-vf", u"format=bgr0,crop=%1"_s.arg(QLatin1String(size))} + Lossless();
  }
  static QStringList Lossless() { return {"-c:v", "ffv1", "-pix_fmt", "bgr0"}; }

  // How much of the picture's top row and left column is blue.
  QSize BlueExtent() const {
    const QImage picture = Picture(player);
    QSize extent(0, 0);
    while (extent.width() < picture.width() && IsBlue(picture.pixel(extent.width(), 0))) {
      extent.rwidth() += 1;
    }
    while (extent.height() < picture.height() && IsBlue(picture.pixel(0, extent.height()))) {
      extent.rheight() += 1;
    }
    return extent;
  }
  bool AwaitBlue(QSize extent) const {
    return PumpUntil([&] { return BlueExtent() == extent; });
  }
  void ExpectTheNextFilePlays() const {
    player.setURL(MakePlain("good.mp4", "red", 5));
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    EXPECT_TRUE(watch.Moves());
  }

  QByteArray ContentOf(const QString& path) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  QString Write(const QString& name, const QByteArray& content) const {
    QString path = files.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return path;
  }

 private:
  static bool IsBlue(QRgb pixel) { return PlayerWatch::Like(pixel, kPlayedBlue); }
};

TEST_F(PlayerFiles, WithoutSoundPlay) {
  player.setURL(Make("silent.mp4", Plain("320x180")));
  EXPECT_TRUE(AwaitBlue(QSize(320, 180)));
  EXPECT_TRUE(watch.Moves());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfSoundAlonePlayAndStayBlack) {
  player.setURL(Make("sound.flac", {"-f", "lavfi", "-i", "sine=frequency=440:duration=20"}));
  EXPECT_TRUE(watch.AwaitPosition(0.3));
  EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
  EXPECT_NEAR(*player.currentMediaDuration(), 20, 0.1);
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfAVariableFrameRatePlay) {
  player.setURL(
      Make("variable.mkv", Plain("320x180") + QStringList{"-vf", "select='not(mod(n,7))+gt(n,50)'",
                                                          "-fps_mode", "vfr"}));
  EXPECT_TRUE(AwaitBlue(QSize(320, 180)));
  EXPECT_TRUE(watch.Moves());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfPixelsThatAreNoSquaresAreShownAsTheyAreStored) {
  player.setURL(
      Make("anamorphic.mkv",
           Plain("80x90") + QStringList{"-vf", "pad=160:90:0:0:red,setsar=64/45"} + Lossless()));
  EXPECT_TRUE(AwaitBlue(QSize(80, 90)));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, WithANoteToTurnThemAreShownAsTheyAreStored) {
  const QString turned = Write("turned.mp4", {});
  ASSERT_TRUE(MakeTurned(Make("plain.mp4", Plain("160x90")), turned, 90));
  QString printed;
  ASSERT_TRUE(RunTool(u"ffprobe"_s,
                      {"-v", "error", "-show_entries", "stream_side_data=rotation", turned},
                      &printed));
  ASSERT_TRUE(printed.contains("90"_L1)) << printed.toStdString();
  player.setURL(turned);
  EXPECT_TRUE(AwaitBlue(QSize(160, 90)));
  ExpectTheNextFilePlays();
}

// In the place of its shape on show the track gets a border of 32 pixels on the left and 9 at the
// top.
TEST_F(PlayerFiles, WithANoteToCutTheirEdgesOffAreShownAsTheyAreStored) {
  const QString plain =
      Make("plain.mkv",
           Plain("160x90") + QStringList{"-vf", "setsar=2", "-write_crc32", "0"} + Lossless());
  QByteArray content = ContentOf(plain);
  const auto replace = [&content](const char* before, const char* after) {
    const QByteArray display = QByteArray::fromHex(before);
    ASSERT_EQ(content.count(display), 1) << before;
    content.replace(display, QByteArray::fromHex(after));
  };
  replace("54b08120", "54cc8120");
  replace("54ba8109", "54bb8109");
  player.setURL(Write("cut.mkv", content));
  EXPECT_TRUE(AwaitBlue(QSize(160, 90)));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfTenBitsAColourPlay) {
  player.setURL(
      Make("deep.mkv", Plain("320x180") + QStringList{"-c:v", "ffv1", "-pix_fmt", "yuv420p10le"}));
  EXPECT_TRUE(AwaitBlue(QSize(320, 180)));
  EXPECT_TRUE(watch.Moves());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfFourThousandPixelsAtSixtyFramesPlay) {
  player.setURL(
      Make("large.mp4", Plain("3840x2160", "60", "1") +
                            QStringList{"-vf", "scale=out_color_matrix=bt709", "-colorspace",
                                        "bt709", "-pix_fmt", "yuv420p", "-preset", "ultrafast"}));
  EXPECT_TRUE(AwaitBlue(QSize(320, 180)));
  EXPECT_TRUE(watch.Moves());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfOddSizesAreShownToTheLastPixel) {
  player.setURL(Make("odd.mkv", Plain("162x92") + CutTo("161:91")));
  EXPECT_TRUE(AwaitBlue(QSize(161, 91)));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfASinglePixelAreShown) {
  player.setURL(Make("dot.mkv", Plain("16x16") + CutTo("1:1")));
  EXPECT_TRUE(AwaitBlue(QSize(1, 1)));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, OfAnotherSizeThanTheOneBeforeAreShownInTheirOwn) {
  player.setURL(Make("one.mkv", Plain("160x90") + Lossless()));
  EXPECT_TRUE(AwaitBlue(QSize(160, 90)));
  player.setURL(Make("two.mkv", Plain("100x140") + Lossless()));
  EXPECT_TRUE(AwaitBlue(QSize(100, 140)));
}

TEST_F(PlayerFiles, WhosePicturesBecomeSmallerAreBlackAroundThem) {
  const QString large = files.filePath("large.ts");
  const QString small = files.filePath("small.ts");
  ASSERT_TRUE(MakeColours(large, QSize(320, 180), {0xffff0000, 0xffff0000}));
  ASSERT_TRUE(MakeColours(small, QSize(160, 90), QList<QRgb>(20, 0xff0000ff)));
  player.setURL(Make("both.ts", {"-i", "concat:" + large + "|" + small, "-c", "copy"}));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(PumpUntil([&] {
    const QImage picture = Picture(player);
    return BlueExtent() == QSize(160, 90) && picture.pixel(165, 45) == 0xff000000 &&
           picture.pixel(80, 95) == 0xff000000 && picture.pixel(315, 175) == 0xff000000;
  }));
}

// As of a broadcast that was put together out of two. Not every release of the library goes back.
TEST_F(PlayerFiles, WhoseTimesJumpBackHaveNoPositionBeforeTheBeginning) {
  const QByteArray late = ContentOf(
      Make("late.ts", Plain("320x180", "25", "1") + QStringList{"-output_ts_offset", "60"}));
  const QByteArray early = ContentOf(Make("early.ts", Plain("320x180", "25", "2")));
  player.setURL(Write("both.ts", late + early));
  bool isNegative = false;
  EXPECT_TRUE(PumpUntil([&] {
    isNegative |= player.controls.currentPositionString().contains(QLatin1Char('-'));
    return !watch.Core().Active();
  }));
  EXPECT_FALSE(isNegative);
}

// What is still being written can be played as far as it goes.
TEST_F(PlayerFiles, ThatGrowPlay) {
  const QByteArray whole = ContentOf(Make("whole.ts", Plain("320x180", "25", "6")));
  const QString path = Write("growing.ts", whole.left(whole.size() / 2));
  player.setURL(path);
  ASSERT_TRUE(AwaitBlue(QSize(320, 180)));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::Append));
  ASSERT_EQ(file.write(whole.mid(whole.size() / 2)), whole.size() - whole.size() / 2);
  file.close();
  EXPECT_TRUE(watch.Moves());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, CutShortPlayToTheirEnd) {
  const QByteArray whole = ContentOf(Make(
      "whole.mp4", Plain("320x180", "25", "4") + QStringList{"-g", "5", "-movflags", "faststart"}));
  player.setURL(Write("short.mp4", whole.left(whole.size() * 2 / 3)));
  EXPECT_TRUE(AwaitBlue(QSize(320, 180)));
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, DeletedWhileTheyPlayGoOn) {
  const QString file = Make("gone.mp4", Plain("320x180", "25", "20"));
  player.setURL(file);
  ASSERT_TRUE(AwaitBlue(QSize(320, 180)));
  ASSERT_TRUE(QFile::remove(file));
  EXPECT_TRUE(watch.Moves());
  player.controls.stop();
  player.controls.play();
  EXPECT_TRUE(watch.AwaitEnd());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, ThatCannotBePlayedEndAndAreBlack) {
  const std::vector<QString> all = {Write("notes.txt", "no video\n"), Write("empty.mp4", ""),
                                    Write("noise.mp4", QByteArray(100'000, '\x47')), files.path(),
                                    files.filePath("none.mp4")};
  for (const QString& file : all) {
    SCOPED_TRACE(file.toStdString());
    player.setURL(file);
    ASSERT_TRUE(watch.AwaitEnd());
    EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
    EXPECT_EQ(player.currentMediaDuration(), 0.0);
    EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
  }
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, ThatCannotBePlayedEndTheOneBefore) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  ASSERT_TRUE(PumpUntil([&] { return player.currentMediaDuration() > 0.0; }));
  player.setURL(Write("notes.txt", "no video\n"));
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_EQ(player.currentMediaDuration(), 0.0);
}

}  // namespace
}  // namespace kelvane::testing
