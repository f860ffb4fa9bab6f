// What a section's probe makes of the tool's words: width, column and totals.
#include <QLocale>

#include "joiner/JoinerWindowTest.h"
#include "shared/SharedValues.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

class Probe : public JoinerWindowTest {};

TEST_F(Probe, RunsTheProbeToolOnceOnTheShortPath) {
  const QString file = AddSectionOf("clip.mp4", "00:01:23.45");
  EXPECT_EQ(tools_.Runs(), Texts{"ffprobe | -hide_banner | -stats | -i | " + file.toStdString()});
}

TEST_F(Probe, AFileWithABlankInItsPathGoesToTheToolUnderAShortName) {
  tools_.DurationProbeDoes(Print(DurationText("00:00:20.00")));
  Add(tools_.File("my clip.mp4"));
  ASSERT_EQ(tools_.Runs().size(), 1U);
  EXPECT_EQ(tools_.Runs()[0].find("my clip"), std::string::npos);
  EXPECT_TRUE(QString::fromStdString(tools_.Runs()[0]).endsWith(".mp4"));
  EXPECT_EQ(PathsListed(), Texts{InFolder("my clip.mp4").toStdString()});
  EXPECT_EQ(Rows(), Texts{"1 | my clip.mp4 | 20"});
}

TEST_F(Probe, RunsTheToolOfAFolderWithABlankInItsNameUnderAShortName) {
  MoveToolsToAFolderWithABlank();
  AddSectionOf("clip.mp4", "00:01:23.45");
  ASSERT_EQ(tools_.Runs().size(), 1U);
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,083");
}

struct SecondsCase {
  const char* duration;
  int width;
  const char* column;
  const char* seconds;
  const char* runtime;
};

class Seconds : public JoinerWindowTest, public ::testing::WithParamInterface<SecondsCase> {};

TEST_P(Seconds, MakeTheWidthRoundedToWholeTensHalfToEvenAndTheTotalsExact) {
  AddSectionOf("clip.mp4", GetParam().duration);
  EXPECT_EQ(Strip(2).Width(), static_cast<float>(GetParam().width));
  EXPECT_EQ(Rows(), Texts{std::string("1 | clip.mp4 | ") + GetParam().column});
  EXPECT_EQ(Shown(TotalDurationSeconds), GetParam().seconds);
  EXPECT_EQ(Shown(TotalRuntime), GetParam().runtime);
}

INSTANTIATE_TEST_SUITE_P(
    Joiner, Seconds,
    ::testing::Values(SecondsCase{"00:01:23.99", 8, "80", "00,083", "00:01:23"},
                      SecondsCase{"00:01:25.00", 8, "80", "00,085", "00:01:25"},
                      SecondsCase{"00:01:27.00", 9, "90", "00,087", "00:01:27"},
                      SecondsCase{"00:01:35.00", 10, "100", "00,095", "00:01:35"},
                      SecondsCase{"00:00:03.00", 0, "0", "00,003", "00:00:03"},
                      SecondsCase{"00:00:05.00", 0, "0", "00,005", "00:00:05"},
                      SecondsCase{"00:00:06.00", 1, "10", "00,006", "00:00:06"},
                      SecondsCase{"00:00:15.00", 2, "20", "00,015", "00:00:15"},
                      SecondsCase{"00:00:00.00", 0, "0", "00,000", "00:00:00"},
                      SecondsCase{"01:00:00.00", 360, "3600", "03,600", "01:00:00"},
                      SecondsCase{"23:59:59.99", 8640, "86400", "86,399", "23:59:59"}),
    [](const auto& test) {
      return "Of" + QString(test.param.duration).left(8).remove(':').toStdString();
    });

TEST_F(Probe, TheTotalsAddUpTheExactSecondsOfAll) {
  AddSectionOf("a.mp4", "00:01:23.00");
  AddSectionOf("b.mp4", "00:01:25.00");
  AddSectionOf("c.mp4", "00:01:27.00");
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,255");
  EXPECT_EQ(Shown(TotalRuntime), "00:04:15");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 80", "2 | b.mp4 | 80", "3 | c.mp4 | 90"}));
}

