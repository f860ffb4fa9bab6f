// A tool never has to wait for the program to take its text.
#include <gtest/gtest.h>
#include <pthread.h>

#include <filesystem>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"
#include "support/Sanitized.h"

namespace kelvane::testing {
namespace {

// More than a pipe holds.
constexpr std::size_t kMuch = 400'000;

class ToolWaitsForNobody : public ::testing::Test {
 protected:
  // A tool that prints a short line, much text and another line, and then makes the file.
  std::string TalkingTool(const std::string& file) const {
    return folder_.Script("talks-to-" + file, "echo begin\nhead -c " + std::to_string(kMuch) +
                                                  " /dev/zero\necho end\ntouch " + folder_ / file);
  }
  bool IsMadeInTime(const std::string& file) const {
    return WaitFor([&] { return std::filesystem::exists(folder_ / file); });
  }
  const std::string text_ = "begin\n" + std::string(kMuch, '\0') + "end\n";
  TemporaryFolder folder_;
};

TEST_F(ToolWaitsForNobody, WhileAHandlerTakesItsTime) {
  DOSOutputs outputs;
  bool ended = false;
  std::string received;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    if (received.empty()) ended = IsMadeInTime("ended");
    received += block;
    EXPECT_LE(block.size(), 256U);
    EXPECT_TRUE(outputs.Outputs() == received) << "what wasn't raised is shown";
  };
  EXPECT_TRUE(outputs.ExecuteCommand(TalkingTool("ended")) == text_);
  EXPECT_TRUE(ended);
  EXPECT_TRUE(received == text_);
}

TEST_F(ToolWaitsForNobody, InRunsInsideEachOther) {
  int ended = 0;
  std::function<void(int)> run = [&](int depth) {
    constexpr int kDepth = 3;
    DOSOutputs outputs;
    std::string received;
    outputs.ReceiveOutputs = [&, depth](const std::string& block) {
      if (received.empty()) {
        if (depth < kDepth) run(depth + 1);
        if (IsMadeInTime(std::to_string(depth))) ++ended;
      }
      received += block;
    };
    // The innermost one is whole before the others have taken more than a block.
    EXPECT_TRUE(outputs.ExecuteCommand(TalkingTool(std::to_string(depth))) == text_);
    EXPECT_TRUE(received == text_);
  };
  run(1);
  EXPECT_EQ(ended, 3);
}

TEST_F(ToolWaitsForNobody, AndWithoutAThreadToReadItIsNotStarted) {
  pthread_attr_t former;
  ASSERT_EQ(pthread_getattr_default_np(&former), 0);
  pthread_attr_t tooLarge;
  ASSERT_EQ(pthread_getattr_default_np(&tooLarge), 0);
  constexpr std::size_t kWholeAddressSpace = std::size_t{1} << 47U;
  ASSERT_EQ(pthread_attr_setstacksize(&tooLarge, kWholeAddressSpace), 0);

  DOSOutputs outputs;
  RunLine(outputs, "/bin/echo earlier");
  ASSERT_EQ(pthread_setattr_default_np(&tooLarge), 0);
  const Events events = RunLine(outputs, TalkingTool("ended"));
  pthread_setattr_default_np(&former);
  pthread_attr_destroy(&former);
  pthread_attr_destroy(&tooLarge);

  EXPECT_EQ(events, Events{});
  EXPECT_EQ(outputs.Outputs(), "earlier\n");
  EXPECT_FALSE(std::filesystem::exists(folder_ / "ended"));
  EXPECT_EQ(Joined(RunLine(outputs, "/bin/echo later")), "later\n");
}

// In a process of its own, whose memory is the run's alone.
TEST_F(ToolWaitsForNobody, AndItsTextTakesTwiceItsSizeOfMemoryAtMost) {
  if (kSanitized) GTEST_SKIP() << "a sanitizer has memory of its own";
  constexpr long kFlood = 256 * 1024;  // KiB
  Process program = StartTestProgram({"flood", std::to_string(kFlood)});
  const long most = std::stol(program.ReadLine());
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_GT(most, kFlood) << "it is kept whole";
  EXPECT_LT(most, 2 * kFlood + kFlood / 20);
}

}  // namespace
}  // namespace kelvane::testing
