// What the real probe tool says of files that trip the readings, and what becomes of it.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

#include "platform/App.h"
#include "shared/SharedValues.h"
#include "support/Videos.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class RealTools : public MainWindowTest {
 protected:
  RealTools() {
    const QString probe = QStandardPaths::findExecutable(QStringLiteral("ffprobe"));
    App::setPath(QFileInfo(probe).path().toStdString());
  }

  // Makes a file with ffmpeg and loads it.
  void LoadMade(const QString& name, const QStringList& arguments) const {
    const QString file = tools_.Path() + QLatin1Char('/') + name;
    QString printed;
    ASSERT_TRUE(RunTool(QStringLiteral("ffmpeg"),
                        QStringList{"-v", "error"} + arguments + QStringList{file}, &printed))
        << printed.toStdString();
    Pick(file);
    ASSERT_EQ(Path().Text(), file);
  }
  QString InFolder(const char* name) const {
    return tools_.Path() + QLatin1Char('/') + QLatin1String(name);
  }
  // Crop Video with that output, to the job's end. The numbers are those of the next tick.
  void CropTheRegionTo(const QString& output) const {
    Tick(Get<Timer>("Timer2"));
    CropTo(output);
    ASSERT_NE(JobWindow(), nullptr);
    RunJob(*JobWindow());
    EXPECT_EQ(JobWindow()->Find<Label>(QStringLiteral("Label1(2)")).Caption(),
              QStringLiteral("Progress: 100 % Complete: Status: Cropping Successful"));
    Release(JobWindow()->Find<Label>(QStringLiteral("Label2")));
  }
  static QStringList Source(const char* size) {
    return {"-f", "lavfi", "-i", QStringLiteral("testsrc2=duration=2:size=%1").arg(size)};
  }
};

TEST_F(RealTools, SizeAndDurationOfAnOrdinaryVideo) {
  LoadMade("clip.mp4", Source("1280x720"));
  EXPECT_EQ(Number(SourceWidth), "1,280");
  EXPECT_EQ(Number(SourceHeight), "0,720");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:02");
}

TEST_F(RealTools, AWidthOfTwoDigitsCutsTheHeightShort) {
  LoadMade("small.mp4", Source("64x48"));
  EXPECT_EQ(Number(SourceWidth), "0,064");
  EXPECT_EQ(Number(SourceHeight), "0,008");
}

TEST_F(RealTools, AWidthOfFiveDigitsLeavesTheHeightsTextAsItIs) {
  LoadMade("wide.png", Source("10240x16") + QStringList{"-frames:v", "1"});
  EXPECT_EQ(Number(SourceWidth), "10,240");
  EXPECT_EQ(Number(SourceHeight), "t=16\r\n");
  EXPECT_EQ(Canvas().Width(), 10240);
}

// A file of which the tool prints more than one size, and what becomes of it.
struct SizesInAFile {
  const char* name;
  QSize size;
  // Of a second stream, where there is one.
  QStringList second;
  std::string width;
  std::string height;
  QSize canvas;
};

void PrintTo(const SizesInAFile& file, std::ostream* out) { *out << file.name; }

class RealSizes : public RealTools, public ::testing::WithParamInterface<SizesInAFile> {};

TEST_P(RealSizes, AreReadOneByOne) {
  const SizesInAFile& file = GetParam();
  const QString subtitles = tools_.Path() + QLatin1String("/subtitles.srt");
  QFile lines(subtitles);
  ASSERT_TRUE(lines.open(QIODevice::WriteOnly));
  lines.write("1\n00:00:00,000 --> 00:00:01,000\ntext\n");
  lines.close();
  QStringList second = file.second;
  second.replaceInStrings("SUBTITLES", subtitles);
  const QString size = QStringLiteral("%1x%2").arg(file.size.width()).arg(file.size.height());
  LoadMade(file.name, Source(size.toLatin1().constData()) + second);
  EXPECT_EQ(Number(SourceWidth), file.width);
  EXPECT_EQ(Number(SourceHeight), file.height);
  EXPECT_EQ(Canvas().size(), file.canvas);
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:02");
}

const QStringList kSubtitles{"-i", "SUBTITLES", "-map", "0", "-map", "1"};
const QStringList kCover{"-f",
                         "lavfi",
                         "-i",
                         "color=red:size=300x200:duration=0.04",
                         "-map",
                         "0",
                         "-map",
                         "1",
                         "-c:v:1",
                         "png",
                         "-disposition:v:1",
                         "attached_pic"};
