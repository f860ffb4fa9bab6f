// Blocks of a runner that waits for their rest.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"

namespace kelvane {
namespace {

using namespace std::chrono_literals;
using testing::Gate;
using testing::RunLine;
using testing::TemporaryFolder;

using Events = std::vector<std::string>;

class GatheredBlocks : public ::testing::Test {
 protected:
  // What the shell commands yield, gathered for so long. The gate is opened at each block.
  Events Run(const std::string& commands, std::chrono::milliseconds quiet) const {
    DOSOutputs outputs;
    outputs.GatherBlocks(quiet);
    Events events;
    outputs.ReceiveOutputs = [&](const std::string& block) {
      events.push_back(block);
      gate_.Open();
    };
    outputs.ExecuteCommand(folder_.Script("tool", commands));
    return events;
  }
  std::string Wait() const { return "read go < '" + gate_.path() + "'\n"; }

  // Longer than any test's patience.
  static constexpr std::chrono::milliseconds kForever = 1h;

 private:
  TemporaryFolder folder_;
  Gate gate_{folder_ / "gate"};
};

TEST_F(GatheredBlocks, WordsThatAreWrittenOneByOneComeTogether) {
  EXPECT_EQ(Run("printf '  Duration: '; printf '00:01:23.00'; printf ', start: '; echo 0", 500ms),
            (Events{"  Duration: 00:01:23.00, start: 0\n", ""}));
}

TEST_F(GatheredBlocks, TheWaitBeginsAnewWithEachWord) {
  // Each pause of the tool's is shorter than the wait, and all of them together are longer.
  EXPECT_EQ(
      Run("printf one; sleep 0.4; printf two; sleep 0.4; printf three; sleep 0.4; printf 4", 1s),
      (Events{"onetwothree4", ""}));
}

TEST_F(GatheredBlocks, AreReadWithoutAWaitWhenTheyAreFull) {
  const std::string full(256, 'x');
  EXPECT_EQ(Run("printf '" + full + "'\n" + Wait() + "printf '" + full + "'", kForever),
            (Events{full, full, ""}));
}

TEST_F(GatheredBlocks, AreReadWithoutAWaitAtTheEndOfTheStream) {
  EXPECT_EQ(Run("printf 'one '; printf two", kForever), (Events{"one two", ""}));
  EXPECT_EQ(Run("true", kForever), Events{""});
}

TEST_F(GatheredBlocks, AreCutAt256BytesAsEver) {
  const std::string text = std::string(250, '.') + "Duration: 00:01";
  EXPECT_EQ(Run("printf '" + text + "'", 100ms),
            (Events{text.substr(0, 256), text.substr(256), ""}));
}

TEST_F(GatheredBlocks, ComeWhileTheToolStillRuns) {
  EXPECT_EQ(Run("printf one\n" + Wait() + "printf two\n" + Wait(), 1ms),
            (Events{"one", "two", ""}));
}

}  // namespace
}  // namespace kelvane
