#include "media/ToolText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

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
  const auto atTheLineEnd = [](std::string_view text) { return text.find('\n') + 1; };
  ToolText text;
  const auto due = now() + std::chrono::milliseconds(5);
  EXPECT_EQ(text.NextBlock({}, due), std::nullopt);
  EXPECT_GE(now(), due);
  text.Append("half");
  EXPECT_EQ(text.NextBlock(atTheLineEnd, now()), std::nullopt);
  text.Append(" a line\nrest");
  EXPECT_EQ(text.NextBlock(atTheLineEnd, now()), "half a line\n");
  text.End();
  EXPECT_EQ(text.NextBlock(atTheLineEnd, now()), "rest");
  EXPECT_EQ(text.NextBlock(atTheLineEnd, now()), "");
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
