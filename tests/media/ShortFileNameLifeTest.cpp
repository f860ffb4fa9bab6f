// The folder of the links: who may look into it, when it goes, and what a later start clears.

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/Module1.h"

namespace kelvane::testing {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

class ShortFileNameLife : public ::testing::Test {
 protected:
  std::string Short() const { return GetShortFileName(file_, {}, links_.path()); }

  // A program that has a short path of the file and then ends in that way.
  Process Program(const std::string& end) const {
    return StartTestProgram({"short-paths", links_.path(), end, file_});
  }

  // The folder that a program left behind by being killed.
  std::string FolderLeftBehind() const {
    Process program = Program("crash");
    const std::string shortPath = program.ReadLine();
    EXPECT_TRUE(WIFSIGNALED(program.Wait()));
    EXPECT_TRUE(fs::is_symlink(shortPath)) << shortPath;
    return fs::path(shortPath).parent_path();
  }

  std::string FolderName(const std::string& ending) const {
    return "kelvane-" + std::to_string(::geteuid()) + "-" + ending;
  }

  const std::string& file() const { return file_; }
  const TemporaryFolder& links() const { return links_; }

 private:
  TemporaryFolder files_;
  TemporaryFolder links_;
  std::string file_ = files_.File("my clip.mp4", "the clip");
};

mode_t ModeOf(const std::string& path) {
  constexpr mode_t kEveryBit = 07777;
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return status.st_mode & kEveryBit;
}

TEST_F(ShortFileNameLife, TheFolderIsOpenToItsUserAlone) {
  const mode_t former = ::umask(0);
  const std::string folder = fs::path(Short()).parent_path();
  EXPECT_EQ(ModeOf(folder), static_cast<mode_t>(S_IRWXU));
  fs::remove_all(folder);
  EXPECT_EQ(ModeOf(fs::path(Short()).parent_path()), static_cast<mode_t>(S_IRWXU));
  ::umask(former);
}

TEST_F(ShortFileNameLife, KeepsItsNameWhereTheLinkOrTheFolderVanishedOrOthersAreCleared) {
  const std::string shortPath = Short();
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  fs::remove(shortPath);
  EXPECT_EQ(Short(), shortPath);
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  fs::remove_all(fs::path(shortPath).parent_path());
  EXPECT_EQ(Short(), shortPath);
  // The new folder is as safe from clearing as the first one was.
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(ReadFile(shortPath), "the clip");
}

TEST_F(ShortFileNameLife, AFolderWhoseNameIsTakenMeanwhileGivesWayToAnother) {
  const std::string former = Short();
  const fs::path folder = fs::path(former).parent_path();
  fs::remove_all(folder);
  fs::create_directory(folder);
  const std::string shortPath = Short();
  EXPECT_NE(fs::path(shortPath).parent_path(), folder);
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(ShortFileNameLife, TheFolderGoesWhenTheProgramEnds) {
  for (const char* end : {"return", "exit"}) {
    Process program = Program(end);
    EXPECT_TRUE(program.ReadLine().starts_with(links().path() + "/kelvane-"));
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_EQ(links().Names(), Names()) << end;
    EXPECT_EQ(ReadFile(file()), "the clip");
  }
}

TEST_F(ShortFileNameLife, AtTheProgramsEndWhatItDidNotMakeStays) {
  Process program = Program("wait");
  const fs::path shortPath = program.ReadLine();
  const fs::path folder = shortPath.parent_path();
  links().File(folder.filename().string() + "/foreign", "foreign");
  fs::create_symlink(file(), folder / "foreign.mp4");
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(ReadFile(folder / "foreign"), "foreign");
  EXPECT_EQ(ReadFile(folder / "foreign.mp4"), "the clip");
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(shortPath)));
}

