// Unusual, damaged and changing files. After most of them the next file must play.
#include <utility>

#include "platform/PlayerTest.h"

namespace kelvane::testing {
namespace {

const QString kLossless = " -c:v ffv1 -pix_fmt bgr0";

class PlayerFiles : public PlayerTest {
 protected:
  // Returns the arguments that give ffmpeg blue pictures as its input.
  static QString Blue(const QString& size, int seconds = 3, int rate = 25) {
    return u"-f lavfi -i color=blue:size=%1:rate=%2:duration=%3"_s.arg(size).arg(rate).arg(seconds);
  }

  // Returns how many pixels of the picture's top row and left column are blue, from the corner.
  QSize BlueExtent() const {
    const QImage picture = Picture(player);
    const auto isBlue = [&](QPoint place) {
      return picture.valid(place) && PlayerWatch::Like(picture.pixel(place), kPlayedBlue);
    };
    QSize extent(0, 0);
    while (isBlue({extent.width(), 0})) extent.rwidth() += 1;
    while (isBlue({0, extent.height()})) extent.rheight() += 1;
    return extent;
  }
  bool AwaitBlue(QSize extent) const {
    return WaitFor([&] { return BlueExtent() == extent; });
  }
  void ExpectTheNextFilePlays() const {
    const QString good = InFolder("good.mp4");
    if (!QFile::exists(good)) MakePlain("good.mp4", "red", 5);
    player.setURL(good);
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    EXPECT_TRUE(watch.AwaitMove());
  }
};

TEST_F(PlayerFiles, ShowsManyFormatsAsTheyAreStored) {
  struct Case {
    const char* what;
    const char* name;
    QString arguments;
    QSize extent;
  };
  const QSize all(320, 180);
  for (const Case& given :
       {Case{"no sound", "silent.mp4", Blue("320x180"), all},
        {"a variable frame rate", "variable.mkv",
         Blue("320x180") + " -vf select='not(mod(n,7))+gt(n,50)' -fps_mode vfr", all},
        {"ten bits a colour", "deep.mkv", Blue("320x180") + " -c:v ffv1 -pix_fmt yuv420p10le", all},
        {"3840 pixels wide at 60 frames", "large.mp4",
         Blue("3840x2160", 1, 60) + " -vf scale=out_color_matrix=bt709 -colorspace bt709"
                                    " -pix_fmt yuv420p -preset ultrafast",
         all},
        {"pixels that aren't square", "anamorphic.mkv",
         Blue("80x90") + " -vf pad=160:90:0:0:red,setsar=64/45" + kLossless, QSize(80, 90)},
        {"an odd size", "odd.mkv", Blue("162x92") + " -vf format=bgr0,crop=161:91" + kLossless,
         QSize(161, 91)},
        {"a single pixel", "dot.mkv", Blue("16x16") + " -vf format=bgr0,crop=1:1" + kLossless,
         QSize(1, 1)}}) {
    SCOPED_TRACE(given.what);
    player.setURL(Make(given.name, given.arguments));
    EXPECT_TRUE(AwaitBlue(given.extent));
    EXPECT_TRUE(watch.AwaitMove());
    ExpectTheNextFilePlays();
  }
}

TEST_F(PlayerFiles, PlaysSoundWithoutAPictureAndIsBlack) {
  player.setURL(Make("sound.flac", "-f lavfi -i sine=frequency=440:duration=20"));
  EXPECT_TRUE(watch.AwaitPosition(0.3));
  EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
  EXPECT_TRUE(AwaitDuration(20));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, IgnoresANoteToTurnThePicture) {
  const QString turned = InFolder("turned.mp4");
  ASSERT_TRUE(MakeTurned(Make("plain.mp4", Blue("160x90")), turned, 90));
  QString printed;
  ASSERT_TRUE(RunTool(
      "ffprobe", {"-v", "error", "-show_entries", "stream_side_data=rotation", turned}, &printed));
  ASSERT_TRUE(printed.contains("90")) << printed.toStdString();
  player.setURL(turned);
  EXPECT_TRUE(AwaitBlue(QSize(160, 90)));
  ExpectTheNextFilePlays();
}

// The fields for the display size are overwritten with fields for cropping, 32 pixels on the left
// and 9 at the top.
TEST_F(PlayerFiles, IgnoresANoteToCutTheEdgesOff) {
  QByteArray content =
      ContentOf(Make("plain.mkv", Blue("160x90") + " -vf setsar=2 -write_crc32 0" + kLossless));
  for (const auto& [before, after] :
       {std::pair{"54b08120", "54cc8120"}, {"54ba8109", "54bb8109"}}) {
    Replace(content, QByteArray::fromHex(before), QByteArray::fromHex(after));
  }
  player.setURL(Write("cut.mkv", content));
  EXPECT_TRUE(AwaitBlue(QSize(160, 90)));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, IsBlackAroundPicturesThatBecomeSmaller) {
  const QString large = InFolder("large.ts");
  const QString small = InFolder("small.ts");
  ASSERT_TRUE(MakeColours(large, QSize(320, 180), {0xffff0000, 0xffff0000}));
  ASSERT_TRUE(MakeColours(small, QSize(160, 90), QList<QRgb>(20, 0xff0000ff)));
  player.setURL(Make("both.ts", "-i concat:" + large + "|" + small + " -c copy"));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(WaitFor([&] {
    const QImage picture = Picture(player);
    return BlueExtent() == QSize(160, 90) && ColorAt(picture, 165, 45) == 0 &&
           ColorAt(picture, 80, 95) == 0 && ColorAt(picture, 315, 175) == 0;
  }));
}

// Times jump back in a concatenation of two broadcasts. Some releases of the library then tell a
// negative position.
TEST_F(PlayerFiles, HasNoPositionBeforeTheBeginningWhereTimesJumpBack) {
  const QByteArray late = ContentOf(Make("late.ts", Blue("320x180", 1) + " -output_ts_offset 60"));
  const QByteArray early = ContentOf(Make("early.ts", Blue("320x180", 2)));
  player.setURL(Write("both.ts", late + early));
  bool isNegative = false;
  EXPECT_TRUE(WaitFor([&] {
    isNegative |= player.controls.currentPositionString().contains(u'-');
    return !watch.Core().Active();
  }));
  EXPECT_FALSE(isNegative);
}

TEST_F(PlayerFiles, PlaysAFileThatIsStillBeingWritten) {
  const QByteArray whole = ContentOf(Make("whole.ts", Blue("320x180", 6)));
  const qsizetype half = whole.size() / 2;
  QFile file(Write("growing.ts", whole.left(half)));
  player.setURL(file.fileName());
  ASSERT_TRUE(AwaitBlue(QSize(320, 180)));
  ASSERT_TRUE(file.open(QIODevice::Append));
  ASSERT_EQ(file.write(whole.mid(half)), whole.size() - half);
  file.close();
  EXPECT_TRUE(watch.AwaitMove());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, PlaysATruncatedFileToItsEnd) {
  const QByteArray whole =
      ContentOf(Make("whole.mp4", Blue("320x180", 4) + " -g 5 -movflags faststart"));
  player.setURL(Write("short.mp4", whole.left(whole.size() * 2 / 3)));
  EXPECT_TRUE(AwaitBlue(QSize(320, 180)));
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, GoesOnWithADeletedFileAndCannotPlayItAgain) {
  const QString file = Make("gone.mp4", Blue("320x180", 20));
  player.setURL(file);
  ASSERT_TRUE(AwaitBlue(QSize(320, 180)));
  ASSERT_TRUE(QFile::remove(file));
  EXPECT_TRUE(watch.AwaitMove());
  player.controls.stop();
  player.controls.play();
  EXPECT_TRUE(watch.AwaitEnd());
  ExpectTheNextFilePlays();
}

TEST_F(PlayerFiles, EndsTheFormerFileAndIsBlackWhereAFileCannotBePlayed) {
  ExpectTheNextFilePlays();
  ASSERT_TRUE(AwaitDuration(5));
  for (const QString& file :
       {Write("notes.txt", "no video\n"), Write("empty.mp4", ""),
        Write("noise.mp4", QByteArray(100'000, '\x47')), files.path(), InFolder("none.mp4")}) {
    SCOPED_TRACE(file.toStdString());
    player.setURL(file);
    ASSERT_TRUE(watch.AwaitEnd());
    EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
    EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
    EXPECT_EQ(player.currentMediaDuration(), 0.0);
    EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
  }
  ExpectTheNextFilePlays();
}

}  // namespace
}  // namespace kelvane::testing
