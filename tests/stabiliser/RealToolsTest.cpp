// Sections and stabilised videos that the real tools make.
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>
#include <cstdio>
#include <map>

#include "media/CommandLines.h"
#include "platform/App.h"
#include "stabiliser/StabiliserWindowTest.h"
#include "support/Pictures.h"
#include "support/Videos.h"

namespace kelvane::testing {
namespace {

using namespace Qt::StringLiterals;

QString ToolsPath() { return QFileInfo(QStandardPaths::findExecutable(u"ffmpeg"_s)).path(); }

class RealTools : public StabiliserWindowTest {
 protected:
  RealTools() { App::setPath(ToolsPath().toStdString()); }

  QString PathOf(const QString& name) const { return folder_.filePath(name); }
  static void Make(const QStringList& arguments) {
    QString printed;
    ASSERT_TRUE(RunTool("ffmpeg", QStringList{"-v", "error"} + arguments, &printed))
        << printed.toStdString();
  }
  void Choose(const QString& path) {
    const DialogAnswers answers({TypeFile(path)});
    Click(Caption("Label6", 0));
    ASSERT_EQ(Get<TextBox>("Text1").Text(), path);
  }
  // Makes a video of eight seconds, each in one colour and of 25 pictures, and returns its path.
  QString EightColours() const {
    const QString path = PathOf("colours.mp4");
    EXPECT_TRUE(MakeColours(
        path, QSize(160, 90),
        {0xff0000, 0x00ff00, 0x0000ff, 0xffff00, 0xff00ff, 0x00ffff, 0xffffff, 0x000000}));
    return path;
  }
  // Drags the needles to these seconds. `pixels` is the number of pixels to the second.
  void Mark(float pixels, float start, float end) const {
    DragNeedle(StartNeedle, pixels * start);
    DragNeedle(EndNeedle, pixels * end - 2 - NeedleBox(EndNeedle).Left());
  }
  // Clicks a caption that asks for a new file, and expects that the tools write that file.
  static void SaveAs(Label& caption, const QString& path) {
    const DialogAnswers answers({TypeFile(path), PressButton(QMessageBox::Ok)});
    Click(caption);
    ASSERT_EQ(answers.seen().size(), 2U);
    EXPECT_TRUE(
        answers.seen().back().ends_with("saved as\n" + path.toStdString() + " | no icon | OK"))
        << answers.seen().back();
    EXPECT_TRUE(QFileInfo::exists(path)) << path.toStdString();
  }
  // What ffprobe prints of the first video stream, as comma-separated values.
  static QString Probed(const QString& path, const QString& entries) {
    QString printed;
    RunTool(
        "ffprobe",
        {"-v", "error", "-select_streams", "V:0", "-show_entries", entries, "-of", "csv=p=0", path},
        &printed);
    return printed.section('\n', 0, 0).trimmed();
  }
  // Returns the runs of pixels of one colour in the output of the filters, such as
  // "25 red, 5 green". The default filter makes one pixel of each picture.
  QString ColoursOf(const QString& video, const QString& filters = "scale=1:1") const {
    const QString pixels = PathOf("pixels");
    Make({"-y", "-i", video, "-vf", filters, "-f", "rawvideo", "-pix_fmt", "rgb24", pixels});
    QFile file(pixels);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray colours = file.readAll();
    static const std::map<int, QString> names = {{4, "red"},    {2, "green"},   {1, "blue"},
                                                 {6, "yellow"}, {5, "magenta"}, {3, "cyan"},
                                                 {7, "white"},  {0, "black"}};
    QStringList counts;
    int last = -1;
    int count = 0;
    for (qsizetype pixel = 0; pixel <= colours.size(); pixel += 3) {
      int colour = -2;
      if (pixel < colours.size()) {
        const auto bit = [&](qsizetype part, int value) {
          return static_cast<unsigned char>(colours[pixel + part]) > 127 ? value : 0;
        };
        colour = bit(0, 4) + bit(1, 2) + bit(2, 1);
      }
      if (colour != last && count > 0) counts << u"%1 %2"_s.arg(count).arg(names.at(last));
      count = colour == last ? count + 1 : 1;
      last = colour;
    }
    return counts.join(", ");
  }

