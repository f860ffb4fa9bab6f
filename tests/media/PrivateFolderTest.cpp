// The private folder of the short paths: its mode, its removal, and what a later start removes.

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/Module1.h"

namespace kelvane::testing {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

class PrivateFolder : public ::testing::Test {
 protected:
  std::string Short() const { return GetShortFileName(file_, {}, links_.path()); }

  // Starts a program that writes a join's list and a working file, prints the short path of file_,
  // and then ends as `end` says. With "wait" and "fork" it ends when its input is closed.
  Process Program(const std::string& end) const {
    return StartTestProgram({"private-folder", links_.path(), end, file_});
  }
  static void End(Process& waiting) {
    waiting.CloseInput();
    EXPECT_EQ(waiting.Wait(), 0);
  }

  // Starts a program that is killed, and returns the folder that it leaves behind.
  std::string FolderLeftBehind() const {
    Process program = Program("crash");
    const fs::path shortPath = program.ReadLine();
    EXPECT_TRUE(WIFSIGNALED(program.Wait()));
    EXPECT_TRUE(fs::is_symlink(shortPath)) << shortPath;
    EXPECT_EQ(ReadFile(shortPath.parent_path() / "files.txt"), "the list");
    EXPECT_EQ(ReadFile(shortPath.parent_path() / "work-sample.mp4"), "the sample");
    return shortPath.parent_path();
  }

  static std::string FolderName(const std::string& ending) {
    return "kelvane-" + std::to_string(::geteuid()) + "-" + ending;
  }

  TemporaryFolder files_;
  TemporaryFolder links_;
  std::string file_ = files_.MakeFile("my clip.mp4", "the clip");
};

TEST_F(PrivateFolder, IsOpenToItsUserAlone) {
  const auto mode = [this] {
    struct stat status {};
    EXPECT_EQ(::stat(fs::path(Short()).parent_path().c_str(), &status), 0);
    return static_cast<int>(status.st_mode & ALLPERMS);
  };
  const mode_t former = ::umask(0);
  EXPECT_EQ(mode(), S_IRWXU);
  fs::remove_all(fs::path(Short()).parent_path());
  EXPECT_EQ(mode(), S_IRWXU) << "after it was made again";
  ::umask(former);
}

TEST_F(PrivateFolder, IsMadeAgainWithItsLinksIfItVanished) {
  const std::string shortPath = Short();
  fs::remove(shortPath);
  EXPECT_EQ(Short(), shortPath);
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  fs::remove_all(fs::path(shortPath).parent_path());
  EXPECT_EQ(Short(), shortPath);
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(ReadFile(shortPath), "the clip") << "the new folder isn't locked";
}

TEST_F(PrivateFolder, IsMadeUnderAnotherNameIfItsOwnWasTaken) {
  const fs::path taken = fs::path(Short()).parent_path();
  fs::remove_all(taken);
  fs::create_directory(taken);
  const fs::path shortPath = Short();
  EXPECT_NE(shortPath.parent_path(), taken);
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  EXPECT_TRUE(fs::is_empty(taken));
}

TEST_F(PrivateFolder, HasOnePlaceForTheListOfEveryJoin) {
  const fs::path list = PrivateListFile(links_.path());
  EXPECT_EQ(list.filename(), "files.txt");
  EXPECT_EQ(list.parent_path(), fs::path(Short()).parent_path());
  EXPECT_EQ(PrivateListFile(links_.path()), list);
  EXPECT_EQ(PrivateListFile("/missing folder"), "");
}

TEST_F(PrivateFolder, HasAPlaceForEachWorkingFile) {
  const fs::path sample = PrivateWorkFile("sample.mp4", {links_.path()});
  EXPECT_EQ(sample.filename(), "work-sample.mp4");
  EXPECT_EQ(sample.parent_path(), fs::path(Short()).parent_path());
  EXPECT_EQ(PrivateWorkFile("sample.mp4", {links_.path()}), sample);
  EXPECT_NE(PrivateWorkFile("shake.trf", {links_.path()}), sample);
}

TEST_F(PrivateFolder, OfWorkingFilesIsInTheFirstParentThatTakesIt) {
  const std::string file = links_.MakeFile("no-folder");
  const std::string made = links_ / "made";
  const TemporaryFolder other;
  const auto parentFor = [](const Names& parents) {
    return fs::path(PrivateWorkFile("sample.mp4", parents)).parent_path().parent_path();
  };
  EXPECT_EQ(parentFor({links_.path(), other.path()}), links_.path());
  EXPECT_EQ(parentFor({file, other.path(), links_.path()}), other.path());
  EXPECT_EQ(parentFor({file, made}), made) << "the missing parent isn't made";
  EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all);
  EXPECT_EQ(parentFor({file, links_ / "missing/inner"}), "");
  EXPECT_EQ(parentFor({}), "");
}