TEST_F(Probe, TheRuntimeWrapsAfterADayWhileTheSecondsCountOn) {
  AddSectionOf("a.mp4", "23:59:59.00");
  AddSectionOf("b.mp4", "00:00:02.00");
  EXPECT_EQ(Shown(TotalDurationSeconds), "86,401");
  EXPECT_EQ(Shown(TotalRuntime), "00:00:01");
  for (int more = 0; more < 12; ++more) AddSectionOf("c.mp4", "23:00:00.00");
  EXPECT_EQ(Shown(TotalDurationSeconds), "1,080,001");
}

TEST_F(Probe, TheSeparatorOfThousandsIsTheLocales) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  AddSectionOf("a.mp4", "01:00:00.00");
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(Shown(TotalDurationSeconds), "03.600");
}

TEST_F(Probe, TheDurationReplacesTheOneThatTheWindowsShare) {
  VideoDuration = "00:09:09";
  AddSectionOf("a.mp4", "00:01:23.45");
  EXPECT_EQ(VideoDuration, QString("00:01:23"));
}

TEST_F(Probe, TheWordIsFoundInAnyCase) {
  AddPrinting("a.mp4", "dURATION: 00:00:40.00, start\n");
  EXPECT_EQ(Rows(), Texts{"1 | a.mp4 | 40"});
}

TEST_F(Probe, TheFirstWordOfABlockCounts) {
  AddPrinting("a.mp4", "Duration: 00:00:40.00, Duration: 00:00:50.00\n");
  EXPECT_EQ(Rows(), Texts{"1 | a.mp4 | 40"});
}

TEST_F(Probe, TheScratchBoxHoldsTheLastBlockAlone) {
  const Gate gate(tools_.PathOf("gate"));
  Texts blocks;
  Get<TextBox>("Text1").Change = [&](int) {
    blocks.push_back(Get<TextBox>("Text1").Text().toStdString());
    gate.Open();
  };
  tools_.DurationProbeDoes(Print("one\n") + Wait(gate) + Print("two\n"));
  Add(tools_.File("a.mp4"));
  EXPECT_EQ(blocks, (Texts{"one\n", "two\n", ""}));
}

// So much later that they are read one by one.
TEST_F(Probe, AWordAndItsValueThatAreWrittenOneAfterTheOtherMakeOneSection) {
  tools_.DurationProbeDoes("printf '  Duration: '; sleep 0.2; printf '00:00:40.00, start: 0\\n'\n");
  Add(tools_.File("a.mp4"));
  EXPECT_EQ(Rows(), Texts{"1 | a.mp4 | 40"});
}

TEST_F(Probe, AStripIsPaintedWhileTheToolStillRuns) {
  const PaintsOf paints(QStringLiteral("Picture2(2)"));
  const Gate gate(tools_.PathOf("gate"));
  int atTheSecondBlock = -1;
  Get<TextBox>("Text1").Change = [&](int) {
    if (Get<TextBox>("Text1").Text().startsWith("end")) atTheSecondBlock = paints.Count();
    gate.Open();
  };
  tools_.DurationProbeDoes(Print(DurationText("00:10:00.00")) + Wait(gate) + Print("end\n"));
  Add(tools_.File("a.mp4"));
  EXPECT_EQ(atTheSecondBlock, 1);
}

// A block is a line, or 256 bytes of one that is longer.
TEST_F(Probe, AWordThatIsCutInTwoIsNotFound) {
  AddPrinting("a.mp4", BlockEndingIn("  Durati") + "on: 00:01:00.00, start\n");
  EXPECT_EQ(Rows(), Texts{});
  EXPECT_EQ(Strips(), Texts{});
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,000");
  EXPECT_EQ(Paths().ListCount(), 1);
}

TEST_F(Probe, AValueThatIsCutShortCountsAsFarAsItIsATime) {
  AddPrinting("a.mp4", BlockEndingIn("  Duration: 00:01") + ":23.00, start\n");
  EXPECT_EQ(Rows(), Texts{"1 | a.mp4 | 60"}) << "hours and minutes are a time";
  AddPrinting("a.mp4", BlockEndingIn("  Duration: 00:") + "01:23.00, start\n");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 60", "2 | a.mp4 | 10"})) << "six pixels for seconds";
  AddPrinting("a.mp4", BlockEndingIn("  Duration:") + " 00:01:23.00, start\n");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 60", "2 | a.mp4 | 10", "3 | a.mp4 | 0"}));
}

