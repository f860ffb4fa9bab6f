#include "media/ToolText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <semaphore>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "media/ProbeReadings.h"

namespace kelvane {
namespace {

TEST(ToolText, GivesBlocksOfAtMost256BytesAndAnEmptyOneAtTheEnd) {
  ToolText text;
  const std::string much(600, 'x');
  text.Append(much);
  EXPECT_EQ(text.NextBlock({}), much.substr(0, 256));
  EXPECT_EQ(text.UpToCursor(), much.substr(0, 256));
  text.Append("rest");
  EXPECT_EQ(text.NextBlock({}), much.substr(0, 256));
  EXPECT_EQ(text.NextBlock({}), much.substr(0, 88) + "rest");
  text.End();
  EXPECT_EQ(text.NextBlock({}), "");
  EXPECT_EQ(text.UpToCursor(), much + "rest");
}

TEST(ToolText, CutsBlocksWhereTheLengthFunctionSays) {
  const auto toTheDot = [](std::string_view text) { return text.find('.') + 1; };
  ToolText text;
  const std::string full(256, 'x');
  text.Append("one.two." + full + "three");
  EXPECT_EQ(text.NextBlock(toTheDot), "one.");
  EXPECT_EQ(text.NextBlock(toTheDot), "two.");
  EXPECT_EQ(text.NextBlock(toTheDot), full) << "no block is longer";
  text.Append(".");
  EXPECT_EQ(text.NextBlock(toTheDot), "three.");
  text.Append("four");
  text.End();
  EXPECT_EQ(text.NextBlock(toTheDot), "four") << "the last block needs no dot";
  EXPECT_EQ(text.NextBlock(toTheDot), "");
}

TEST(ToolText, GivesNoBlockIfNoneComesInTime) {
  const auto now = std::chrono::steady_clock::now;
  ToolText text;
  const auto due = now() + std::chrono::milliseconds(5);
  EXPECT_EQ(text.NextBlock({}, due), std::nullopt);
  EXPECT_GE(now(), due);
  text.Append("half");
  EXPECT_EQ(text.NextBlock(EndOfLine, now()), std::nullopt);
  text.Append(" a line\nrest");
  EXPECT_EQ(text.NextBlock(EndOfLine, now()), "half a line\n");
  text.End();
  EXPECT_EQ(text.NextBlock(EndOfLine, now()), "rest");
  EXPECT_EQ(text.NextBlock(EndOfLine, now()), "");
}

// Returns a text's blocks. `rest` comes only once `length` finds no further block's end in `begin`.
std::vector<std::string> BlocksOf(std::string_view begin, std::string_view rest,
                                  const BlockLength& length) {
  ToolText text;
  text.Append(begin);
  std::counting_semaphore<> unfinished(0);
  std::thread tool([&] {
    unfinished.acquire();
    text.Append(rest);
    text.End();
  });
  std::vector<std::string> blocks;
  do {
    const auto block = text.NextBlock([&](std::string_view beginning) {
      const std::size_t end = length(beginning);
      if (end == 0) unfinished.release();
      return end;
    });
    blocks.push_back(block.value());
  } while (!blocks.back().empty());
  unfinished.release();
  tool.join();
  return blocks;
}

TEST(ToolText, GivesTheSameSizesWhereverAWriteOfTheProbeToolEnds) {
  for (const std::vector<std::string>& blocks :
       {std::vector<std::string>{"width=640\nheight=360\n", "width=320\nheight=240\n", ""},
        {"width=1280\nheight=720\n", "width=N/A\nheight=N/A\n", ""},
        {"[x] Bad frame.\n", "width=1920\r\nheight=1080\r\n", ""}}) {
    std::string printed;
    for (const std::string& block : blocks) printed += block;
    for (std::size_t first = 0; first <= printed.size(); ++first) {
      const std::string begin = printed.substr(0, first);
      EXPECT_EQ(BlocksOf(begin, printed.substr(first), EndOfSize), blocks) << begin;
    }
  }
}

TEST(ToolText, DropsTextThatFindsNoMemoryAndKeepsLaterText) {
  ToolText text;
  text.Append("before ");
  constexpr std::size_t kTooMuch = std::string().max_size();
  text.Append({"", kTooMuch});
  text.Append("after");
  text.End();
  EXPECT_EQ(text.NextBlock({}), "before after");
  EXPECT_EQ(text.NextBlock({}), "");
}

}  // namespace
}  // namespace kelvane
