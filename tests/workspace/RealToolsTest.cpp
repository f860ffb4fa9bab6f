// These tests load and crop videos with the real tools.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

#include "platform/App.h"
#include "shared/SharedValues.h"
#include "support/Snapshot.h"
#include "support/Videos.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class RealTools : public MainWindowTest {
 protected:
  RealTools() {
    const QString probe = QStandardPaths::findExecutable("ffprobe");
    App::setPath(QFileInfo(probe).path().toStdString());
  }

  QString InFolder(const QString& name) const { return tools_.Path() + '/' + name; }
  // Makes a file with ffmpeg.
  void Make(const QStringList& arguments, const char* name) const {
    QString printed;
    ASSERT_TRUE(RunTool(
        "ffmpeg", QStringList{"-v", "error"} + arguments + QStringList{InFolder(name)}, &printed))
        << printed.toStdString();
  }
  void LoadMade(const QStringList& arguments, const char* name) const {
    Make(arguments, name);
    Pick(InFolder(name));
    ASSERT_EQ(Path().Text(), InFolder(name));
  }
  void WriteFile(const char* name, const QByteArray& text) const {
    QFile file(InFolder(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  void ExpectSize(const char* width, const char* height) const {
    EXPECT_EQ(Number(SourceWidth), width);
    EXPECT_EQ(Number(SourceHeight), height);
  }
  // Measures the region, crops it to that output, and closes the job's window after the job.
  void CropTheRegionTo(const QString& output) const {
    MeasureRegion();
    CropTo(output);
    ASSERT_NE(JobWindow(), nullptr);
    RunJob(*JobWindow());
    EXPECT_EQ(JobWindow()->Find<Label>("Label1(2)").Caption(),
              "Progress: 100 % Complete: Status: Cropping Successful");
    Release(JobWindow()->Find<Label>("Label2"));
  }
  // Lets ffmpeg alone crop the video, and returns a checksum of the cropped pictures.
  QString SumOfACrop(const char* video, const QString& filter) const {
    Make({"-i", InFolder(video), "-vf", filter}, "bare.mp4");
    return PicturesSum(InFolder("bare.mp4"));
  }
  // Returns the arguments with which ffmpeg makes a video of two seconds.
  static QStringList Source(const char* size) {
    return {"-f", "lavfi", "-i", QStringLiteral("testsrc2=duration=2:size=%1").arg(size)};
  }
};

TEST_F(RealTools, ShowTheSecondStreamsSizeWhereTheFirstOnesWidthHasFourDigits) {
  const QStringList second = Source("320x240") + QStringList{"-map", "0", "-map", "1"};
  LoadMade(Source("640x360") + second, "three.mkv");
  ExpectSize("0,640", "0,360");
  LoadMade(Source("1280x720") + second, "four.mkv");
  ExpectSize("0,320", "0,240");
  EXPECT_EQ(Canvas().size(), QSize(320, 240));
}

// The recording begins in the middle of a picture.
TEST_F(RealTools, KeepTheOldSizeForARecordingOfWhichTheProbeComplains) {
  Make(Source("1280x720") + QStringList{"-c:v", "mpeg2video"}, "whole.ts");
  QFile whole(InFolder("whole.ts"));
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  constexpr qint64 kPacket = 188;
  ASSERT_TRUE(whole.seek(300 * kPacket));
  WriteFile("cut.ts", whole.readAll());
  LoadMade(Source("640x360"), "clip.mp4");
  Pick(InFolder("cut.ts"));
  EXPECT_TRUE(Store().contains("Invalid frame dimensions"));
  ExpectSize("0,640", "0,360");
  LoadMade({"-i", InFolder("cut.ts"), "-c", "copy"}, "copy.mkv");
  ExpectSize("1,280", "0,720");
}

// Nobody can read this file's beginning.
TEST_F(RealTools, KeepTheOldSizeAndDurationForAFileThatCannotBeRead) {
  LoadMade(Source("640x360"), "clip.mp4");
  Pick("/proc/self/mem");
  EXPECT_EQ(Path().Text(), "/proc/self/mem");
  ExpectSize("0,640", "0,360");
  EXPECT_EQ(VideoDuration, "00:00:02");
}

TEST_F(RealTools, ShowTheSizeOfTheFileThatAListNamesAndCropThatFile) {
  Make(Source("320x240"), "other.mp4");
  LoadMade(Source("640x360"), "first.mp4");
  WriteFile("movie.mp4", "ffconcat version 1.0\nfile other.mp4\n");
  Pick(InFolder("movie.mp4"));
  ExpectSize("0,320", "0,240");
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_EQ(PicturesSum(InFolder("cropped.mp4")), SumOfACrop("other.mp4", "crop=315:235:0:0"));
}

TEST_F(RealTools, CropAVideoWithABlankInItsNameByALink) {
  Make(Source("320x240"), "my clip.mp4");
  Pick(InFolder("my clip.mp4"));
  EXPECT_EQ(QFileInfo(Path().Text()).symLinkTarget(), InFolder("my clip.mp4"));
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_EQ(PicturesSum(InFolder("cropped.mp4")), SumOfACrop("my clip.mp4", "crop=315:235:0:0"));
}

// The command line is the one in docs/faults.md.
TEST_F(RealTools, ExplainAFailedCropWhenItsCommandLineIsRunByHandForANewFile) {
  Make(Source("320x240"), "my clip.mp4");
  Pick(InFolder("my clip.mp4"));
  Bar(RightBar).setLeft(1000);
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_TRUE(QFile::exists(InFolder("cropped.mp4")));
  QStringList numbers;
  for (const ReadOut number : {RegionWidth, RegionHeight, RegionLeft, RegionTop}) {
    numbers << QString::number(QString::fromStdString(Number(number)).remove(',').toInt());
  }
  const QString filter = "crop=" + numbers.join(':');
  EXPECT_EQ(filter, "crop=1000:235:0:0");
  for (const auto& [name, why] : {std::pair("cropped.mp4", "already exists"),
                                  {"new.mp4", "Invalid too big or non positive size"}}) {
    QString printed;
    RunTool("ffmpeg", {"-i", Path().Text(), "-vf", filter, InFolder(name)}, &printed);
    EXPECT_TRUE(printed.contains(why)) << printed.toStdString();
  }
}

// A new name that stands for many files, and one of those.
struct NameOfMany {
  const char* name;
  const char* output;
  const char* file;
};

void PrintTo(const NameOfMany& tested, std::ostream* out) { *out << tested.name; }

class CropToManyFiles : public RealTools, public ::testing::WithParamInterface<NameOfMany> {};

TEST_P(CropToManyFiles, ReplacesAFileThatExists) {
  QFile existing(tools_.MakeFile(GetParam().file));
  LoadMade(Source("320x240"), "clip.mp4");
  CropTheRegionTo(InFolder(GetParam().output));
  ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
  EXPECT_NE(existing.readAll(), "contents");
}

INSTANTIATE_TEST_SUITE_P(RealTools, CropToManyFiles,
                         ::testing::Values(NameOfMany{"Pattern", "s%d.png", "s1.png"},
                                           NameOfMany{"List", "l.m3u8", "l.m3u8"},
                                           NameOfMany{"PieceOfAList", "l.m3u8", "l0.ts"},
                                           NameOfMany{"Manifest", "d.mpd", "d.mpd"},
                                           NameOfMany{"PieceOfAManifest", "d.mpd",
                                                      "init-stream0.m4s"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

class CropRemarks : public RealTools, public ::testing::WithParamInterface<NewName> {};

TEST_P(CropRemarks, SayWhatTheToolDoes) {
  const QDir folder(tools_.Path());
  for (const char* inner : {"current", "folder.mp4", "a\"b", "ab"})
    ASSERT_TRUE(folder.mkdir(inner));
  for (const char* old : {"old.mp4", "old", "old.m3u8", "OLD.MPD", ".m3u8"}) tools_.MakeFile(old);
  LoadMade(Source("320x240"), "clip.mp4");
  const QString former = QDir::currentPath();
  QDir::setCurrent(InFolder("current"));
  const Snapshot before(tools_.Path());
  QString remark;
  MeasureRegion();
  {
    const DialogAnswers answers({TypeNameInFolder(InFolder(GetParam().typed), remark)});
    Give(CropVideo);
  }
  RunJob(*JobWindow());
  QDir::setCurrent(former);
  EXPECT_EQ(remark, QString(GetParam().remark).replace("FOLDER", tools_.Path()));
  EXPECT_EQ(before.Changed(), GetParam().changed);
}

const QString kKept = "This file exists: it will be kept, and nothing written.";
const QString kReplaced = "This file exists: it will be replaced.";
const QString kNoFormat = "Without an extension the tool knows no format.";
const QString kNoFolder = "No file can be written in this folder.";

QString Cut(const QString& name) {
  return "The blank ends the name: FOLDER/" + name + ". The rest is taken for further files.";
}

INSTANTIATE_TEST_SUITE_P(
    RealTools, CropRemarks,
    ::testing::Values(
        NewName{"New", "new.mp4", "", {"new.mp4"}},
        NewName{"OnlyAnExtension", ".mp4", "", {".mp4"}},
        NewName{"Blank", "my.mp4 holiday.mp4", Cut("my.mp4"), {"current/holiday.mp4", "my.mp4"}},
        NewName{"BlankBeforeTheExtension", "my holiday.mp4", Cut("my") + ' ' + kNoFormat, {}},
        NewName{"BlankInTheFolder", "my folder/new.mp4", Cut("my") + ' ' + kNoFormat, {}},
        NewName{
            "BlankAtTheEnd", "new.mp4 ", "The blank ends the name: FOLDER/new.mp4.", {"new.mp4"}},
        NewName{"QuoteInTheFolder",
                "a\"b/new.mp4",
                "The quotes vanish: FOLDER/ab/new.mp4.",
                {"ab/new.mp4"}},
        NewName{"QuoteInTheName", "12\".mp4", "The quotes vanish: FOLDER/.mp4.", {".mp4"}},
        NewName{"Existing", "old.mp4", kKept, {}},
        NewName{"ExistingBeforeABlank", "old.mp4 new.mp4", Cut("old.mp4") + ' ' + kKept, {}},
        NewName{"ExistingBeforeTheSwitchToOverwrite",
                "old.mp4 -y new.mp4",
                kReplaced + ' ' + Cut("old.mp4"),
                {"current/new.mp4", "old.mp4"}},
        NewName{"AFolderBeforeABlank", "folder.mp4 new.mp4", Cut("folder.mp4") + ' ' + kKept, {}},
        NewName{"ExistingList", "old.m3u8", kReplaced, {"old.m3u8", "old0.ts"}},
        NewName{"ExistingListWithoutAName", ".m3u8", kReplaced, {".m3u8", "0.ts"}},
        NewName{"ExistingManifest",
                "OLD.MPD",
                kReplaced,
                {"OLD.MPD", "chunk-stream0-00001.m4s", "init-stream0.m4s"}},
        NewName{"ExistingListBeforeABlank",
                "old.m3u8 new.mp4",
                kReplaced + ' ' + Cut("old.m3u8"),
                {"current/new.mp4", "old.m3u8", "old0.ts"}},
        NewName{"NoExtension", "new", kNoFormat, {}},
        NewName{"AFullStopAtTheEnd", "new.", kNoFormat, {}},
        NewName{"ExistingWithoutAnExtension", "old", kKept + ' ' + kNoFormat, {}},
        NewName{"NoFolder", "missing/new.mp4", kNoFolder, {}},
        NewName{"AFileAsFolder", "old.mp4/new.mp4", kNoFolder, {}}),
    [](const auto& tested) { return std::string(tested.param.name); });

// These tests crop to a file whose name or folder has a blank. "current" is the current folder.
class CropWithABlank : public RealTools {
 protected:
  CropWithABlank() {
    EXPECT_TRUE(QDir(tools_.Path()).mkdir("current"));
    QDir::setCurrent(InFolder("current"));
  }
  ~CropWithABlank() override { QDir::setCurrent(former_); }

  void SetUp() override { LoadMade(Source("320x240"), "clip.mp4"); }

  static constexpr QSize kWhole{320, 240};
  static constexpr QSize kCropped{314, 234};  // even, for the encoder

 private:
  const QString former_ = QDir::currentPath();
};

TEST_F(CropWithABlank, AfterAnExtensionMakesASecondUncroppedFile) {
  CropTheRegionTo(InFolder("my.mp4 holiday.mp4"));
  EXPECT_EQ(VideoSize(InFolder("my.mp4")), kCropped);
  EXPECT_EQ(VideoSize(InFolder("current/holiday.mp4")), kWhole);
}

TEST_F(CropWithABlank, KeepsASecondFileThatExistsAndMakesTheFirstOneEmpty) {
  QFile existing(tools_.MakeFile("current/holiday.mp4"));
  CropTheRegionTo(InFolder("my.mp4 holiday.mp4"));
  ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
  EXPECT_EQ(existing.readAll(), "contents");
  ASSERT_TRUE(QFile::exists(InFolder("my.mp4")));
  EXPECT_EQ(QFileInfo(InFolder("my.mp4")).size(), 0);
}

TEST_F(CropWithABlank, AndTheSwitchToOverwriteReplacesBothFiles) {
  tools_.MakeFile("new.mp4");
  tools_.MakeFile("current/precious.mp4");
  CropTheRegionTo(InFolder("new.mp4 -y precious.mp4"));
  EXPECT_EQ(VideoSize(InFolder("new.mp4")), kCropped);
  EXPECT_EQ(VideoSize(InFolder("current/precious.mp4")), kWhole);
}

TEST_F(CropWithABlank, AndAnotherOptionCanReplaceTheFileThatTheOptionNames) {
  QFile existing(tools_.MakeFile("current/st.txt"));
  CropTheRegionTo(InFolder("new.mp4 -vstats_file st.txt"));
  ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
  EXPECT_TRUE(existing.readAll().contains("frame="));
}

TEST_F(CropWithABlank, AndTheSwitchToOverwriteInAFoldersNameReplacesAFileInAnyFolder) {
  const QTemporaryDir elsewhere;
  QFile precious(elsewhere.filePath("precious.mp4"));
  ASSERT_TRUE(precious.open(QIODevice::WriteOnly));
  precious.close();
  const QString folder = "new.mp4 -y " + elsewhere.path();
  ASSERT_TRUE(QDir(tools_.Path()).mkpath(folder));
  CropTheRegionTo(tools_.Path() + '/' + folder + "/precious.mp4");
  EXPECT_EQ(VideoSize(precious.fileName()), kWhole);
}

TEST_F(CropWithABlank, InAFoldersNameMakesNoFile) {
  const QDir folder(tools_.Path());
  ASSERT_TRUE(folder.mkdir("My Videos"));
  const QStringList before = folder.entryList();
  CropTheRegionTo(InFolder("My Videos/new.mp4"));
  EXPECT_EQ(folder.entryList(), before);
  EXPECT_TRUE(QDir(InFolder("My Videos")).isEmpty());
  EXPECT_TRUE(QDir::current().isEmpty());
}

// The video has a note to turn it by 90 degrees.
class TurnedVideo : public RealTools {
 protected:
  TurnedVideo() {
    EXPECT_TRUE(MakeVideo(InFolder("plain.mp4"), QSize(320, 240), 1));
    EXPECT_TRUE(MakeTurned(InFolder("plain.mp4"), InFolder("phone.mp4"), 90));
  }
};

TEST_F(TurnedVideo, IsShownWithItsStoredSizeAndACropWiderThanTheTurnedPictureFails) {
  Pick(InFolder("phone.mp4"));
  ExpectSize("0,320", "0,240");
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_EQ(DecodedPictures(InFolder("cropped.mp4")), 0);
}

TEST_F(TurnedVideo, IsTurnedBeforeItIsCropped) {
  Pick(InFolder("phone.mp4"));
  Bar(RightBar).setLeft(100);
  Bar(BaseBar).setTop(100);
  CropTheRegionTo(InFolder("cropped.mp4"));
  const QStringList crop = {"-i", InFolder("phone.mp4"), "-vf", "crop=100:100:0:0"};
  Make(crop, "turned.mp4");
  Make(QStringList{"-noautorotate"} + crop, "marked.mp4");
  EXPECT_EQ(PicturesSum(InFolder("cropped.mp4")), PicturesSum(InFolder("turned.mp4")));
  EXPECT_NE(PicturesSum(InFolder("cropped.mp4")), "");
  EXPECT_NE(PicturesSum(InFolder("cropped.mp4")), PicturesSum(InFolder("marked.mp4")));
}

TEST_F(TurnedVideo, HasItsTurnedSizeAndIsCroppedToTheRegionsSizeOnceItIsStoredTurned) {
  LoadMade({"-i", InFolder("phone.mp4"), "-c:a", "copy"}, "turned.mp4");
  ExpectSize("0,240", "0,320");
  CropTheRegionTo(InFolder("cropped.mp4"));
  EXPECT_EQ(VideoSize(InFolder("cropped.mp4")), QSize(234, 314));
}

// The video is 1280 pixels wide and has a cover picture or subtitles.
class VideoWithOtherStreams : public RealTools {
 protected:
  VideoWithOtherStreams() { EXPECT_TRUE(MakeVideo(InFolder("plain.mp4"), QSize(1280, 720), 1)); }

  // Makes a copy of plain.mp4 that has the streams of another file as well.
  void MakeWith(const char* other, const QStringList& arguments, const char* name) const {
    Make(QStringList{"-i", InFolder("plain.mp4"), "-i", InFolder(other), "-map", "0", "-map", "1",
                     "-c", "copy"} +
             arguments,
         name);
  }
  // Loads a copy without the other streams, made as docs/files.md tells the user to.
  void LoadCopyWithout(const char* video, const char* copy) const {
    LoadMade({"-i", InFolder(video), "-map", "0:V", "-map", "0:a?", "-c", "copy"}, copy);
    ExpectSize("1,280", "0,720");
  }
  std::string Streams(const char* name) const {
    QString printed;
    RunTool("ffprobe",
            {"-v", "error", "-show_entries", "stream=codec_type", "-of", "csv=p=0", InFolder(name)},
            &printed);
    return printed.simplified().toStdString();
  }
};

TEST_F(VideoWithOtherStreams, HasItsOwnSizeInACopyWithoutTheCover) {
  Make({"-f", "lavfi", "-i", "color=red:size=100x100", "-frames:v", "1"}, "cover.png");
  const QStringList asCover = {"-disposition:v:1", "attached_pic"};
  MakeWith("cover.png", asCover, "video.mp4");
  ASSERT_EQ(Streams("video.mp4"), "video audio video");
  LoadCopyWithout("video.mp4", "copy.mp4");
  EXPECT_EQ(Streams("copy.mp4"), "video audio");

  MakeWith("cover.png", asCover + QStringList{"-an"}, "silent.mp4");
  ASSERT_EQ(Streams("silent.mp4"), "video video");
  LoadCopyWithout("silent.mp4", "silent-copy.mp4");
  EXPECT_EQ(Streams("silent-copy.mp4"), "video");
}

TEST_F(VideoWithOtherStreams, HasItsOwnSizeInACopyWithoutTheSubtitles) {
  WriteFile("words.srt", "1\n00:00:00,000 --> 00:00:01,000\nWords\n");
  MakeWith("words.srt", {}, "video.mkv");
  ASSERT_EQ(Streams("video.mkv"), "video audio subtitle");
  LoadCopyWithout("video.mkv", "copy.mkv");
  EXPECT_EQ(Streams("copy.mkv"), "video audio");
}

}  // namespace
}  // namespace kelvane::testing
