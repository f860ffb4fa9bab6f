// What the probe tool prints, and what of it reaches the window.
#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Probe : public MainWindowTest {
 protected:
  QString Video() const { return tools_.File(QStringLiteral("a.mp4")); }
  std::vector<std::string> Size() const { return {Number(SourceWidth), Number(SourceHeight)}; }
};

struct BlockAndCaptions {
  const char* name;
  const char* block;
  const char* width;
  const char* height;
  bool usedUp;  // and not passed on to the store
};

void PrintTo(const BlockAndCaptions& row, std::ostream* out) { *out << row.name; }

class SizeProbe : public Probe, public ::testing::WithParamInterface<BlockAndCaptions> {};

TEST_P(SizeProbe, PrintsABlockThatBecomesTheCaptions) {
  const BlockAndCaptions& row = GetParam();
  Pick(Video(), QLatin1String(row.block), QStringLiteral("the rest"));
  EXPECT_EQ(Size(), (Texts{row.width, row.height}));
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(Store().toStdString(), std::string(row.usedUp ? "" : row.block) + "the rest");
}

INSTANTIATE_TEST_SUITE_P(
    Probe, SizeProbe,
    ::testing::Values(
        BlockAndCaptions{"WidthOfThreeDigits", "width=720\nheight=576\n", "0,720", "0,576", false},
        BlockAndCaptions{"WidthOfThreeDigitsHeightOfFour", "width=720\nheight=1280\n", "0,720",
                         "1,280", false},
        BlockAndCaptions{"WidthOfFourDigits", "width=1920\nheight=1080\n", "1,920", "1,080", true},
        BlockAndCaptions{"WidthOfFourDigitsHeightOfTwo", "width=1920\nheight=10\n", "1,920",
                         "0,010", true},
        BlockAndCaptions{"WidthOfFiveDigits", "width=10240\nheight=4320\n", "10,240", "t=4320\r\n",
                         false},
        BlockAndCaptions{"WidthOfTwoDigits", "width=64\nheight=48\n", "0,064", "0,008", false},
        BlockAndCaptions{"WidthOfOneDigit", "width=8\nheight=480\n", "0,008", "0,000", false},
        BlockAndCaptions{"CarriageReturnsThereAlready", "width=640\r\nheight=360\r\n", "0,640",
                         "0,360", false},
        BlockAndCaptions{"WordsInCapitals", "WIDTH=640\nHEIGHT=360\n", "0,640", "0,360", false},
        BlockAndCaptions{"TwoStreamsOfThreeDigits",
                         "width=640\nheight=360\nwidth=320\nheight=240\n", "0,640", "0,360", false},
        BlockAndCaptions{"TwoStreamsOfFourDigits",
                         "width=1920\nheight=1080\nwidth=1280\nheight=720\n", "1,280", "0,720",
                         true},
        BlockAndCaptions{"AStreamWithoutASizeBehindThreeDigits",
                         "width=640\nheight=360\nwidth=N/A\nheight=N/A\n", "0,640", "0,360", false},
        BlockAndCaptions{"HeightMissing", "width=640\n", "", "0,000", false},
        BlockAndCaptions{"WidthMissing", "stream=1\r\nheight=360\r\n", "0,000", "0,060", false},
        BlockAndCaptions{"NoNumbers", "width=N/A\nheight=N/A\n", "N/A\r\n", "N/A\r\n", false},
        BlockAndCaptions{"AComplaintBeforeIt", "x: bad\nwidth=640\nheight=360\n", "0,000", "0,000",
                         false},
        BlockAndCaptions{"AComplaintAlone", "a.mp4: Invalid data found\n", "0,000", "0,000",
                         false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Probe, ASizeThatCannotBeReadKeepsTheCanvasAndTheDuration) {
  LoadVideoOf(640, 360);
  Pick(tools_.File(QStringLiteral("b.txt")), QStringLiteral("b.txt: Invalid data found\n"),
       QStringLiteral("b.txt: Invalid data found\n"));
  EXPECT_EQ(Size(), (Texts{"0,640", "0,360"}));
  EXPECT_EQ(Canvas().Width(), 640);
  EXPECT_EQ(Canvas().Height(), 360);
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
  EXPECT_TRUE(
      Store().endsWith(QLatin1String("b.txt: Invalid data found\nb.txt: Invalid data found\n")));
}

TEST_F(Probe, ATextOnlyHeightKeepsTheCanvasHeight) {
  LoadVideoOf(640, 360);
  Pick(tools_.File(QStringLiteral("b.mp4")), SizeText(10240, 4320), QString());
  EXPECT_EQ(Canvas().Width(), 10240);
  EXPECT_EQ(Canvas().Height(), 360);
}

TEST_F(Probe, ASizeThatIsPrintedInPiecesIsReadWhole) {
  QString commands;
  for (const char* piece :
       {"wid", "th=12", "80\n", "height", "=72", "0\nwidth=", "300\nheight=3"}) {
    commands += Print(QLatin1String(piece)) + QLatin1String("sleep 0.05\n");
  }
  tools_.SizeProbeDoes(commands + Print(QStringLiteral("00\n")));
  tools_.DurationProbeDoes(QString());
  Texts sizes;
  After(Get<Label>("Label1", SourceHeight).Change,
        [&](int) { sizes.push_back(Number(SourceWidth) + " x " + Number(SourceHeight)); });
  Pick(Video());
  EXPECT_EQ(sizes, (Texts{"1,280 x 0,720", "0,300 x 0,300"}));
}

// Only the size probe's own text is cut into sizes.
TEST_F(Probe, LinesInSeparateBlocksOfAPreviewLoseTheHeight) {
  LoadVideoOf(320, 200);
  const Gate gate(tools_.PathOf("gate"));
  tools_.PreviewDoes(Print(QStringLiteral("width=640\n")) + Wait(gate) +
                     Print(QStringLiteral("height=360\n")));
  ProbeDimensionsDone = false;
  bool emptied = false;
  After(Get<Label>("Label1", SourceWidth).Change, [&](int) {
    emptied = Number(SourceWidth).empty();
    gate.Open();
  });
  const qsizetype before = Store().size();
  Give(PreviewCroppedVideo);
  EXPECT_TRUE(emptied);
  EXPECT_EQ(Size(), (Texts{"", "0,200"}));
  EXPECT_EQ(Store().mid(before).toStdString(), "width=640\nheight=360\n");
  EXPECT_EQ(Canvas().Width(), 320);
}

TEST_F(Probe, AfterAWidthOfFourDigitsTheNextBlockIsReadAsASizeToo) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)) + Wait(gate) + Print(SizeText(1280, 720)));
  bool opened = false;
  After(Get<Label>("Label1", SourceHeight).Change, [&](int) {
    if (!opened) gate.Open();
    opened = true;
  });
  Pick(Video());
  EXPECT_EQ(Size(), (Texts{"1,280", "0,720"}));
  EXPECT_EQ(Store().toStdString(), "");
}