TEST_F(ShortFileNameLife, AtTheProgramsEndAFolderThatTookTheNameOfItsOwnStays) {
  Process program = Program("wait");
  const fs::path folder = fs::path(program.ReadLine()).parent_path();
  fs::remove_all(folder);
  fs::create_directory(folder);
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(links().Names(), Names{folder.filename()});
}

TEST_F(ShortFileNameLife, TheEndOfAForkedCopyLeavesTheProgramsFolder) {
  Process program = Program("fork");
  const std::string shortPath = program.ReadLine();
  EXPECT_EQ(program.ReadLine(), "copy ended");
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(links().Names(), Names());
}

TEST_F(ShortFileNameLife, WhatACrashLeftBehindIsCleared) {
  FolderLeftBehind();
  FolderLeftBehind();
  fs::create_directory(links() / FolderName("abcDE7"));
  ASSERT_EQ(links().Names().size(), 3U);
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(links().Names(), Names());
  EXPECT_EQ(ReadFile(file()), "the clip");
}

TEST_F(ShortFileNameLife, TheFolderOfAProgramThatStillRunsIsKept) {
  Process program = Program("wait");
  const std::string shortPath = program.ReadLine();
  FolderLeftBehind();
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(links().Names(), Names{fs::path(shortPath).parent_path().filename()});
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(links().Names(), Names());
}

TEST_F(ShortFileNameLife, AProgramStartedBesideDoesNotHoldTheFolder) {
  Process program = Program("crash beside another program");
  EXPECT_TRUE(fs::is_symlink(program.ReadLine()));
  const pid_t other = std::stoi(program.ReadLine());
  EXPECT_TRUE(WIFSIGNALED(program.Wait()));
  EXPECT_EQ(::kill(other, 0), 0);
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(links().Names(), Names());
  ::kill(other, SIGKILL);
}

TEST_F(ShortFileNameLife, AForeignThingInAFolderLeftBehindIsKeptAndSoIsTheFolder) {
  const std::string folder = FolderLeftBehind();
  const std::string name = fs::path(folder).filename();
  links().File(name + "/foreign", "foreign");
  fs::create_directory(folder + "/inner");
  fs::create_symlink(file(), folder + "/inner/link");
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(ReadFile(folder + "/foreign"), "foreign");
  EXPECT_EQ(ReadFile(folder + "/inner/link"), "the clip");
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(folder + "/1.mp4")));
}

TEST_F(ShortFileNameLife, WhatIsNoFolderIsKeptUnderAFoldersName) {
  const TemporaryFolder elsewhere;
  fs::create_symlink(file(), elsewhere / "link");
  fs::create_symlink(elsewhere.path(), links() / FolderName("aLink0"));
  links().File(FolderName("aFile0"));
  ASSERT_EQ(::mkfifo((links() / FolderName("aPipe0")).c_str(), S_IRWXU), 0);
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(links().Names(),
            (Names{FolderName("aFile0"), FolderName("aLink0"), FolderName("aPipe0")}));
  EXPECT_EQ(elsewhere.Names(), Names{"link"}) << "the link isn't followed";
}

TEST_F(ShortFileNameLife, ThingsOfOtherNamesAreKept) {
  const Names names = {
      "kelvane",
      "kelvane-" + std::to_string(::geteuid() + 1) + "-abcdef",
      FolderName("abcde"),
      FolderName("abcdefg"),
      "x" + FolderName("abcdef"),
  };
  for (const std::string& name : names) {
    fs::create_directory(links() / name);
    fs::create_symlink(file(), links() / name + "/1.mp4");
  }
  ClearShortPathsLeftBehind(links().path());
  for (const std::string& name : names) EXPECT_EQ(ReadFile(links() / name + "/1.mp4"), "the clip");
}

TEST_F(ShortFileNameLife, AFolderLeftBehindIsClearedOnlyWhereItIsTheUsersOwn) {
  const std::string folder = links() / FolderName("abcdef");
  fs::create_directory(folder);
  // Only the system's administrator can give a folder away.
  const bool givenAway = ::chown(folder.c_str(), ::geteuid() + 1, ::getegid()) == 0;
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(fs::exists(folder), givenAway);
}

