// The text of a tool between the thread that reads it and the one that takes it.
#include "media/ToolText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace kelvane {
namespace {

TEST(ToolText, IsTakenInBlocksOf256BytesAtMostAndThenEmpty) {
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

TEST(ToolText, IsCutWhereTheBlocksLengthIsTold) {
  const auto toTheDot = [](std::string_view text) { return text.find('.') + 1; };
  ToolText text;
  const std::string full(256, 'x');
  text.Append("one.two." + full + "three");
  EXPECT_EQ(text.NextBlock(toTheDot), "one.");
  EXPECT_EQ(text.NextBlock(toTheDot), "two.");
  EXPECT_EQ(text.NextBlock(toTheDot), full) << "256 bytes are the most";
  text.Append(".");
  EXPECT_EQ(text.NextBlock(toTheDot), "three.");
  text.Append("four");
  text.End();
  EXPECT_EQ(text.NextBlock(toTheDot), "four") << "the end is one as well";
  EXPECT_EQ(text.NextBlock(toTheDot), "");
}

TEST(ToolText, DropsWhatThereIsNoMemoryForAndTakesWhatComesLater) {
  ToolText text;
  text.Append("before ");
  // No text is as long as this.
  constexpr std::size_t kTooMuch = std::string().max_size();
  text.Append({"", kTooMuch});
  text.Append("after");
  text.End();
  EXPECT_EQ(text.NextBlock({}), "before after");
  EXPECT_EQ(text.NextBlock({}), "");
}

}  // namespace
}  // namespace kelvane
