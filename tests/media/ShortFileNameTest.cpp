// Which paths are their own short paths, and what stands in for the others.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
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
  // The short path, and a failure where a message is shown.
  std::string Short(const std::string& path) const { return ShortIn(links_.path(), path); }

  static std::string ShortIn(const std::string& linksParent, const std::string& path) {
    const ShowError fail = [](const std::string& text, const std::string& title) {
      ADD_FAILURE() << title << ": " << text;
    };
    return GetShortFileName(path, fail, linksParent);
  }

  // A link stands in for the path, under a short name with that ending, and leads to the file.
  void ExpectLink(const std::string& path, const std::string& extension) const {
    const fs::path shortPath = Short(path);
    EXPECT_EQ(shortPath.stem().string().find_first_not_of("0123456789"), std::string::npos)
        << shortPath;
    EXPECT_EQ(shortPath.extension(), extension) << shortPath;
    const std::string folder = shortPath.parent_path().filename();
    const std::string folderStart = "kelvane-" + std::to_string(::geteuid()) + "-";
    EXPECT_TRUE(folder.starts_with(folderStart)) << shortPath;
    EXPECT_EQ(folder.size(), folderStart.size() + 6) << shortPath;
    EXPECT_EQ(shortPath.parent_path().parent_path(), links_.path());
    std::error_code error;
    EXPECT_EQ(fs::read_symlink(shortPath, error), path);
    EXPECT_TRUE(fs::equivalent(shortPath, path, error)) << path;
  }

  const TemporaryFolder& files() const { return files_; }
  const TemporaryFolder& links() const { return links_; }

 private:
  TemporaryFolder files_;
  TemporaryFolder links_;
};

TEST_F(ShortFileName, OfAPathThatCanStandBareIsThePath) {
  for (const char* name :
       {"a.mp4", "clip", "-clip.mp4", ".hidden", "a-b_c+d=e,f@g~1.mp4", "a'b.mp4", "a\\b.mp4",
        "$HOME.mp4", "*.mp4", "a;b|c&d.mp4", "(1)[2]{3}.mp4", "#!.mp4", "a:b.mp4",
        // Letters of every script.
        "M\u00E4rz.mp4", "\u65E5\u672C.mp4", "\U0001F3AC.mp4", "\u0416.mp4", "\uFFFD.mp4",
        "\uD7FF\uE000.mp4", "\U0010FFFD.mp4"}) {
    const std::string path = files().File(name);
    EXPECT_EQ(Short(path), path);
  }
  EXPECT_EQ(links().Names(), Events()) << "no folder is made where none is needed";
}

TEST_F(ShortFileName, OfANameThatCannotStandBareIsALink) {
  for (const char* name : {
           "my clip.mp4", " a.mp4", "a b c d.mp4", "a\tb.mp4", "a\nb.mp4", "a\rb.mp4", "a\r\nb.mp4",
           "a\"b.mp4", "\"a b\".mp4", "a%03d.mp4", "100%.mp4", "a\x01.mp4", "a\x1B.mp4",
           "a\x7F.mp4",
           // Bytes that are no UTF-8.
           "a\xFF.mp4",              // no byte of any character
           "M\xE4rz.mp4",            // a letter of another code page
           "a\x80.mp4",              // a continuation of nothing
           "a\xC3.mp4",              // a character that isn't continued
           "a\xE6\x97.mp4",          // nor is this one to its end
           "a\xC0\xAF.mp4",          // too long a form of a character
           "a\xE0\x80\xAF.mp4",      //
           "a\xF0\x80\x80\xAF.mp4",  //
           "a\xED\xA0\x80.mp4",      // half of a pair
           "a\xF4\x90\x80\x80.mp4",  // beyond the last character
           "a\xF5\x80\x80\x80.mp4",  //
       }) {
    ExpectLink(files().File(name), ".mp4");
  }
  ExpectLink(files().File("mp4.\xE6\x97"), "");
  ExpectLink(files().File("mp4.\xC3"), "");
}

TEST_F(ShortFileName, OfABlankInAFolderOnTheWayIsALink) {
  fs::create_directory(files() / "my clips");
  ExpectLink(files().File("my clips/a.mp4"), ".mp4");
}

TEST_F(ShortFileName, OfAPathOf254BytesIsThePathAndOfALongerOneALink) {
  const std::size_t left = kLongestShortPath - files().path().size() - 1;
  const std::string longest = files().File(std::string(left, 'n'));
  ASSERT_EQ(longest.size(), kLongestShortPath);
  EXPECT_EQ(Short(longest), longest);
  ExpectLink(files().File(std::string(left + 1, 'n')), "");
  // The longest names that the system has, and a deep path of bare names.
  ExpectLink(files().File(std::string(255, 'n')), "");
  ExpectLink(files().File(std::string(251, 'n') + ".mp4"), ".mp4");
  std::string deep;
  for (int depth = 0; depth < 40; ++depth) deep += "a-folder-on-the-way-down/";
  fs::create_directories(files() / deep);
  ExpectLink(files().File(deep + "a.mp4"), ".mp4");
}

TEST_F(ShortFileName, OfAFileThatIsNotThereIsEmpty) {
  const std::string file = files().File("file");
  fs::create_symlink(files() / "missing", files() / "dangling");
  fs::create_symlink(files() / "missing", files() / "dangling link");
  fs::create_symlink(files() / "circle", files() / "circle");
  for (const std::string& path :
       {std::string(), files() / "missing.mp4", files() / "missing clip.mp4",
        files() / "missing folder/a.mp4", file + "/below.mp4", file + "/", std::string(" "),
        files() / std::string(256, 'n'), "/" + std::string(5000, 'n'), std::string("/\0tmp", 5),
        files() / "dangling", files() / "dangling link", files() / "circle"}) {
    EXPECT_EQ(Short(path), "") << path;
    EXPECT_EQ(ShortIn(links() / "missing", path), "") << path;
  }
  EXPECT_EQ(links().Names(), Events());
}

