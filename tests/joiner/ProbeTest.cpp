// What the joiner makes of the probe tool's text: a strip, a row and the totals.
#include <QFileInfo>
#include <optional>

#include "joiner/JoinerWindowTest.h"
#include "platform/App.h"
#include "shared/SharedValues.h"
#include "support/AllocationFailure.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

using SectionProbe = JoinerWindowTest;

TEST_F(SectionProbe, OfAFileWithABlankInItsNameIsGivenAShortName) {
  AddSectionOf("my clip.mp4");
  ASSERT_EQ(tools_.Runs().size(), 1U);
  const QString run = QString::fromStdString(tools_.Runs()[0]);
  EXPECT_EQ(QFileInfo(run.section(" | ", -1)).symLinkTarget(), InFolder("my clip.mp4"));
  EXPECT_FALSE(run.contains("my clip"));
  EXPECT_EQ(PathsListed(), Texts{Path("my clip.mp4")});
}

// A strip has a pixel for every ten seconds, rounded half to even. The row shows ten per pixel.
TEST_F(SectionProbe, ShowsTensOfSecondsInTheRowAndExactSecondsInTheTotals) {
  for (const char* duration :
       {"00:01:23.99", "00:01:25.00", "00:01:35.00", "00:00:05.00", "00:00:06.00", "23:59:59.99"}) {
    AddSectionOf("a.mp4", duration);
  }
  EXPECT_EQ(Strips(), (Texts{"1,1 8x17", "9,21 8x17", "17,41 10x17", "27,61 0x17", "27,81 1x17",
                             "28,101 8640x17"}));
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 80", "2 | a.mp4 | 80", "3 | a.mp4 | 100", "4 | a.mp4 | 0",
                           "5 | a.mp4 | 10", "6 | a.mp4 | 86400"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "86,673");
  EXPECT_EQ(Shown(TotalRuntime), "00:04:33") << "must begin again after 24 hours";
}

TEST_F(SectionProbe, TakesThePreviousStripsWidthAsTheSecondsOfADurationThatIsNoTime) {
  AddSectionOf("a.mp4", "N/A");
  AddSectionOf("b.mp4", "00:10:00.00");
  AddSectionOf("c.mp4", "N/A");
  EXPECT_EQ(VideoDuration, QString("N/A, sta"));
  AddSectionOf("d.mp4", "N/A");
  EXPECT_EQ(Strips(), (Texts{"1,1 0x17", "1,21 60x17", "61,41 6x17", "67,61 1x17"}));
  EXPECT_EQ(Rows(),
            (Texts{"1 | a.mp4 | 0", "2 | b.mp4 | 600", "3 | c.mp4 | 60", "4 | d.mp4 | 10"}));
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,666");
}

TEST_F(SectionProbe, MakesASectionOfEachLineWithADuration) {
  AddPrinting("a.mp4", "Duration: 00:01:00.00, start\nDuration: 00:02:00.00, start\n");
  EXPECT_EQ(Rows(), (Texts{"1 | a.mp4 | 60", "2 | a.mp4 | 120"}));
  EXPECT_EQ(Strips(), (Texts{"1,1 6x17", "7,21 12x17"}));
  EXPECT_EQ(Paths().ListCount(), 1);
}

// A block is a line, or 256 bytes of a longer line.
TEST_F(SectionProbe, SearchesEachBlockByItself) {
  AddPrinting("a.mp4", BlockEndingIn("  Durati") + "on: 00:01:00.00, start\n");
  EXPECT_EQ(Rows(), Texts{}) << "the word is cut in two";
  AddPrinting("b.mp4", BlockEndingIn("  Duration: 00:01") + ":23.00, start\n");
  EXPECT_EQ(Rows(), Texts{"1 | b.mp4 | 60"}) << "hours and minutes are a time";
  AddPrinting("b.mp4", BlockEndingIn("  Duration: 00:") + "01:23.00, start\n");
  EXPECT_EQ(Rows().back(), "2 | b.mp4 | 10")
      << "this is no time: the 6 pixels of the strip before must count as seconds";
  EXPECT_EQ(Paths().ListCount(), 3);
}

TEST_F(SectionProbe, WithoutADurationOrWithoutItsToolListsThePathAlone) {
  Get<Label>("Label3", TotalDurationSeconds).setCaption("?");
  Get<Label>("Label3", TotalRuntime).setCaption("?");
  AddPrinting("a.txt", "a.txt: Invalid data found when processing input\n");
  EXPECT_EQ(Shown(TotalDurationSeconds), "00,000") << "the totals aren't written at each block";
  EXPECT_EQ(Shown(TotalRuntime), "00:00:00");
  tools_.Remove("ffprobe");
  Add(tools_.MakeFile("b.mp4"));
  EXPECT_EQ(PathsListed(), (Texts{Path("a.txt"), Path("b.mp4")}));
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 02");
  EXPECT_EQ(Rows(), Texts{});
  EXPECT_EQ(Strips(), Texts{});
}

// Without its tool a probe raises no event: it allocates only for its line and the tool's start.
TEST_F(SectionProbe, ListsThePathAloneWhicheverAllocationFails) {
  App::setPath("/a/missing/folder");
  std::size_t before = 0;
  std::size_t count = 0;
  std::optional<std::size_t> failing;
  Before(Get<Label>("Label3", TotalSections).Change, [&](int) {
    before = Allocations();
    if (failing) FailAllocation(*failing);
  });
  After(Get<Label>("Label1", AddVideoSection).MouseUp,
        [&](const MouseEvent& /*event*/) { count = Allocations() - before; });
  const QString video = tools_.MakeFile("a.mp4");
  Add(video);
  Add(video);  // Only the first one reserves memory for the list of started tools.
  const std::size_t all = count;
  ASSERT_GT(all, 0U);
  for (failing = 0; *failing < all; ++*failing) {
    Add(video);
    EXPECT_TRUE(EndAllocationFailure()) << *failing;
  }
  EXPECT_EQ(PathsListed().size(), all + 2);
  EXPECT_EQ(Strips(), Texts{});
}

TEST_F(SectionProbe, PaintsAStripButServesNoEventsWhileTheToolRuns) {
  const PaintsOf paints(QStringLiteral("Picture2(2)"));
  const Gate gate(tools_.PathOf("gate"));
  bool served = false;
  Get<TextBox>("Text1").Change = [&](int) {
    const QString& block = Get<TextBox>("Text1").Text();
    if (block.startsWith("Duration")) {
      AtNextDoEvents([&] { served = true; });
      gate.Open();
    } else if (block.startsWith("end")) {
      EXPECT_EQ(paints.Count(), 1);
      EXPECT_FALSE(served);
    }
  };
  tools_.DurationProbeDoes(PrintCommands("Duration: 00:10:00.00, start\n") + WaitCommands(gate) +
                           PrintCommands("end\n"));
  Add(tools_.MakeFile("a.mp4"));
  EXPECT_TRUE(gate.IsPassed());
  ServePendingEvents();
  EXPECT_TRUE(served);
}

}  // namespace
}  // namespace kelvane::testing