TEST_F(PrivateFolder, OfWorkingFilesIsRemovedByALaterStartAfterACrash) {
  FolderLeftBehind();
  ClearWorkFilesLeftBehind({links_ / "missing", links_.path()});
  EXPECT_EQ(links_.Names(), Names());
}

TEST_F(PrivateFolder, IsRemovedAtOnceIfItCanNotBeOpened) {
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
  const rlimit former = limit;
  const int next = ::dup(STDIN_FILENO);
  ASSERT_GE(next, 0);
  ::close(next);
  limit.rlim_cur = static_cast<rlim_t>(next);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
  const std::string withoutDescriptor = Short();
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &former), 0);
  EXPECT_EQ(withoutDescriptor, "");
  EXPECT_EQ(links_.Names(), Names());
  EXPECT_EQ(ReadFile(Short()), "the clip");
}

TEST_F(PrivateFolder, IsRemovedWhenTheProgramEnds) {
  Process program = Program("return");
  EXPECT_TRUE(program.ReadLine().starts_with(links_.path() + "/kelvane-"));
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(links_.Names(), Names());
  EXPECT_EQ(ReadFile(file_), "the clip");
}

TEST_F(PrivateFolder, KeepsForeignFilesAndLinksWhenTheProgramEnds) {
  Process program = Program("wait");
  const fs::path shortPath = program.ReadLine();
  const fs::path folder = shortPath.parent_path();
  links_.MakeFile(folder.filename().string() + "/foreign", "foreign");
  fs::create_symlink(file_, folder / "foreign.mp4");
  End(program);
  EXPECT_EQ(ReadFile(folder / "foreign"), "foreign");
  EXPECT_EQ(ReadFile(folder / "foreign.mp4"), "the clip");
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(shortPath)));
}

TEST_F(PrivateFolder, LeavesAnotherFolderOfItsNameWhenTheProgramEnds) {
  Process program = Program("wait");
  const fs::path folder = fs::path(program.ReadLine()).parent_path();
  fs::remove_all(folder);
  fs::create_directory(folder);
  End(program);
  EXPECT_EQ(links_.Names(), Names{folder.filename()});
}

TEST_F(PrivateFolder, IsNotRemovedByTheEndOfAForkedCopy) {
  Process program = Program("fork");
  const std::string shortPath = program.ReadLine();
  EXPECT_EQ(program.ReadLine(), "copy ended");
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  End(program);
  EXPECT_EQ(links_.Names(), Names());
}

TEST_F(PrivateFolder, IsRemovedByALaterStartAfterACrash) {
  FolderLeftBehind();
  FolderLeftBehind();
  fs::create_directory(links_ / FolderName("abcDE7"));
  ASSERT_EQ(links_.Names().size(), 3U);
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(links_.Names(), Names());
  EXPECT_EQ(ReadFile(file_), "the clip");
}

TEST_F(PrivateFolder, OfARunningProgramIsKeptByAnotherStart) {
  Process program = Program("wait");
  const std::string shortPath = program.ReadLine();
  FolderLeftBehind();
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(links_.Names(), Names{fs::path(shortPath).parent_path().filename()});
  EXPECT_EQ(ReadFile(shortPath), "the clip");
  End(program);
}

TEST_F(PrivateFolder, IsNotLockedByAChildOfACrashedProgram) {
  Process program = Program("crash after starting a child");
  EXPECT_TRUE(fs::is_symlink(program.ReadLine()));
  const pid_t child = std::stoi(program.ReadLine());
  EXPECT_TRUE(WIFSIGNALED(program.Wait()));
  EXPECT_EQ(::kill(child, 0), 0);
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(links_.Names(), Names());
  ::kill(child, SIGKILL);
}

TEST_F(PrivateFolder, IsKeptByALaterStartIfItHoldsAForeignFile) {
  const std::string folder = FolderLeftBehind();
  links_.MakeFile(fs::path(folder).filename().string() + "/foreign", "foreign");
  fs::create_directory(folder + "/inner");
  fs::create_directory(folder + "/work-folder");
  fs::create_symlink(file_, folder + "/inner/link");
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(ReadFile(folder + "/foreign"), "foreign");
  EXPECT_EQ(ReadFile(folder + "/inner/link"), "the clip");
  EXPECT_TRUE(fs::exists(folder + "/work-folder"));
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(folder + "/my_clip.mp4")));
  EXPECT_FALSE(fs::exists(folder + "/work-sample.mp4"));
}

TEST_F(PrivateFolder, IsAllThatALaterStartRemoves) {
  const TemporaryFolder elsewhere;
  fs::create_symlink(file_, elsewhere / "link");
  fs::create_symlink(elsewhere.path(), links_ / FolderName("aLink0"));
  links_.MakeFile(FolderName("aFile0"));
  ASSERT_EQ(::mkfifo((links_ / FolderName("aPipe0")).c_str(), S_IRWXU), 0);
  for (const std::string& name :
       {std::string("kelvane"), "kelvane-" + std::to_string(::geteuid() + 1) + "-abcdef",
        FolderName("abcde"), FolderName("abcdefg"), "x" + FolderName("abcdef")}) {
    fs::create_directory(links_ / name);
    fs::create_symlink(file_, links_ / name + "/my_clip.mp4");
  }
  const Names before = links_.Names();
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(links_.Names(), before);
  EXPECT_EQ(elsewhere.Names(), Names{"link"}) << "the link was followed";
}

