#include "media/CommandLines.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace kelvane {
namespace {

using Arguments = std::vector<std::string>;

void ExpectArguments(const std::vector<std::pair<std::string, Arguments>>& cases) {
  for (const auto& [line, arguments] : cases) EXPECT_EQ(SplitCommandLine(line), arguments) << line;
}

TEST(SplitCommandLine, CutsAtBlanksAndTabs) {
  ExpectArguments({
      {"/t/ffprobe", {"/t/ffprobe"}},
      {"/t/ffprobe -v error", {"/t/ffprobe", "-v", "error"}},
      {"a\tb c\t d", {"a", "b", "c", "d"}},
      {"a    b", {"a", "b"}},
      {"  a b  ", {"a", "b"}},
      {"\ta\t", {"a"}},
      {"", {}},
      {" ", {}},
      {" \t  \t", {}},
  });
}

TEST(SplitCommandLine, TakesWhatIsInDoubleQuotesAsOneArgument) {
  ExpectArguments({
      {R"(a "b c" d)", {"a", "b c", "d"}},
      {R"("a b")", {"a b"}},
      {R"(a"b c"d)", {"ab cd"}},
      {"a \"b\tc\"", {"a", "b\tc"}},
      {R"("a"b"c")", {"abc"}},
      {R"(a "" b)", {"a", "", "b"}},
      {R"("")", {""}},
      {R"(a """" b)", {"a", "", "b"}},
      {R"(a " " b)", {"a", " ", "b"}},
      {R"(a "b c d)", {"a", "b c d"}},
      {R"(a ")", {"a", ""}},
  });
}

TEST(SplitCommandLine, GivesNoOtherCharacterAMeaning) {
  ExpectArguments({
      {R"(a \"b c\")", {"a", R"(\b c\)"}},
      {"a 'b c'", {"a", "'b", "c'"}},
      {"a $HOME * ? ; | & > < ` # ~ b",
       {"a", "$HOME", "*", "?", ";", "|", "&", ">", "<", "`", "#", "~", "b"}},
      {"a b\nc\rd", {"a", "b\nc\rd"}},
      {"a\u00A0b \xFF\xFE", {"a\u00A0b", "\xFF\xFE"}},
  });
}

TEST(CropFilterText, IsWidthHeightLeftAndTopUnchanged) {
  EXPECT_EQ(CropFilterText(1920, 1080, 100, 50), "1920:1080:100:50");
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(CropFilterText(kLeast, kMost, kLeast, kMost),
            "-2147483648:2147483647:-2147483648:2147483647");
}

TEST(CommandLines, AreTheseForTheProbesAPreviewACropAndAJoin) {
  EXPECT_EQ(SizeProbeCommandLine("/opt/kelvane", "/clips/a.mp4"),
            "/opt/kelvane/ffprobe -v error -show_entries stream=width,height "
            "-of default=noprint_wrappers=1 /clips/a.mp4");
  EXPECT_EQ(DurationProbeCommandLine("/opt/kelvane", "/clips/a.mp4"),
            "/opt/kelvane/ffprobe -hide_banner -stats -i /clips/a.mp4");
  EXPECT_EQ(PreviewCommandLine("/tools", "/clips/1.mp4", "640:360:100:50"),
            "/tools/ffplay -i /clips/1.mp4 -vf crop=640:360:100:50");
  EXPECT_EQ(CropCommandLine("/tools", "/clips/1.mp4", "640:360:100:50", "/clips/out.mp4"),
            "/tools/ffmpeg -i /clips/1.mp4 -vf crop=640:360:100:50 /clips/out.mp4")
      << "with -y the tool would overwrite a file";
  EXPECT_EQ(JoinCommandLine("/tools", "/tools/files.txt", "/out/all.mp4"),
            "/tools/ffmpeg -f concat -safe 0 -i /tools/files.txt -c copy -y /out/all.mp4");
}

TEST(CommandLines, KeepTheBlanksAroundAPathThatIsEmpty) {
  EXPECT_EQ(DurationProbeCommandLine("/t", ""), "/t/ffprobe -hide_banner -stats -i ");
  EXPECT_EQ(PreviewCommandLine("/t", "   ", "0:0:0:0"), "/t/ffplay -i  -vf crop=0:0:0:0");
  EXPECT_EQ(JoinCommandLine("/t", "/t/files.txt", ""),
            "/t/ffmpeg -f concat -safe 0 -i /t/files.txt -c copy -y ");
}

TEST(CommandLines, DropTheBlanksAroundTheVideoAndNoOtherWhiteSpace) {
  EXPECT_EQ(PreviewCommandLine("/t", "  /a.mp4  ", "1:2:3:4"),
            "/t/ffplay -i /a.mp4 -vf crop=1:2:3:4");
  EXPECT_EQ(CropCommandLine("/t", "  /a.mp4  ", "1:2:3:4", "/o"),
            "/t/ffmpeg -i /a.mp4 -vf crop=1:2:3:4 /o");
  EXPECT_EQ(CropCommandLine("/t", "\t/a.mp4\n", "1:2:3:4", "/o"),
            "/t/ffmpeg -i \t/a.mp4\n -vf crop=1:2:3:4 /o");
}

TEST(CommandLines, AreCutAtABlankInTheOutputPathOfACrop) {
  const std::string line = CropCommandLine("/t", "/a.mp4", "1:2:3:4", " /my clips/out put.mp4 ");
  EXPECT_EQ(line, "/t/ffmpeg -i /a.mp4 -vf crop=1:2:3:4  /my clips/out put.mp4 ");
  EXPECT_EQ(SplitCommandLine(line), (Arguments{"/t/ffmpeg", "-i", "/a.mp4", "-vf", "crop=1:2:3:4",
                                               "/my", "clips/out", "put.mp4"}));
}

TEST(CommandLines, QuoteThePathOfATransportStreamAndNoOther) {
  const std::string line =
      TransportStreamCommandLine("/tools", "/my clips/b.mp4", " /my clips/intermediate02.ts ");
  EXPECT_EQ(line,
            "/tools/ffmpeg -i /my clips/b.mp4 -c copy -bsf:v h264_mp4toannexb -f mpegts -y "
            "\"/my clips/intermediate02.ts\"");
  EXPECT_EQ(SplitCommandLine(line).back(), "/my clips/intermediate02.ts");
}

}  // namespace
}  // namespace kelvane