  QTemporaryDir folder_;
};

TEST_F(RealTools, ExtractASectionThatIsExactToThePicture) {
  struct Case {
    const char* name;
    QStringList encoding;
  };
  const QString original = EightColours();
  // The first picture is the only key frame.
  const QStringList oneGroup = {"-c:v", "libx264", "-g", "250", "-sc_threshold", "0"};
  for (const auto& [name, encoding] :
       {Case{"one group.mp4", oneGroup}, Case{"one group.ts", oneGroup},
        Case{"all key frames.mkv", {"-c:v", "ffv1"}}}) {
    SCOPED_TRACE(name);
    const QString source = PathOf(name);
    Make(QStringList{"-i", original} + encoding + QStringList{source});
    Choose(source);
    Mark(109, 2.4F, 5.2F);
    ASSERT_EQ(Time(SectionStart), "00:00:02.4");
    ASSERT_EQ(Time(SectionEnd), "00:00:05.2");
    const QString part = PathOf("part.mp4");
    QFile::remove(part);
    SaveAs(Caption("Label14", ExtractRegion), part);
    EXPECT_EQ(ColoursOf(part), "15 blue, 25 yellow, 25 magenta, 5 cyan");
  }
}

// A seek to the beginning would end at the second key frame.
TEST_F(RealTools, ExtractFromTheBeginningOfAVideoWhosePicturesAreStoredOutOfOrder) {
  const QString source = PathOf("source.avi");
  Make({"-i", EightColours(), "-an", "-c:v", "libx264", "-bf", "2", "-g", "50", "-sc_threshold",
        "0", source});
  Choose(source);
  const QString part = PathOf("part.mkv");
  SaveAs(Caption("Label14", ExtractRegion), part);
  const QString colours = ColoursOf(part);
  EXPECT_TRUE(colours.startsWith("25 red, 25 green, 25 blue, ")) << colours.toStdString();
}

// The tool takes the stereo track, and by default would count the time from that track's beginning.
TEST_F(RealTools, ExtractFromATransportStreamWhoseOtherSoundTrackBeginsFirst) {
  const QString original = EightColours();
  const QString source = PathOf("tracks.ts");
  Make({"-stream_loop",
        "8",
        "-itsoffset",
        "0.48",
        "-i",
        original,
        "-f",
        "lavfi",
        "-i",
        "sine=duration=72.5",
        "-itsoffset",
        "0.48",
        "-f",
        "lavfi",
        "-i",
        "sine=duration=72,aformat=channel_layouts=stereo",
        "-map",
        "0:v",
        "-map",
        "1:a",
        "-map",
        "2:a",
        "-c:v",
        "libx264",
        "-preset",
        "ultrafast",
        "-g",
        "250",
        "-sc_threshold",
        "0",
        source});
  Choose(source);
  Mark(12, 64.9F, 67.7F);
  ASSERT_EQ(Time(SectionStart), "00:01:04.9");
  ASSERT_EQ(Time(SectionEnd), "00:01:07.7");
  const QString part = PathOf("part.mkv");
  SaveAs(Caption("Label14", ExtractRegion), part);
  EXPECT_EQ(ColoursOf(part), "15 red, 25 green, 25 blue, 5 yellow");
}

// By default the tool would take the second stream, which is larger.
TEST_F(RealTools, ReadTheFirstOfSeveralVideoStreams) {
  const QString original = EightColours();
  for (const char* name : {"two.mkv", "two.ts"}) {
    SCOPED_TRACE(name);
    const QString source = PathOf(name);
    Make({"-i", original, "-f", "lavfi", "-i", "color=white:size=320x180:duration=8", "-map", "0",
          "-map", "1", "-g", "25", source});
    Choose(source);
    Mark(109, 2.4F, 5.2F);
    const QString part = PathOf("part.mp4");
    QFile::remove(part);
    SaveAs(Caption("Label14", ExtractRegion), part);
    EXPECT_EQ(Probed(part, "stream=width"), "160");
    EXPECT_EQ(ColoursOf(part), "15 blue, 25 yellow, 25 magenta, 5 cyan");
  }
}

TEST_F(RealTools, PlayPauseAndRewindTheVideo) {
  Choose(EightColours());
  const auto& controls = Get<WindowsMediaPlayer>("wmp").controls;
  const auto give = [this](int command) { Click(Caption("Label10", command)); };
  EXPECT_FALSE(controls.playing());
  const QSize box = Get<WindowsMediaPlayer>("wmp").size();
  EXPECT_TRUE(WaitFor([&] {
    const QImage picture = Picture(Get<WindowsMediaPlayer>("wmp"));
    return (picture.pixel(box.width() * 7 / 8, box.height() * 3 / 4) & 0xffffff) != 0;
  })) << "the small video doesn't fill its box";
  give(Play);
  ASSERT_TRUE(WaitFor([&] { return controls.currentPosition() > 0.5; }));
  give(Rewind);
  EXPECT_LT(controls.currentPosition(), 0.5);
  EXPECT_TRUE(controls.playing());
  give(Pause);
  EXPECT_FALSE(controls.playing());
  give(Play);
  DragNeedle(StartNeedle, 109 * 3);
  EXPECT_FALSE(controls.playing()) << "a dragged needle doesn't pause the video";
  EXPECT_NEAR(controls.currentPosition(), 3, 0.1);
  give(Rewind);
  EXPECT_EQ(controls.currentPosition(), 0);
  EXPECT_FALSE(controls.playing()) << "a paused video stays paused";
}

TEST_F(RealTools, CauseNoRemarkOnTheLengthIfTheSoundOutlastsThePictures) {
  const QString source = PathOf("source.mkv");
  Make({"-f", "lavfi", "-i", "testsrc2=size=160x90:rate=25:duration=2", "-f", "lavfi", "-i",
        "sine=duration=4", source});
  Choose(source);
  for (const char* name : {"steady.mkv", "steady.mp4"}) {
    SaveAs(Caption("Label12", Apply), PathOf(name));
  }
  SaveAs(Caption("Label14", ExtractRegion), PathOf("part.mkv"));
}

// The pictures come at uneven times, as in a file that a screen recorder writes.
TEST_F(RealTools, AddNoPicturesToAVideoWithoutARate) {
  const QString source = PathOf("screen.webm");
  Make({"-f", "lavfi", "-i",
        "testsrc2=size=160x90:rate=30:duration=2,settb=1/1000,"
        "setpts='floor((N/30+0.012*random(0))*1000)'",
        "-vsync", "passthrough", "-enc_time_base", "1/1000", "-c:v", "libvpx", source});
  // FFmpeg 7.1 states the rate of the file's clock instead of 0/0.
  const QString rate = Probed(source, "stream=avg_frame_rate");
  ASSERT_TRUE(rate == "0/0" || rate == "1000/1") << rate.toStdString();
  Choose(source);
  const QString steady = PathOf("steady.mp4");
  SaveAs(Caption("Label12", Apply), steady);
  EXPECT_EQ(DecodedPictures(steady), 60);
  const QString part = PathOf("part.mp4");
  SaveAs(Caption("Label14", ExtractRegion), part);
  EXPECT_LE(DecodedPictures(part), 60);
}

TEST_F(RealTools, TakeEveryOptionAtBothEndsOfItsRange) {
  const QString clip = PathOf("clip.mp4");
  Make({"-f", "lavfi", "-i", "testsrc2=size=160x90:rate=25:duration=1", clip});
  Choose(clip);
  struct Case {
    int slider;
    const char* least;
    const char* most;
  };
  for (const auto& [slider, least, most] :
       {Case{StepSize, "00", "99"}, Case{Shakiness, "00", "99"}, Case{Accuracy, "00", "99"},
        Case{Zoom, "000", "999"}, Case{Smoothing, "00", "999"}, Case{UnSharpLX, "00", "99"},
        Case{UnSharpLY, "00", "99"}}) {
    for (const char* value : {least, most}) {
      Click(Caption("Label12", ResetSettings));
      Caption("Label2", OptionReadOut(slider)).setCaption(value);
      const QString steady = PathOf("steady.mp4");
      QFile::remove(steady);
      SaveAs(Caption("Label12", Apply), steady);
      EXPECT_EQ(DecodedPictures(steady), 25) << slider << ": " << value;
    }
  }
  for (const int slider : {UnSharpLX, UnSharpLY}) {
    Caption("Label2", OptionReadOut(slider)).setCaption("15");
  }
  SaveAs(Caption("Label12", Apply), PathOf("both.mp4"));
}

// A kind of video, and the size of what Apply and Extract make of it. In each video the right half
// of the picture turns white when the tone, if there is one, begins; the top left quarter is red.
struct Kind {
  const char* name;
  const char* size;  // of the source
  QStringList output;
  const char* madeSize;
  const char* filter = "";
  int rate = 25;
  bool sound = true;
  int turned = 0;
};

void PrintTo(const Kind& kind, std::ostream* out) { *out << kind.name; }

class KindsOfVideos : public RealTools, public ::testing::WithParamInterface<Kind> {
 protected:
  // When the white half and the tone begin, in seconds; 0 for one that doesn't begin.
  struct Beginnings {
    double white;
    double tone;
  };
  static Beginnings BeginningsIn(const QString& video) {
    QString printed;
    RunTool("ffmpeg",
            {"-i", video, "-vf", "blackdetect=d=0.1:pic_th=0.7", "-af", "silencedetect=d=0.1", "-f",
             "null", "-"},
            &printed);
    const auto number = [&printed](const char* before) {
      const QRegularExpression text(QString(before) + " ?([0-9.]+)");
      return text.match(printed).captured(1).toDouble();
    };
    return {number("black_end:"), number("silence_end:")};
  }
  // Returns the colours of the picture's quarters, row by row, once the right half is white.
  QString QuartersOf(const QString& video) const {
    return ColoursOf(video, "trim=start=2,select='eq(n,0)',setpts=0,scale=2:2:flags=area");
  }
};

TEST_P(KindsOfVideos, ComeOutUprightPlayableOfTheSameLengthAndWithSoundInStep) {
  const Kind& kind = GetParam();
  QString source = PathOf(kind.name);
  const QString picture =
      u"color=black:size=%1:rate=%2:duration=3,drawbox=w=iw/2:h=ih/2:color=red:t=fill,"
      "drawbox=x=iw/2:w=iw/2:color=white:t=fill:enable='gte(t,1)'%3"_s.arg(kind.size)
          .arg(kind.rate)
          .arg(kind.filter);
  const QString tone = u"sine=frequency=440:duration=3,volume='if(lt(t,1),0,1)':eval=frame"_s;
  Make(QStringList{"-f", "lavfi", "-i", picture} +
       (kind.sound ? QStringList{"-f", "lavfi", "-i", tone} : QStringList{}) + kind.output +
       QStringList{source});
  if (kind.turned != 0) {
    const QString turned = PathOf(u"turned-"_s + kind.name);
    ASSERT_TRUE(MakeTurned(source, turned, kind.turned));
    source = turned;
  }
  Choose(source);
  const QString quarters = QuartersOf(source);
  EXPECT_EQ(quarters == "1 red, 1 white, 1 black, 1 white", kind.turned == 0)
      << quarters.toStdString();
  const Beginnings before = BeginningsIn(source);
  constexpr double kFrame = 0.045;  // seconds, a little more than a picture lasts
  for (const auto& [command, name] : {std::pair(&Caption("Label12", Apply), "steady.mp4"),
                                      std::pair(&Caption("Label14", ExtractRegion), "part.mp4")}) {
    SCOPED_TRACE(name);
    const QString made = PathOf(name);
    SaveAs(*command, made);
    EXPECT_EQ(Probed(made, "stream=width,height,pix_fmt"), u"%1,yuv420p"_s.arg(kind.madeSize));
    EXPECT_NEAR(VideoSeconds(made), VideoSeconds(source), 2 * kFrame);
    EXPECT_EQ(QuartersOf(made), quarters);
    const Beginnings after = BeginningsIn(made);
    EXPECT_GT(after.white, 0.9);
    EXPECT_NEAR(after.white, before.white, kFrame);
    EXPECT_EQ(after.tone > 0.9, kind.sound);
    EXPECT_NEAR(after.tone, before.tone, kFrame);
  }
}

const QStringList kPlain = {"-pix_fmt", "yuv420p", "-preset", "ultrafast"};

INSTANTIATE_TEST_SUITE_P(
    Table, KindsOfVideos,
    ::testing::Values(
        Kind{"plain.mp4", "320x180", kPlain, "320,180"},
        Kind{.name = "silent.mp4",
             .size = "320x180",
             .output = kPlain,
             .madeSize = "320,180",
             .sound = false},
        Kind{.name = "interlaced.ts",
             .size = "320x240",
             .output = {"-c:v", "mpeg2video", "-flags", "+ilme+ildct", "-pix_fmt", "yuv420p"},
             .madeSize = "320,240",
             .filter = ",interlace",
             .rate = 50},
        Kind{"tenbits.mkv", "320x180", {"-c:v", "ffv1", "-pix_fmt", "yuv420p10le"}, "320,180"},
        Kind{"wide.mkv", "320x180", {"-c:v", "ffv1", "-pix_fmt", "yuv422p"}, "320,180"},
        Kind{"odd.mkv", "321x181", {"-c:v", "ffv1", "-pix_fmt", "yuv444p"}, "320,180"},
        Kind{.name = "rotated.mp4",
             .size = "320x180",
             .output = kPlain,
             .madeSize = "180,320",
             .turned = 90},
        Kind{.name = "variable.mkv",
             .size = "320x180",
             .output = {"-c:v", "ffv1", "-vsync", "vfr", "-pix_fmt", "yuv420p"},
             .madeSize = "320,180",
             .filter = ",select='lt(mod(n,10),4)'"}),
    [](const ::testing::TestParamInfo<Kind>& tested) {
      return QString(tested.param.name).section('.', 0, 0).toStdString();
    });

// A shaking camera films a still scene: the parameter, x and y of ffmpeg's crop filter, moves a
// window of 640 by 480 pixels over it.
class ShakingCamera : public RealTools, public ::testing::WithParamInterface<const char*> {
 protected:
  // Returns the mean motion from one picture to the next, in pixels, as the detector sees it.
  double Motion(const QString& video) const {
    const QString motions = PathOf("motions");
    Make({"-i", video, "-vf", "vidstabdetect=stepsize=4:shakiness=5:accuracy=15:result=" + motions,
          "-f", "null", "-"});
    QFile file(motions);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    double sum = 0;
    int pictures = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
      static const QRegularExpression field("LM (-?[0-9]+) (-?[0-9]+) ");
      double x = 0;
      double y = 0;
      int fields = 0;
      for (auto found = field.globalMatch(line); found.hasNext(); ++fields) {
        const QRegularExpressionMatch match = found.next();
        x += match.captured(1).toDouble();
        y += match.captured(2).toDouble();
      }
      if (fields == 0) continue;
      sum += std::hypot(x / fields, y / fields);
      ++pictures;
    }
    EXPECT_GT(pictures, 50);
    return pictures > 0 ? sum / pictures : 0;
  }
};

TEST_P(ShakingCamera, IsSteadiedAsMuchAsByFfmpegAlone) {
  const QString source = PathOf("shaken.mp4");
  Make({"-f", "lavfi", "-i",
        u"testsrc2=size=800x640:rate=25,noise=alls=60:all_seed=1,loop=-1:1,trim=end_frame=100,"
        "gblur=1,crop=640:480:%1"_s.arg(GetParam()),
        "-pix_fmt", "yuv420p", source});
  Choose(source);
  const QString steady = PathOf("steady.mp4");
  SaveAs(Caption("Label12", Apply), steady);

  const QString bare = PathOf("bare.mp4");
  const QString transforms = PathOf("transforms");
  Make({"-i", source, "-an", "-sn", "-dn", "-vf",
        "vidstabdetect=stepsize=4:shakiness=3:accuracy=5:result=" + transforms, "-f", "null", "-"});
  Make({"-i", source, "-vf",
        "copy,vidstabtransform=input=" + transforms +
            ":zoom=10:optzoom=0:smoothing=25,unsharp=lx=7:ly=7",
        "-sn", "-dn", bare});
  const double shaken = Motion(source);
  const double rest = Motion(steady);
  const double bareRest = Motion(bare);
  std::printf("motion from picture to picture: %.3f pixels, stabilised %.3f, bare %.3f\n", shaken,
              rest, bareRest);
  EXPECT_LT(rest, shaken / 3);
  EXPECT_NEAR(rest, bareRest, bareRest / 100);
}

INSTANTIATE_TEST_SUITE_P(Moves, ShakingCamera,
                         ::testing::Values("x='80+8*sin(n*0.9)':y='80+6*sin(n*1.3)'",
                                           "x='80+st(0,ld(0)*0.95+6*(random(1)-0.5))':"
                                           "y='80+st(2,ld(2)*0.95+6*(random(3)-0.5))'"),
                         [](const ::testing::TestParamInfo<const char*>& tested) {
                           return tested.index == 0 ? "Sine" : "RandomWalk";
                         });

}  // namespace
}  // namespace kelvane::testing
