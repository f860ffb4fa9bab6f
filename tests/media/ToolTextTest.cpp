// The text of a tool between the thread that reads it and the one that takes it.
#include "media/ToolText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

namespace kelvane {
namespace {

using namespace std::chrono_literals;

TEST(ToolText, IsTakenInBlocksOf256BytesAtMostAndThenEmpty) {
  ToolText text;
  const std::string much(600, 'x');
  text.Append(much);
  EXPECT_EQ(text.NextBlock(0ms), much.substr(0, 256));
  EXPECT_EQ(text.UpToCursor(), much.substr(0, 256));
  text.Append("rest");
  EXPECT_EQ(text.NextBlock(0ms), much.substr(0, 256));
  EXPECT_EQ(text.NextBlock(0ms), much.substr(0, 88) + "rest");
  text.End();
  EXPECT_EQ(text.NextBlock(0ms), "");
  EXPECT_EQ(text.UpToCursor(), much + "rest");
}

TEST(ToolText, DropsWhatThereIsNoMemoryForAndTakesWhatComesLater) {
  ToolText text;
  text.Append("before ");
  // No text is as long as this.
  constexpr std::size_t kTooMuch = std::string().max_size();
  text.Append({"", kTooMuch});
  text.Append("after");
  text.End();
  EXPECT_EQ(text.NextBlock(0ms), "before after");
  EXPECT_EQ(text.NextBlock(0ms), "");
}

}  // namespace
}  // namespace kelvane