const QStringList kSecondPicture{"-f",   "lavfi", "-i",   "testsrc2=duration=2:size=320x240",
                                 "-map", "0",     "-map", "1"};

INSTANTIATE_TEST_SUITE_P(
    RealTools, RealSizes,
    ::testing::Values(
        // The tool prints its one stream twice.
        SizesInAFile{"three.ts", {640, 360}, {}, "0,640", "0,360", {640, 360}},
        SizesInAFile{"four.ts", {1280, 720}, {}, "1,280", "0,720", {1280, 720}},
        SizesInAFile{"three.mkv", {640, 360}, kSubtitles, "0,640", "0,360", {640, 360}},
        // Behind a width of four digits the next size is read as well.
        SizesInAFile{"four.mkv", {1280, 720}, kSubtitles, "N/A\r\n", "N/A\r\n", {1280, 720}},
        SizesInAFile{"three.mp4", {640, 360}, kCover, "0,640", "0,360", {640, 360}},
        SizesInAFile{"four.mp4", {1280, 720}, kCover, "0,300", "0,200", {300, 200}},
        SizesInAFile{"two_three.mkv", {640, 360}, kSecondPicture, "0,640", "0,360", {640, 360}},
        SizesInAFile{"two_four.mkv", {1280, 720}, kSecondPicture, "0,320", "0,240", {320, 240}}),
    [](const auto& file) { return QString(file.param.name).replace('.', '_').toStdString(); });

// A recording that begins in the middle of a picture.
TEST_F(RealTools, AComplaintBeforeTheSizeKeepsTheOldSizeAndACopyOfTheStreamsHasNone) {
  LoadMade("whole.ts", Source("1280x720") + QStringList{"-c:v", "mpeg2video"});
  QFile whole(InFolder("whole.ts"));
  QFile cut(InFolder("cut.ts"));
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly) && cut.open(QIODevice::WriteOnly));
  constexpr qint64 kPacket = 188;
  ASSERT_TRUE(whole.seek(300 * kPacket));
  cut.write(whole.readAll());
  cut.close();
  LoadMade("clip.mp4", Source("640x360"));
  Pick(InFolder("cut.ts"));
  EXPECT_TRUE(Store().contains(QLatin1String("Invalid frame dimensions")));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
  LoadMade("copy.mkv", {"-i", InFolder("cut.ts"), "-c", "copy"});
  EXPECT_EQ(Number(SourceWidth), "1,280");
  EXPECT_EQ(Number(SourceHeight), "0,720");
}

TEST_F(RealTools, ADurationThatIsNotAvailableIsTakenAsItStands) {
  LoadMade("bare.h264", Source("640x360"));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
  EXPECT_EQ(VideoDuration.toStdString(), "N/A, bit");
}

// The system gives such a file to nobody, whoever asks.
TEST_F(RealTools, AFileThatCannotBeReadKeepsTheOldState) {
  LoadMade("clip.mp4", Source("640x360"));
  Pick(QStringLiteral("/proc/self/mem"));
  EXPECT_EQ(Path().Text(), QStringLiteral("/proc/self/mem"));
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Number(SourceHeight), "0,360");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:02");
}

// As docs/faults.md tells the user to.
TEST_F(RealTools, AFalseSuccessIsExplainedByTheSameLineRunByHand) {
  LoadMade("clip.mp4", Source("320x240"));
  ASSERT_TRUE(QFile::copy(InFolder("clip.mp4"), InFolder("my clip.mp4")));
  Pick(InFolder("my clip.mp4"));
  EXPECT_TRUE(QFileInfo(Path().Text()).isSymLink());
  const QString existing = tools_.File("existing.mp4");
  CropTheRegionTo(existing);
  const auto shown = [&](ReadOut number) {
    return QString::fromStdString(Number(number)).remove(',').toInt();
  };
  const QString filter = QStringLiteral("crop=%1:%2:%3:%4")
                             .arg(shown(RegionWidth))
                             .arg(shown(RegionHeight))
                             .arg(shown(RegionLeft))
                             .arg(shown(RegionTop));
  EXPECT_EQ(filter, "crop=315:235:0:0");
  QString printed;
  RunTool("ffmpeg", {"-i", Path().Text(), "-vf", filter, existing}, &printed);
  EXPECT_TRUE(printed.contains("already exists")) << printed.toStdString();
}

