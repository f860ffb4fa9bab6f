// These tests let the probe tool print texts and check what the window reads in them.
#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Probe : public MainWindowTest {
 protected:
  Texts Size() const { return {Number(SourceWidth), Number(SourceHeight)}; }
};

struct TextAndCaptions {
  const char* name;
  const char* text;
  Texts captions;    // width and height
  const char* kept;  // the part of the text that is stored
};

void PrintTo(const TextAndCaptions& tested, std::ostream* out) { *out << tested.name; }

class SizeProbe : public Probe, public ::testing::WithParamInterface<TextAndCaptions> {};

TEST_P(SizeProbe, SetsTheCaptionsOfTheSize) {
  Pick(tools_.MakeFile("a.mp4"), GetParam().text, "the rest");
  EXPECT_EQ(Size(), GetParam().captions);
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(Store().toStdString(), GetParam().kept + std::string("the rest"));
}

const TextAndCaptions kCases[] = {
    {"WidthOfThreeDigits",
     "width=720\nheight=576\n",
     {"0,720", "0,576"},
     "width=720\nheight=576\n"},
    {"WidthOfFourDigits", "width=1920\nheight=10\n", {"1,920", "0,010"}, ""},
    {"WidthOfFiveDigits",
     "width=10240\nheight=4320\n",
     {"10,240", "t=4320\r\n"},
     "width=10240\nheight=4320\n"},
    {"WidthOfTwoDigits", "width=64\nheight=48\n", {"0,064", "0,008"}, "width=64\nheight=48\n"},
    {"CarriageReturns",
     "width=640\r\nheight=360\r\n",
     {"0,640", "0,360"},
     "width=640\r\nheight=360\r\n"},
    {"TwoStreamsOfThreeDigits",
     "width=640\nheight=360\nwidth=320\nheight=240\n",
     {"0,640", "0,360"},
     "width=640\nheight=360\nwidth=320\nheight=240\n"},
    {"TwoStreamsOfFourDigits",
     "width=1920\nheight=1080\nwidth=1280\nheight=720\n",
     {"1,280", "0,720"},
     ""},
    {"WidthAlone", "width=640\n", {"", "0,000"}, "width=640\n"},
    {"NoNumbers", "width=N/A\nheight=N/A\n", {"N/A\r\n", "N/A\r\n"}, "width=N/A\nheight=N/A\n"},
    {"SizeAfterAComplaint",
     "x: bad\nwidth=640\nheight=360\n",
     {"0,000", "0,000"},
     "x: bad\nwidth=640\nheight=360\n"},
};

INSTANTIATE_TEST_SUITE_P(Probe, SizeProbe, ::testing::ValuesIn(kCases),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(Probe, OfAFileThatCannotBeReadKeepsSizeAndDuration) {
  LoadVideoOf(640, 360);
  const QString store = Store();
  const QString complaint = "b.txt: Invalid data found\n";
  Pick(tools_.MakeFile("b.txt"), complaint, complaint);
  EXPECT_EQ(Size(), (Texts{"0,640", "0,360"}));
  EXPECT_EQ(Canvas().size(), QSize(640, 360));
  EXPECT_EQ(VideoDuration, "00:00:10");
  EXPECT_EQ(Store(), store + complaint + complaint);
}

TEST_F(Probe, OfASecondVideoKeepsTheFirstOnesDuration) {
  LoadVideoOf(640, 360);
  Pick(tools_.MakeFile("b.mp4"), SizeText(1280, 720), DurationText("00:33:00.00"));
  EXPECT_EQ(Size(), (Texts{"1,280", "0,720"}));
  EXPECT_EQ(VideoDuration, "00:00:10");
  EXPECT_TRUE(Store().contains("00:33:00"));
}

TEST_F(Probe, WithoutItsToolChangesThePathAlone) {
  LoadVideoOf(640, 360);
  const QString store = Store();
  tools_.Remove("ffprobe");
  const QString video = tools_.MakeFile("a.mp4");
  Pick(video);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(Size(), (Texts{"0,640", "0,360"}));
  EXPECT_EQ(VideoDuration, "00:00:10");
  EXPECT_EQ(Store(), store);
  EXPECT_TRUE(ProbeDimensionsDone);
}

TEST_F(Probe, ReadsWhatAPreviewPrintsAsWell) {
  tools_.FfplayDoes(PrintCommands("  Duration: 00:00:55.00, start\n"));
  ProbeDimensionsDone = true;
  Give(PreviewCroppedVideo);
  EXPECT_EQ(VideoDuration, "00:00:55");
  EXPECT_EQ(Store(), "  Duration: 00:00:55.00, start\n");
}

TEST_F(Probe, ReadsThePreviewsFirstBlockAsASizeAfterACancelledDialog) {
  LoadVideoOf(640, 360);
  tools_.FfplayDoes(PrintCommands("width=720\nheight=576\n"));
  Cancel(LoadVideo);
  Give(PreviewCroppedVideo);
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(Size(), (Texts{"0,720", "0,576"}));
  EXPECT_EQ(Canvas().Width(), 720);
}

TEST_F(Probe, IsNotStartedByTheOtherTextBox) {
  Get<TextBox>("Text1", 0).setText("/somewhere.mp4");
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_EQ(VideoPath, "");
}

}  // namespace
}  // namespace kelvane::testing
