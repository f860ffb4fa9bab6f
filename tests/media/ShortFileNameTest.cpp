#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "TestTools.h"
#include "media/Module1.h"

namespace kelvane::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestShortPath = 254;

class ShortFileName : public ::testing::Test {
 protected:
  // Returns the short path. A message fails the test.
  std::string Short(const std::string& path) const { return ShortIn(links_.path(), path); }

  static std::string ShortIn(const std::string& linksParent, const std::string& path) {
    const ShowError fail = [](const std::string& text, const std::string& title) {
      ADD_FAILURE() << title << ": " << text;
    };
    return GetShortFileName(path, fail, linksParent);
  }

  // Expects `path` to have the short path LINKS/kelvane-USER-xxxxxx/`name`, a link to `path`.
  void ExpectLink(const std::string& path, const std::string& name) const {
    const fs::path shortPath = Short(path);
    SCOPED_TRACE(shortPath);
    EXPECT_EQ(shortPath.filename(), name);
    const std::string folder = shortPath.parent_path().filename();
    const std::string folderStart = "kelvane-" + std::to_string(::geteuid()) + "-";
    EXPECT_TRUE(folder.starts_with(folderStart));
    EXPECT_EQ(folder.size(), folderStart.size() + 6);
    EXPECT_EQ(shortPath.parent_path().parent_path(), links_.path());
    std::error_code error;
    EXPECT_EQ(fs::read_symlink(shortPath, error), path);
    EXPECT_TRUE(fs::equivalent(shortPath, path, error));
  }

  TemporaryFolder files_;
  TemporaryFolder links_;
};

TEST_F(ShortFileName, IsThePathItselfIfThatIsSafeOnACommandLine) {
  for (const char* name :
       {"a.mp4", "clip", "-clip.mp4", ".hidden", "a-b_c+d=e,f@g~1.mp4", "a'b.mp4", "a\\b.mp4",
        "$HOME.mp4", "*.mp4", "a;b|c&d.mp4", "(1)[2]{3}.mp4", "#!.mp4", "a:b.mp4",
        // Valid UTF-8 of two to four bytes.
        "M\u00E4rz.mp4", "\u65E5\u672C.mp4", "\U0001F3AC.mp4", "\u0416.mp4", "\uFFFD.mp4",
        "\uD7FF\uE000.mp4", "\U0010FFFD.mp4"}) {
    const std::string path = files_.MakeFile(name);
    EXPECT_EQ(ShortIn(links_ / "missing", path), path) << "a link was tried";
  }
}

TEST_F(ShortFileName, IsALinkWithAnUnderscoreForEachCharacterThatIsNotSafeOnACommandLine) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"My holiday.mp4", "My_holiday.mp4"},
      {" a.mp4", "_a.mp4"},
      {"a\tb\nc\rd\r\ne.mp4", "a_b_c_d__e.mp4"},
      {"\"q r\".mp4", "_q_r_.mp4"},
      {"f%03d.mp4", "f_03d.mp4"},
      {"100%.mp4", "100_.mp4"},
      {"g\x01h\x1Bi\x7Fj.mp4", "g_h_i_j.mp4"},
      // Everything else stays.
      {"- M\u00E4rz '99' \\ [1]: \u65E5\u672C & \U0001F3AC.mp4",
       "-_M\u00E4rz_'99'_\\_[1]:_\u65E5\u672C_&_\U0001F3AC.mp4"},
      {". x.mp4", "._x.mp4"},
      // Invalid UTF-8: stray bytes and truncated sequences.
      {"k\xFF.mp4", "k_.mp4"},
      {"M\xE4rz.mp4", "M_rz.mp4"},
      {"l\x80.mp4", "l_.mp4"},
      {"m\xC3.mp4", "m_.mp4"},
      {"n\xE6\x97.mp4", "n__.mp4"},
      {"mp4.\xE6\x97", "mp4.__"},
      // Invalid UTF-8: overlong forms, a surrogate, and beyond U+10FFFF.
      {"o\xC0\xAF.mp4", "o__.mp4"},
      {"p\xE0\x80\xAF.mp4", "p___.mp4"},
      {"q\xF0\x80\x80\xAF.mp4", "q____.mp4"},
      {"r\xED\xA0\x80.mp4", "r___.mp4"},
      {"s\xF4\x90\x80\x80.mp4", "s____.mp4"},
      {"t\xF5\x80\x80\x80.mp4", "t____.mp4"}};
  for (const auto& [name, link] : cases) ExpectLink(files_.MakeFile(name), link);
  // Only the folder's name isn't safe.
  fs::create_directory(files_ / "my clips");
  ExpectLink(files_.MakeFile("my clips/a.mp4"), "a.mp4");
  ExpectLink(files_.MakeFile("my clips/..."), ".._");
  ExpectLink(files_ / "my clips/..", "._");
  ExpectLink(files_ / "my clips/", "my_clips");
}