TEST_F(RealTools, AListUnderAVideosNameIsReadAsTheFileThatItNames) {
  LoadMade("other.mp4", Source("320x240"));
  LoadMade("first.mp4", Source("640x360"));
  QFile list(InFolder("movie.mp4"));
  ASSERT_TRUE(list.open(QIODevice::WriteOnly));
  list.write("ffconcat version 1.0\nfile other.mp4\n");
  list.close();
  Pick(list.fileName());
  EXPECT_EQ(Number(SourceWidth), "0,320");
  EXPECT_EQ(Number(SourceHeight), "0,240");
}

// A new file whose name or folder has a blank. What the line names without a folder lies in
// "current".
class CostOfACrop : public RealTools {
 protected:
  CostOfACrop() {
    EXPECT_TRUE(QDir(tools_.Path()).mkdir("current"));
    QDir::setCurrent(InFolder("current"));
  }
  ~CostOfACrop() override { QDir::setCurrent(former_); }

  void SetUp() override { LoadMade("clip.mp4", Source("320x240")); }

  static constexpr QSize kWhole{320, 240};
  // Even, as its colours need.
  static constexpr QSize kCropped{314, 234};

 private:
  const QString former_ = QDir::currentPath();
};

TEST_F(CostOfACrop, ABlankBehindAnExtensionMakesASecondFileUncropped) {
  CropTheRegionTo(InFolder("my.mp4 holiday.mp4"));
  EXPECT_EQ(VideoSize(InFolder("my.mp4")), kCropped);
  EXPECT_EQ(VideoSize(InFolder("current/holiday.mp4")), kWhole);
}

TEST_F(CostOfACrop, WhereThereIsSuchASecondFileItIsKeptAndTheFirstOneEmpty) {
  QFile existing(tools_.File("current/holiday.mp4"));
  CropTheRegionTo(InFolder("my.mp4 holiday.mp4"));
  ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
  EXPECT_EQ(existing.readAll(), "contents");
  ASSERT_TRUE(QFile::exists(InFolder("my.mp4")));
  EXPECT_EQ(QFileInfo(InFolder("my.mp4")).size(), 0);
}

TEST_F(CostOfACrop, TheSwitchBehindABlankReplacesBothFiles) {
  tools_.File("new.mp4");
  tools_.File("current/precious.mp4");
  CropTheRegionTo(InFolder("new.mp4 -y precious.mp4"));
  EXPECT_EQ(VideoSize(InFolder("new.mp4")), kCropped);
  EXPECT_EQ(VideoSize(InFolder("current/precious.mp4")), kWhole);
}

TEST_F(CostOfACrop, TheSwitchInAFoldersNameReplacesAFileAnywhere) {
  const QTemporaryDir elsewhere;
  QFile precious(elsewhere.filePath("precious.mp4"));
  ASSERT_TRUE(precious.open(QIODevice::WriteOnly));
  precious.close();
  const QString folder = "new.mp4 -y " + elsewhere.path();
  ASSERT_TRUE(QDir(tools_.Path()).mkpath(folder));
  CropTheRegionTo(tools_.Path() + '/' + folder + "/precious.mp4");
  EXPECT_EQ(VideoSize(precious.fileName()), kWhole);
}

TEST_F(CostOfACrop, ABlankInAFoldersNameMakesNoFile) {
  const QDir folder(tools_.Path());
  ASSERT_TRUE(folder.mkdir("My Videos"));
  const QStringList before = folder.entryList();
  CropTheRegionTo(InFolder("My Videos/new.mp4"));
  EXPECT_EQ(folder.entryList(), before);
  EXPECT_TRUE(QDir(InFolder("My Videos")).isEmpty());
  EXPECT_TRUE(QDir::current().isEmpty());
}

// The tool turns the picture before it crops, so that the region is another one than on show.
class TurnedVideo : public RealTools {
 protected:
  TurnedVideo() {
    EXPECT_TRUE(MakeVideo(InFolder("plain.mp4"), QSize(320, 240), 1));
    EXPECT_TRUE(MakeTurned(InFolder("plain.mp4"), InFolder("phone.mp4"), 90));
  }
};

TEST_F(TurnedVideo, IsShownAsItIsStoredAndATallerRegionThanTheTurnedPictureMakesNoVideo) {
  Pick(InFolder("phone.mp4"));
  EXPECT_EQ(Number(SourceWidth), "0,320");
  EXPECT_EQ(Number(SourceHeight), "0,240");
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("cropped.mp4")), 0);
}

