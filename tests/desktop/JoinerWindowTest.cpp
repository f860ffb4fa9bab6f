// The joiner window on a real screen, and joins with the real tools.
#include <QFile>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

class JoinerOnScreen : public JoinerTest {
 protected:
  // The probe tool prints the content of the file that is its last argument, here a duration.
  void AddThreeFakeSections() {
    program.ReplaceTool("ffprobe", "for file; do :; done\ncat \"$file\" >&2");
    for (const auto& [name, duration] :
         {std::pair("a.mp4", "00:03:20.00"), {"b.mp4", "00:10:10.90"}, {"c.mp4", "00:05:03.10"}}) {
      WriteFile(program.PathOf(name), QByteArray("  Duration: ") + duration + ", start: 0.0\n");
      ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
    }
  }
  bool IsFramed(const QRect& place, QRgb color = kText) const {
    const QImage picture = screen.Picture(place);
    return AllOf(picture, QRect(0, 0, place.width(), 1), color) &&
           AllOf(picture, QRect(0, 0, 1, place.height()), color) &&
           AllOf(picture, QRect(0, place.height() - 1, place.width(), 1), color) &&
           AllOf(picture, QRect(place.width() - 1, 0, 1, place.height()), color);
  }
  QString output = program.PathOf("all.mp4");
};

TEST_F(JoinerOnScreen, FramesTheFocusedControlAndRunsItsCommandOnSpace) {
  constexpr QRgb kFrame = 0xffffff;
  for (const char* name : {"ListView1", "List1", "Option1(0)", "Label1(0)"}) {
    screen.PressKey(kTab);
    EXPECT_TRUE(WaitFor([&] { return IsFramed(joiner.Place(name), kFrame); })) << name;
  }
  const QList<WindowId> known = screen.Windows();
  screen.PressKey(' ');
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Add Video");
  screen.PressKey(kEscape);
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }));
}

TEST_F(JoinerOnScreen, ShowsSelectsAndRemovesSectionsUnderThePointer) {
  ASSERT_NO_FATAL_FAILURE(AddThreeFakeSections());
  EXPECT_TRUE(joiner.AwaitTotals(3, "01,113", "00:18:33"));
  EXPECT_EQ(joiner.Strip(0), QRect(1, 1, 20, 17));
  EXPECT_EQ(joiner.Strip(1), QRect(21, 21, 61, 17));
  EXPECT_EQ(joiner.Strip(2), QRect(82, 41, 30, 17));
  for (const auto& [row, title, seconds] :
       {std::tuple(0, "a.mp4", "200"), {1, "b.mp4", "610"}, {2, "c.mp4", "300"}}) {
    EXPECT_TRUE(joiner.AwaitRow(row, QString::number(row + 1), title, seconds)) << row;
    EXPECT_TRUE(joiner.AwaitLine(row, added[row])) << row;
  }

  joiner.PointAtSection(1);
  EXPECT_TRUE(joiner.AwaitDetails("   Video Index: 02 Title: b.mp4   "));
  EXPECT_TRUE(WaitFor([&] { return joiner.RowSelected(1) && joiner.LineSelected(1); }));
  EXPECT_FALSE(joiner.RowSelected(0) || joiner.LineSelected(0));
  const QRect frame(joiner.OnChart({20, 20}), QSize(63, 19));
  EXPECT_TRUE(WaitFor([&] { return IsFramed(frame); }));
  screen.MovePointer(joiner.EmptyChartPosition());
  EXPECT_TRUE(joiner.AwaitDetails({}));
  EXPECT_TRUE(WaitFor([&] { return !joiner.LineSelected(1) && !IsFramed(frame); }));

  ASSERT_TRUE(joiner.RemoveSection(1));
  screen.MovePointer(joiner.EmptyChartPosition());
  EXPECT_TRUE(joiner.AwaitDetails({}));
  EXPECT_TRUE(AllOf(screen.Still(joiner.Chart()), QRect(21, 21, 61, 17), JoinerWindow::kRemoved));
  EXPECT_TRUE(joiner.AwaitLine(1, " Deleted Section "));
}

TEST_F(JoinerOnScreen, JoinsClipsWithTheRealTools) {
  for (const auto& [name, seconds] :
       {std::pair("a b.mp4", 2), {"b.mp4", 3}, {"\u00fc\u52d5.mp4", 4}}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", seconds));
    ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
  }
  EXPECT_TRUE(joiner.AwaitTotals(3, "00,009", "00:00:09"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_NEAR(VideoSeconds(output), 9, 1.0 / 25);
  EXPECT_EQ(PicturesWithoutComplaint(output), 9 * 25);
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerOnScreen, ReplacesAnExistingFileEvenIfTheJoinFailsHalfway) {
  for (const char* name : {"a.mp4", "b.mp4"}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", 2));
    ASSERT_NO_FATAL_FAILURE(Add(program.PathOf(name)));
  }
  const QByteArray first = ContentOf(added[0]);
  ASSERT_TRUE(QFile::remove(added[1]));
  WriteFile(output, "somebody's work");
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(PicturesWithoutComplaint(output), 2 * 25) << "the output isn't the first section alone";
  EXPECT_EQ(ContentOf(added[0]), first);
}

// The request to close is handled only while the message box is open, which blocks the window.
TEST_F(JoinerOnScreen, IgnoresARequestToCloseWhileTheToolRuns) {
  program.ReplaceTool("ffmpeg", program.Gate("join"));
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
  ASSERT_TRUE(WaitFor([&] { return !program.RunsOf("ffmpeg").isEmpty(); }));
  screen.Close(joiner.Id());
  ASSERT_TRUE(program.Open("join"));
  ASSERT_TRUE(CloseJoinMessage(screen));
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  EXPECT_TRUE(HoldsFor([&] { return program.Running(); }, 300ms));
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