TEST_F(ShortFileName, IsALinkIfThePathIsLongerThan254Bytes) {
  const std::size_t left = kLongestShortPath - files_.path().size() - 1;
  const std::string longest = files_.MakeFile(std::string(left, 'n'));
  ASSERT_EQ(longest.size(), kLongestShortPath);
  EXPECT_EQ(Short(longest), longest);
  ExpectLink(files_.MakeFile(std::string(left + 1, 'n')), std::string(40, 'n'));
  ExpectLink(files_.MakeFile(std::string(251, 'm') + ".mp4"), std::string(36, 'm') + ".mp4");
  std::string deep;
  for (int depth = 0; depth < 40; ++depth) deep += "a-folder-on-the-way-down/";
  fs::create_directories(files_ / deep);
  ExpectLink(files_.MakeFile(deep + "a.mp4"), "a.mp4");
}

TEST_F(ShortFileName, OfALinkHasAtMost40WholeCharactersIncludingItsNumberAndExtension) {
  std::string filmClaps;
  for (int count = 0; count < 39; ++count) filmClaps += "\U0001F3AC";
  ExpectLink(files_.MakeFile(filmClaps + " "), filmClaps + "_");
  ExpectLink(files_.MakeFile(filmClaps + " b"), filmClaps.substr(0, 4 * 38UL) + "_2");
  ExpectLink(files_.MakeFile(filmClaps + " .matroska"),
             filmClaps.substr(0, 4 * 31UL) + ".matroska");
  ExpectLink(files_.MakeFile(filmClaps + "c .matroska"),
             filmClaps.substr(0, 4 * 29UL) + "_2.matroska");
}

TEST_F(ShortFileName, IsEmptyForAFileThatIsNotThere) {
  const std::string file = files_.MakeFile("file");
  fs::create_symlink(files_ / "missing", files_ / "dangling");
  fs::create_symlink(files_ / "missing", files_ / "dangling link");
  fs::create_symlink(files_ / "circle", files_ / "circle");
  for (const std::string& path :
       {std::string(), files_ / "missing.mp4", files_ / "missing clip.mp4",
        files_ / "missing folder/a.mp4", file + "/below.mp4", file + "/", std::string(" "),
        files_ / std::string(256, 'n'), "/" + std::string(5000, 'n'), std::string("/\0tmp", 5),
        files_ / "dangling", files_ / "dangling link", files_ / "circle"}) {
    EXPECT_EQ(Short(path), "") << path;
    EXPECT_EQ(ShortIn(links_ / "missing", path), "") << path;
  }
  EXPECT_EQ(links_.Names(), std::vector<std::string>());
}

TEST_F(ShortFileName, TreatsSymbolicLinksAndFoldersLikeFiles) {
  const std::string target = files_.MakeFile("my clip.mp4");
  fs::create_symlink(target, files_ / "link.mp4");
  fs::create_symlink(target, files_ / "my link.mp4");
  EXPECT_EQ(Short(files_ / "link.mp4"), files_ / "link.mp4");
  ExpectLink(files_ / "my link.mp4", "my_link.mp4");
  fs::create_directory(files_ / "my clips");
  ExpectLink(files_ / "my clips", "my_clips");
  for (const std::string& folder : {std::string("/"), files_.path(), files_.path() + "/"}) {
    EXPECT_EQ(Short(folder), folder);
  }
}

TEST_F(ShortFileName, IsAbsoluteForARelativePath) {
  const CurrentFolder current(files_.path());
  files_.MakeFile("a.mp4");
  files_.MakeFile("-i");
  files_.MakeFile("my clip.mp4");
  EXPECT_EQ(Short("a.mp4"), files_ / "a.mp4");
  EXPECT_EQ(Short("-i"), files_ / "-i");
  EXPECT_EQ(Short("./a.mp4"), files_ / "./a.mp4");
  EXPECT_EQ(Short("missing.mp4"), "");
  const std::string shortPath = Short("my clip.mp4");
  EXPECT_EQ(fs::read_symlink(shortPath), files_ / "my clip.mp4");
  EXPECT_EQ(Short(files_ / "my clip.mp4"), shortPath);
}

