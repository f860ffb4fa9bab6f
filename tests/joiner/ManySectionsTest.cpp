// A list as long as no user's.
#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {
namespace {

class ManySections : public JoinerWindowTest {
 protected:
  static constexpr int kMany = 2000;
};

TEST_F(ManySections, AreAllTakenInShownAndJoined) {
  const QString file = tools_.File("a.mp4");
  tools_.DurationProbeDoes(Print(DurationText("00:00:35.00")));
  for (int i = 0; i < kMany; ++i) Add(file);
  EXPECT_EQ(Paths().ListCount(), kMany);
  EXPECT_EQ(Shown(TotalSections), "Total Sections: 2000");
  EXPECT_EQ(Rows().size(), std::size_t{kMany});
  EXPECT_EQ(Rows().back(), "2000 | a.mp4 | 40");
  EXPECT_EQ(Strips().size(), std::size_t{kMany});
  EXPECT_EQ(Strips().back(), "7997,39981 4x17");
  EXPECT_EQ(Details(kMany + 1), "   Video Index: 2000 Title: a.mp4   ");
  EXPECT_EQ(Shown(TotalDurationSeconds), "70,000");
  EXPECT_EQ(Shown(TotalRuntime), "19:26:40");
  EXPECT_EQ(tools_.Runs().size(), std::size_t{kMany});

  MovePointerOver(Strip(kMany + 1));
  EXPECT_EQ(Paths().ListIndex(), kMany - 1);
  EXPECT_TRUE(Table().ListItems(kMany).Selected());
  Remove(kMany + 1);
  EXPECT_EQ(Paths().List(kMany - 1), QString(" Deleted Section "));
  JoinTo("/tmp/all.mp4");
  const QString list = QString::fromStdString(ContentOf(InFolder("files.txt")));
  EXPECT_EQ(list.count("\r\n"), kMany);
  EXPECT_TRUE(list.endsWith("file 'Deleted Section'\r\n"));
}

}  // namespace
}  // namespace kelvane::testing