struct TextAndDuration {
  const char* name;
  std::vector<const char*> blocks;
  std::vector<std::string> durations;  // after each block
};

void PrintTo(const TextAndDuration& row, std::ostream* out) { *out << row.name; }

class DurationProbe : public Probe, public ::testing::WithParamInterface<TextAndDuration> {};

TEST_P(DurationProbe, PrintsBlocksThatBecomeTheDuration) {
  const Gate gate(tools_.PathOf("gate"));
  QString commands;
  for (const char* block : GetParam().blocks) {
    commands += Print(QLatin1String(block)) + Wait(gate);
  }
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(commands);
  VideoDuration = QStringLiteral("as before");
  // The store grows by a block before the duration is read from it, so what is seen here is what
  // the block before has left.
  Texts durations;
  bool first = true;
  Get<TextBox>("Text2").Change = [&](int) {
    if (!first) durations.push_back(VideoDuration.toStdString());
    first = false;
    gate.Open();
  };
  Pick(Video());
  durations.push_back(VideoDuration.toStdString());
  EXPECT_EQ(durations, GetParam().durations);
}

INSTANTIATE_TEST_SUITE_P(
    Probe, DurationProbe,
    ::testing::Values(
        TextAndDuration{
            "WholeInOneBlock", {"Input #0\n  Duration: 00:01:30.50, start: 0.0\n"}, {"00:01:30"}},
        TextAndDuration{"WordInAnyCase", {"dURATION: 01:02:03.99"}, {"01:02:03"}},
        TextAndDuration{"NotAvailable", {"Duration: N/A, bitrate: N/A\n"}, {"N/A, bit"}},
        TextAndDuration{"NotThere", {"b.mp4: No such file\n"}, {"as before"}},
        TextAndDuration{
            "WordAcrossTwoBlocks", {"  Dura", "tion: 00:01:30.50\n"}, {"as before", "00:01:30"}},
        TextAndDuration{"ValueAcrossThreeBlocks",
                        {"Duration:", " 00:0", "1:30.50, start\n"},
                        {"", "00:0", "00:01:30"}},
        TextAndDuration{"CutShortByTheEnd", {"Duration: 00:01"}, {"00:01"}},
        TextAndDuration{"TheFirstOfTwoInABlock",
                        {"Duration: 00:00:01.00\nDuration: 00:00:02.00\n"},
                        {"00:00:01"}},
        TextAndDuration{"TheFirstOfTwoBlocks",
                        {"Duration: 00:00:01.00\n", "Duration: 00:00:02.00\n"},
                        {"00:00:01", "00:00:01"}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(Probe, AWordAcrossTheBlockSizeIsFoundInTheStore) {
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(BlockEndingIn(QStringLiteral("Durat")) +
                                 QStringLiteral("ion: 00:00:42.00, start: 0\n")));
  Pick(Video());
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:42");
}

TEST_F(Probe, ALetterAcrossTheBlockSizeIsReplacedOnBothSidesAndNothingElseIs) {
  const QString dots(255, QLatin1Char('.'));
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(dots + QString::fromUtf8("\u00C4rger, \u00D6l\n")));
  Pick(Video());
  EXPECT_EQ(Store(), dots + QString(2, QChar(QChar::ReplacementCharacter)) +
                         QString::fromUtf8("rger, \u00D6l\n"));
}

TEST_F(Probe, ASecondVideoKeepsTheFirstOnesDuration) {
  LoadVideoOf(640, 360);
  Pick(tools_.File(QStringLiteral("b.mp4")), SizeText(1280, 720), DurationText("00:33:00.00"));
  EXPECT_EQ(Size(), (Texts{"1,280", "0,720"}));
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
  EXPECT_TRUE(Store().contains(QLatin1String("00:33:00")));
}

TEST_F(Probe, AMissingToolChangesNothingAndSaysNothing) {
  LoadVideoOf(640, 360);
  const QString store = Store();
  tools_.Remove(QStringLiteral("ffprobe"));
  const QString video = Video();
  Pick(video);
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(VideoPath, video);
  EXPECT_EQ(Size(), (Texts{"0,640", "0,360"}));
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
  EXPECT_EQ(Store(), store);
  EXPECT_TRUE(ProbeDimensionsDone);
}

TEST_F(Probe, WhatThePreviewPrintsIsReadAsAProbesText) {
  tools_.PreviewDoes(Print(QStringLiteral("  Duration: 00:00:55.00, start\n")));
  ProbeDimensionsDone = true;
  Give(PreviewCroppedVideo);
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:55");
  EXPECT_EQ(Store().toStdString(), "  Duration: 00:00:55.00, start\n");
}

TEST_F(Probe, AfterACancelledDialogThePreviewsFirstBlockIsReadAsASize) {
  LoadVideoOf(640, 360);
  tools_.PreviewDoes(Print(QStringLiteral("width=720\nheight=576\n")));
  const DialogAnswers answers({CancelDialog()});
  Give(LoadVideo);
  EXPECT_FALSE(ProbeDimensionsDone);
  Give(PreviewCroppedVideo);
  EXPECT_TRUE(ProbeDimensionsDone);
  EXPECT_EQ(Size(), (Texts{"0,720", "0,576"}));
  EXPECT_EQ(Canvas().Width(), 720);
}

TEST_F(Probe, TheOtherTextBoxStartsNoProbe) {
  Get<TextBox>("Text1", 0).setText(QStringLiteral("/somewhere.mp4"));
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_EQ(VideoPath.toStdString(), "");
}

TEST_F(Probe, WithTheSizeKnownANewPathRunsTheDurationProbeAlone) {
  ProbeDimensionsDone = true;
  Path().setText(QStringLiteral("/somewhere.mp4"));
  EXPECT_EQ(tools_.Runs(), Texts{DurationRun(QStringLiteral("/somewhere.mp4"))});
}

}  // namespace
}  // namespace kelvane::testing