TEST_F(ShortFileNameLife, ClearingAPlaceThatIsNotThereDoesNothing) {
  ClearShortPathsLeftBehind(links() / "missing");
  ClearShortPathsLeftBehind(links().File("a-file"));
  EXPECT_EQ(links().Names(), Names{"a-file"});
}

TEST_F(ShortFileNameLife, ClearingLosesNoDescriptor) {
  FolderLeftBehind();
  links().File(FolderName("aFile0"));
  Short();
  const std::set<int> before = OpenDescriptors();
  for (int time = 0; time < 10; ++time) ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(ShortFileNameLife, AFolderJustMadeIsSafeFromClearingAtTheSameTime) {
  const pid_t clearing = ::fork();
  ASSERT_GE(clearing, 0);
  if (clearing == 0) {
    // It goes on for ever, but not longer than the test, however that ends.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) ClearShortPathsLeftBehind(links().path());
  }
  for (int start = 0; start < 100; ++start) {
    Process program = Program("wait");
    const std::string shortPath = program.ReadLine();
    EXPECT_EQ(ReadFile(shortPath), "the clip") << shortPath;
    program.CloseInput();
    EXPECT_EQ(program.Wait(), 0);
  }
  ::kill(clearing, SIGKILL);
  ::waitpid(clearing, nullptr, 0);
  ClearShortPathsLeftBehind(links().path());
  EXPECT_EQ(links().Names(), Names());
}

TEST(PrivateListFile, StandsBareInAFolderOfItsUserAloneAndGoesWhenTheProgramEnds) {
  const TemporaryFolder links;
  Process program = StartTestProgram({"list-files", links.path(), "wait"});
  const fs::path list = program.ReadLine();
  EXPECT_EQ(list.filename(), "files.txt");
  EXPECT_EQ(list.string().find(' '), std::string::npos);
  EXPECT_EQ(ReadFile(list), "the list");
  EXPECT_EQ(ModeOf(list.parent_path()), static_cast<mode_t>(S_IRWXU));
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(links.Names(), Names());
}

TEST(PrivateListFile, LeftBehindByACrashIsClearedByALaterStart) {
  const TemporaryFolder links;
  Process program = StartTestProgram({"list-files", links.path(), "crash"});
  const std::string list = program.ReadLine();
  program.Wait();
  EXPECT_EQ(ReadFile(list), "the list");
  ClearShortPathsLeftBehind(links.path());
  EXPECT_EQ(links.Names(), Names());
}

TEST(PrivateListFile, IsTheSameForEveryJoinAndNoneWhereItsFolderCannotBeMade) {
  const TemporaryFolder links;
  const std::string list = PrivateListFile(links.path());
  EXPECT_EQ(PrivateListFile(links.path()), list);
  EXPECT_EQ(PrivateListFile("/missing folder"), "");
}

TEST(ToolsFolder, IsTheProgramsFolderWhereThatCanStandBareOrHasNoShortPath) {
  const TemporaryFolder folder;
  for (const std::string& path :
       {folder.path(), std::string("/missing folder/of nothing"), std::string()}) {
    EXPECT_EQ(ToolsFolder(path), path);
  }
}

TEST(ToolsFolder, StandsBareForAFolderWithABlankAndGoesWhenTheProgramEnds) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "my programs");
  folder.Script("my programs/tool", "echo ran");
  Process program = StartTestProgram({"tools-folders", folder / "my programs"});
  const std::string toolsFolder = program.ReadLine();
  EXPECT_EQ(toolsFolder.find(' '), std::string::npos);
  EXPECT_EQ(Joined(RunLine(toolsFolder + "/tool")), "ran\n");
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_FALSE(fs::exists(fs::path(toolsFolder).parent_path()));
}

}  // namespace
}  // namespace kelvane::testing
