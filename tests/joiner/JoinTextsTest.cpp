#include "joiner/JoinTexts.h"

#include <gtest/gtest.h>

#include "support/Events.h"

namespace kelvane::testing {
namespace {

TEST(FolderOf, IsThePathUpToAndWithItsLastSeparator) {
  struct Case {
    const char* path;
    const char* folder;
  };
  for (const auto& [path, folder] :
       {Case{"/clips/a.mp4", "/clips/"}, Case{"/a.mp4", "/"}, Case{"/clips/more/", "/clips/more/"},
        Case{" Deleted Section ", ""}, Case{"a.mp4", ""}, Case{"", ""}}) {
    EXPECT_EQ(FolderOf(path), QString(folder)) << path;
  }
}

TEST(IntermediateName, HasTwoDigitsAtLeast) {
  EXPECT_EQ(IntermediateName(0), QString("intermediate00.ts"));
  EXPECT_EQ(IntermediateName(7), QString("intermediate07.ts"));
  EXPECT_EQ(IntermediateName(123), QString("intermediate123.ts"));
}

TEST(ListFileLine, QuotesTheTrimmedPathAndEscapesNothing) {
  EXPECT_EQ(ListFileLine("/clips/a.mp4"), QString("file '/clips/a.mp4'\r\n"));
  EXPECT_EQ(ListFileLine(" Deleted Section "), QString("file 'Deleted Section'\r\n"));
  EXPECT_EQ(ListFileLine("/it's \\ 100%.mp4"), QString("file '/it's \\ 100%.mp4'\r\n"));
}

TEST(SavedListLine, IsTheItemAsItStands) {
  EXPECT_EQ(SavedListLine("/clips/a b.mp4"), QString("/clips/a b.mp4\r\n"));
  EXPECT_EQ(SavedListLine(" Deleted Section "), QString(" Deleted Section \r\n"));
}

TEST(ConcatListText, CountsFromNoughtAndNamesNoFolder) {
  EXPECT_EQ(ConcatListText(0), QString("concat:"));
  EXPECT_EQ(ConcatListText(1), QString("concat:intermediate00.ts"));
  EXPECT_EQ(ConcatListText(2), QString("concat:intermediate00.ts|intermediate01.ts"));
}

}  // namespace
}  // namespace kelvane::testing