TEST_F(ShortFileName, OfALinkToAFileIsThatOfAFile) {
  const std::string target = files().File("my clip.mp4");
  fs::create_symlink(target, files() / "link.mp4");
  fs::create_symlink(target, files() / "my link.mp4");
  EXPECT_EQ(Short(files() / "link.mp4"), files() / "link.mp4");
  ExpectLink(files() / "my link.mp4", ".mp4");
}

TEST_F(ShortFileName, OfAFolderIsThatOfAFile) {
  EXPECT_EQ(Short("/"), "/");
  EXPECT_EQ(Short(files().path()), files().path());
  EXPECT_EQ(Short(files().path() + "/"), files().path() + "/");
  fs::create_directory(files() / "my clips");
  files().File("my clips/a.mp4", "in the folder");
  ExpectLink(files() / "my clips", "");
  EXPECT_EQ(ReadFile(Short(files() / "my clips") + "/a.mp4"), "in the folder");
}

TEST_F(ShortFileName, OfARelativePathIsAbsolute) {
  const CurrentFolder current(files().path());
  files().File("a.mp4");
  files().File("-i");
  files().File("my clip.mp4");
  EXPECT_EQ(Short("a.mp4"), files() / "a.mp4");
  EXPECT_EQ(Short("-i"), files() / "-i");
  EXPECT_EQ(Short("./a.mp4"), files() / "./a.mp4");
  EXPECT_EQ(Short("missing.mp4"), "");
  const std::string shortPath = Short("my clip.mp4");
  EXPECT_EQ(fs::read_symlink(shortPath), files() / "my clip.mp4");
  EXPECT_EQ(Short(files() / "my clip.mp4"), shortPath);
}

TEST_F(ShortFileName, KeepsAPlainExtensionAndNoOther) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"a b.MKV", ".MKV"},
      {"a b.tar.gz", ".gz"},
      {"a b.m2ts", ".m2ts"},
      {"a b", ""},
      {"a b.", ""},
      {".hidden clip", ""},
      {"a.m p4", ""},
      {"a b.m-4", ""},
      {"a b.\u00E4\u00F6", ""},
      {"a b.mp4\"", ""},
      {"a b.%d", ""},
      {"a b.abcdefghij", ".abcdefghij"},
      {"a b.abcdefghijk", ""},
  };
  for (const auto& [name, extension] : cases) ExpectLink(files().File(name), extension);
  fs::create_directory(files() / "my clips.old");
  ExpectLink(files().File("my clips.old/clip"), "");
}

TEST_F(ShortFileName, IsTheSameEachTimeAndAnotherForAnotherFile) {
  const std::string first = files().File("my first.mp4");
  const std::string second = files().File("my second.mp4");
  const std::string firstShort = Short(first);
  const std::string secondShort = Short(second);
  EXPECT_NE(firstShort, secondShort);
  EXPECT_EQ(fs::path(firstShort).parent_path(), fs::path(secondShort).parent_path());
  EXPECT_EQ(Short(first), firstShort);
  EXPECT_EQ(Short(second), secondShort);

  files().File("my first.mp4", "replaced");
  EXPECT_EQ(Short(first), firstShort);
  EXPECT_EQ(ReadFile(firstShort), "replaced");
}

TEST_F(ShortFileName, LeadsAToolToTheFile) {
  for (const char* name : {"clip.mp4", "-clip.mp4", "my clip.mp4", "a\tb.mp4", "a\nb.mp4",
                           "a\"b\".mp4", "a\xFF.mp4", "%d.mp4", "M\u00E4rz.mp4"}) {
    const std::string text = std::string("text of ") + name;
    EXPECT_EQ(Joined(RunLine("/bin/cat " + Short(files().File(name, text)))), text);
  }
}

TEST_F(ShortFileName, IsEmptyAndTheReasonIsShownWhereNoLinkCanBeMade) {
  const std::string path = files().File("my clip.mp4");
  const std::string taken = Short(path);
  fs::remove(taken);
  links().File(fs::path(taken).lexically_relative(links().path()), "foreign");
  struct PlaceAndReason {
    std::string place;
    std::string reason;
  };
  const std::vector<PlaceAndReason> cases = {
      {links() / "missing", "2\nThe error description:\tNo such file or directory"},
      {links().File("a-file"), "20\nThe error description:\tNot a directory"},
      {links().path(), "17\nThe error description:\tFile exists"},
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
    EXPECT_EQ(GetShortFileName(path, {}, place), "") << "without a way to show it";
  }
  EXPECT_EQ(ReadFile(taken), "foreign");
}

TEST_F(ShortFileName, OfAPathThatStandsBareNeedsNoPlaceForLinks) {
  const std::string path = files().File("a.mp4");
  EXPECT_EQ(ShortIn(links() / "missing", path), path);
}

TEST_F(ShortFileName, UsesAPlaceThatCameToBeAfterAFailure) {
  const std::string path = files().File("my clip.mp4");
  EXPECT_EQ(GetShortFileName(path, {}, links() / "later"), "");
  fs::create_directory(links() / "later");
  EXPECT_EQ(fs::read_symlink(ShortIn(links() / "later", path)), path);
}

}  // namespace
}  // namespace kelvane::testing