TEST_F(TurnedVideo, IsCroppedElsewhereThanTheRegionLies) {
  Pick(InFolder("phone.mp4"));
  Bar(RightBar).setLeft(100);
  Bar(BaseBar).setTop(100);
  CropTheRegionTo(InFolder("cropped.mp4"));
  const QStringList crop = {"-i", InFolder("phone.mp4"), "-vf", "crop=100:100:0:0"};
  ASSERT_TRUE(RunTool("ffmpeg", crop + QStringList{InFolder("turned.mp4")}));
  ASSERT_TRUE(
      RunTool("ffmpeg", QStringList{"-noautorotate"} + crop + QStringList{InFolder("marked.mp4")}));
  EXPECT_EQ(PicturesSum(InFolder("cropped.mp4")), PicturesSum(InFolder("turned.mp4")));
  EXPECT_NE(PicturesSum(InFolder("cropped.mp4")), "");
  EXPECT_NE(PicturesSum(InFolder("cropped.mp4")), PicturesSum(InFolder("marked.mp4")));
}

TEST_F(TurnedVideo, IsCroppedWhereTheRegionLiesOnceItWasTurnedForGood) {
  ASSERT_TRUE(
      RunTool("ffmpeg", {"-i", InFolder("phone.mp4"), "-c:a", "copy", InFolder("turned.mp4")}));
  Pick(InFolder("turned.mp4"));
  EXPECT_EQ(Number(SourceWidth), "0,240");
  EXPECT_EQ(Number(SourceHeight), "0,320");
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_EQ(VideoSize(InFolder("cropped.mp4")), QSize(234, 314));
}

class Covered : public RealTools {
 protected:
  Covered() {
    EXPECT_TRUE(MakeVideo(InFolder("plain.mp4"), QSize(1280, 720), 1));
    Make({"-f", "lavfi", "-i", "color=red:size=100x100", "-frames:v", "1"}, "cover.png");
  }

  void Make(const QStringList& arguments, const char* name) const {
    EXPECT_TRUE(RunTool("ffmpeg", arguments + QStringList{InFolder(name)}));
  }
  void Cover(const char* plain, const char* name) const {
    Make({"-i", InFolder(plain), "-i", InFolder("cover.png"), "-map", "0", "-map", "1", "-c",
          "copy", "-disposition:v:1", "attached_pic"},
         name);
  }
  // As docs/files.md tells the user to.
  void LoadBare(const char* video, const char* bare) const {
    Make({"-i", InFolder(video), "-map", "0:V", "-map", "0:a?", "-c", "copy"}, bare);
    Pick(InFolder(bare));
    EXPECT_EQ(Number(SourceWidth), "1,280");
    EXPECT_EQ(Number(SourceHeight), "0,720");
  }
  std::string Streams(const char* name) const {
    QString printed;
    RunTool("ffprobe",
            {"-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0", InFolder(name)},
            &printed);
    return printed.simplified().toStdString();
  }
};

TEST_F(Covered, IsLoadedInItsOwnSizeOnceTheCoverWasLeftOut) {
  Cover("plain.mp4", "video.mp4");
  ASSERT_EQ(Streams("video.mp4"), "video audio video");
  LoadBare("video.mp4", "bare.mp4");
  EXPECT_EQ(Streams("bare.mp4"), "video audio");
}

TEST_F(Covered, IsSoWithoutSoundAsWell) {
  Make({"-i", InFolder("plain.mp4"), "-an", "-c", "copy"}, "silent.mp4");
  Cover("silent.mp4", "video.mp4");
  ASSERT_EQ(Streams("video.mp4"), "video video");
  LoadBare("video.mp4", "bare.mp4");
  EXPECT_EQ(Streams("bare.mp4"), "video");
}

class Subtitled : public Covered {};

TEST_F(Subtitled, IsLoadedInItsOwnSizeOnceTheSubtitlesWereLeftOut) {
  QFile lines(InFolder("words.srt"));
  ASSERT_TRUE(lines.open(QIODevice::WriteOnly));
  lines.write("1\n00:00:00,000 --> 00:00:01,000\nWords\n");
  lines.close();
  Make(
      {"-i", InFolder("plain.mp4"), "-i", lines.fileName(), "-map", "0", "-map", "1", "-c", "copy"},
      "video.mkv");
  ASSERT_EQ(Streams("video.mkv"), "video audio subtitle");
  LoadBare("video.mkv", "bare.mkv");
  EXPECT_EQ(Streams("bare.mkv"), "video audio");
}

}  // namespace
}  // namespace kelvane::testing