TEST_F(Probe, TheWordInTwoLinesMakesTwoSectionsOfOneFile) {
  AddPrinting("a.mp4", "Duration: 00:01:00.00, start\nDuration: 00:02:00.00, start\n");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 60", "2 | a.mp4 | 120"}));
  EXPECT_EQ(Strips(), (Texts{"1,1 6x17", "7,21 12x17"}));
  EXPECT_EQ(Paths().ListCount(), 1);
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,180");
}

TEST_F(Probe, ADurationThatIsNoTimeTakesTheWidthOfTheSectionBeforeForItsSeconds) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "N/A");
  EXPECT_EQ(VideoDuration, QString("N/A, sta"));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 600", "2 | b.mp4 | 60"}));
  EXPECT_EQ(Strips(), (Texts{"1,1 60x17", "61,21 6x17"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,660");
  AddSectionOf("c.mp4", "N/A");
  EXPECT_EQ(Rows().back(), "3 | c.mp4 | 10") << "six seconds are one pixel";
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,666");
}

TEST_F(Probe, AFirstDurationThatIsNoTimeMakesASectionOfNoLength) {
  AddSectionOf("a.mp4", "N/A");
  EXPECT_EQ(Rows(), Texts{"1 | a.mp4 | 0"});
  EXPECT_EQ(Strips(), Texts{"1,1 0x17"});
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,000");
}

TEST_F(Probe, ADurationOfADayOrMoreIsNoTime) {
  AddSectionOf("a.mp4", "00:10:00.00");
  AddSectionOf("b.mp4", "24:00:00.00");
  EXPECT_EQ(Rows().back(), "2 | b.mp4 | 60");
}

TEST_F(Probe, AFileOfWhichTheToolTellsNoDurationLeavesItsPathAlone) {
  AddPrinting("a.txt", "a.txt: Invalid data found when processing input\n");
  EXPECT_EQ(PathsListed(), Texts{InFolder("a.txt").toStdString()});
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 01");
  EXPECT_EQ(Rows(), Texts{});
  EXPECT_EQ(Strips(), Texts{});
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,000");
  EXPECT_EQ(Shown(TotalRuntime), "00:00:00");
}

TEST_F(Probe, AMissingToolLeavesThePathAloneAndSaysNothing) {
  tools_.Remove("ffprobe");
  Add(tools_.File("a.mp4"));
  EXPECT_EQ(Paths().ListCount(), 1);
  EXPECT_EQ(Rows(), Texts{});
}

TEST_F(Probe, TheReadOutsAreWrittenAtEveryBlock) {
  Get<Label>("Label3", TotalDurationSeconds).setCaption("?");
  Get<Label>("Label3", TotalRuntime).setCaption("?");
  AddPrinting("a.txt", "nothing of the kind\n");
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,000");
  EXPECT_EQ(Shown(TotalRuntime), "00:00:00");
}

TEST_F(Probe, TheWindowIsNotServedWhileTheToolRuns) {
  const Gate gate(tools_.PathOf("gate"));
  bool served = false;
  bool servedInside = false;
  Get<TextBox>("Text1").Change = [&](int) {
    if (Get<TextBox>("Text1").Text().startsWith("one")) {
      AtNextDoEvents([&] { served = true; });
      gate.Open();
    } else {
      servedInside = served;
    }
  };
  tools_.DurationProbeDoes(Print("one\n") + Wait(gate) + Print("two\n"));
  Add(tools_.File("a.mp4"));
  EXPECT_FALSE(servedInside);
  PumpOnce();
  EXPECT_TRUE(served);
}

TEST_F(Probe, ABlockOfBytesThatAreNoTextDoesNoHarm) {
  tools_.DurationProbeDoes("printf '\\377\\376Duration: 00:00:40.00, \\300\\n'\n");
  Add(tools_.File("a.mp4"));
  EXPECT_EQ(Rows(), Texts{"1 | a.mp4 | 40"});
}

}  // namespace
}  // namespace kelvane::testing
