#include "desktop/JoinerTest.h"

namespace kelvane::desktop {

void JoinerTest::SetUp() {
  program.Start();
  ASSERT_TRUE(joiner.Await()) << "the joiner window doesn't come";
}

void JoinerTest::CloseJoinerAndExpectEnd() {
  screen.Close(joiner.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

void JoinerTest::Add(const QString& file) {
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kAddSection, file)) << file.toStdString();
  added << file;
  ASSERT_TRUE(joiner.AwaitSections(static_cast<int>(added.size())));
}

void JoinerTest::JoinTo(const QString& output) {
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
  ASSERT_TRUE(CloseJoinMessage(screen, 60s)) << "the box at the end doesn't come";
}

}  // namespace kelvane::desktop