TEST_F(ShortFileName, KeepsAnExtensionOfUpToTenLettersAndDigitsWhereTheNameIsCut) {
  const std::string longName = std::string(60, 'n') + ' ';
  const std::vector<std::pair<std::string, std::string>> cases = {
      {".MKV", ".MKV"},
      {".tar.gz", ".gz"},
      {".m2ts", ".m2ts"},
      {".abcdefghij", ".abcdefghij"},
      {"", ""},
      {".", ""},
      {".m p4", ""},
      {".m-4", ""},
      {".\u00E4\u00F6", ""},
      {".mp4\"", ""},
      {".%d", ""},
      {".abcdefghijk", ""},
  };
  for (const auto& [ending, extension] : cases) {
    const TemporaryFolder links;
    const fs::path link = ShortIn(links.path(), files_.MakeFile(longName + ending));
    EXPECT_EQ(link.filename(), std::string(40 - extension.size(), 'n') + extension);
  }
  ExpectLink(files_.MakeFile(".hidden clip"), ".hidden_clip");
  fs::create_directory(files_ / "my clips.old");
  ExpectLink(files_.MakeFile("my clips.old/clip"), "clip");
}

TEST_F(ShortFileName, OfALinkAvoidsTheNamesOfOtherLinksAndOfTheFoldersOwnFiles) {
  fs::create_directory(files_ / "my clips");
  ExpectLink(files_.MakeFile("a b.mp4"), "a_b.mp4");
  ExpectLink(files_.MakeFile("a\tb.mp4"), "a_b_2.mp4");
  ExpectLink(files_.MakeFile("my clips/a_b_2.mp4"), "a_b_2_2.mp4");
  ExpectLink(files_.MakeFile("my clips/a b.mp4"), "a_b_3.mp4");
  ExpectLink(files_.MakeFile("a\tb.mp4"), "a_b_2.mp4");

  ExpectLink(files_.MakeFile("my clips/files.txt", "a video"), "files_2.txt");
  ExpectLink(files_.MakeFile("my clips/work-shake.trf", "a video"), "work_shake.trf");
  std::ofstream(PrivateListFile(links_.path())) << "list";
  std::ofstream(PrivateWorkFile("shake.trf", {links_.path()})) << "motions";
  EXPECT_EQ(ReadFile(files_ / "my clips/files.txt"), "a video");
  EXPECT_EQ(ReadFile(files_ / "my clips/work-shake.trf"), "a video");
}

TEST_F(ShortFileName, IsTheSameEachTimeAndDiffersBetweenFiles) {
  const std::string first = files_.MakeFile("my first.mp4");
  const std::string second = files_.MakeFile("my second.mp4");
  const std::string firstShort = Short(first);
  const std::string secondShort = Short(second);
  EXPECT_NE(firstShort, secondShort);
  EXPECT_EQ(fs::path(firstShort).parent_path(), fs::path(secondShort).parent_path());
  EXPECT_EQ(Short(first), firstShort);
  EXPECT_EQ(Short(second), secondShort);

  files_.MakeFile("my first.mp4", "replaced");
  EXPECT_EQ(Short(first), firstShort);
  EXPECT_EQ(ReadFile(firstShort), "replaced");
}

TEST_F(ShortFileName, IsEmptyAndShowsTheReasonIfNoLinkCanBeMade) {
  const std::string path = files_.MakeFile("my clip.mp4");
  const std::string taken = Short(path);
  fs::remove(taken);
  links_.MakeFile(fs::path(taken).lexically_relative(links_.path()), "foreign");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {links_ / "missing", "2\nThe error description:\tNo such file or directory"},
      {links_.MakeFile("a-file"), "20\nThe error description:\tNot a directory"},
      {links_.path(), "17\nThe error description:\tFile exists"},
  };
  for (const auto& [place, reason] : cases) {
    Events shown;
    const ShowError show = [&shown](const std::string& message, const std::string& title) {
      shown = {title, message};
    };
    EXPECT_EQ(GetShortFileName(path, show, place), "");
    EXPECT_EQ(shown, (Events{"Error",
                             "An error occurred while obtaining the file path.\n\n"
                             "The error number was:\t" +
                                 reason}));
    EXPECT_EQ(GetShortFileName(path, {}, place), "") << "without showError";
  }
  EXPECT_EQ(ReadFile(taken), "foreign");
  fs::create_directory(links_ / "missing");
  EXPECT_EQ(fs::read_symlink(ShortIn(links_ / "missing", path)), path)
      << "after the folder was made";
}

}  // namespace
}  // namespace kelvane::testing