TEST_F(PrivateFolder, OfAnotherUserIsKeptByALaterStart) {
  const std::string folder = links_ / FolderName("abcdef");
  fs::create_directory(folder);
  // Only root can give a folder away.
  const bool givenAway = ::chown(folder.c_str(), ::geteuid() + 1, ::getegid()) == 0;
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(fs::exists(folder), givenAway);
}

TEST_F(PrivateFolder, IsClearedWithoutLeakingADescriptor) {
  FolderLeftBehind();
  links_.MakeFile(FolderName("aFile0"));
  Short();
  const std::set<int> before = OpenDescriptors();
  ClearShortPathsLeftBehind(links_.path());
  ClearShortPathsLeftBehind(links_ / "missing");
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(PrivateFolder, IsKeptByAnotherStartWhileItIsBeingMade) {
  const pid_t clearing = ::fork();
  ASSERT_GE(clearing, 0);
  if (clearing == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) ClearShortPathsLeftBehind(links_.path());
  }
  for (int start = 0; start < 100; ++start) {
    Process program = Program("wait");
    const std::string shortPath = program.ReadLine();
    EXPECT_EQ(ReadFile(shortPath), "the clip") << shortPath;
    End(program);
  }
  ::kill(clearing, SIGKILL);
  ::waitpid(clearing, nullptr, 0);
  ClearShortPathsLeftBehind(links_.path());
  EXPECT_EQ(links_.Names(), Names());
}

// Sets a variable of the environment, or removes it if `value` is null, until the object's end.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* const former = std::getenv(name)) former_ = former;
    Set(value);
  }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { Set(former_ ? former_->c_str() : nullptr); }

 private:
  void Set(const char* value) const {
    value == nullptr ? ::unsetenv(name_) : ::setenv(name_, value, 1);
  }

  const char* name_;
  std::optional<std::string> former_;
};

TEST(WorkFileParents, AreVarTmpAndTheUsersCacheFolderIfItsPathNeedsNoQuotingOrEscaping) {
  struct Case {
    const char* cacheHome;
    const char* home;
    Names expectedAfterTheFirst;
  };
  const std::vector<Case> cases = {
      {nullptr, "/home/user", {"/home/user/.cache"}},
      {"/disk/cache", "/home/user", {"/disk/cache"}},
      {"/disk/cache", nullptr, {"/disk/cache"}},
      {"", "/home/user", {"/home/user/.cache"}},
      {"relative", "/home/user", {"/home/user/.cache"}},
      {"/disk/my cache", "/home/user", {}},
      {nullptr, "/home/50%", {}},
      // Characters that have a meaning in the text of a filter.
      {nullptr, "/home/o'user", {}},
      {nullptr, "/home/a:b", {}},
      {nullptr, "/home/a,b", {}},
      {nullptr, "/home/a;b", {}},
      {nullptr, "/home/a[b", {}},
      {nullptr, "/home/a]b", {}},
      {nullptr, "/home/a\\b", {}},
      {nullptr, "/home/\u00E4=b", {"/home/\u00E4=b/.cache"}},
      {nullptr, "relative", {}},
      {nullptr, nullptr, {}},
  };
  for (auto [cacheHome, home, expected] : cases) {
    const Variable cacheHomeVariable("XDG_CACHE_HOME", cacheHome);
    const Variable homeVariable("HOME", home);
    expected.insert(expected.begin(), "/var/tmp");
    EXPECT_EQ(WorkFileParents(), expected);
  }
}

TEST(ToolsFolder, IsTheProgramsFolderIfItNeedsNoShortPathOrHasNone) {
  const TemporaryFolder folder;
  for (const std::string& path :
       {folder.path(), std::string("/missing folder/of nothing"), std::string()}) {
    EXPECT_EQ(ToolsFolder(path), path);
  }
}

TEST(ToolsFolder, IsALinkForAFolderWithABlankUntilTheProgramEnds) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "my programs");
  folder.Script("my programs/tool", "echo ran");
  Process program = StartTestProgram({"tools-folder", folder / "my programs"});
  const std::string toolsFolder = program.ReadLine();
  EXPECT_EQ(toolsFolder.find(' '), std::string::npos);
  EXPECT_EQ(Joined(RunLine(toolsFolder + "/tool")), "ran\n");
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_FALSE(fs::exists(fs::path(toolsFolder).parent_path()));
}

}  // namespace
}  // namespace kelvane::testing
