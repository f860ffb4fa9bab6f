// The remarks on files that the user may not write. The tests of the windows check the other
// remarks, with the real tools.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <string>

#include "TestTools.h"
#include "media/OutputRemark.h"

namespace kelvane::testing {
namespace {

namespace fs = std::filesystem;

// Returns a remark as a user who isn't root gets it.
std::string RemarkForAnOrdinaryUser(const std::string& path, const auto& remarkOn) {
  constexpr uid_t kNobody = 65534;
  std::array<int, 2> pipe{};
  EXPECT_EQ(::pipe(pipe.data()), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    std::string remark = "no other user";
    if (::geteuid() != 0 || ::setuid(kNobody) == 0) remark = remarkOn(path, kFileIsReplaced);
    ::_exit(::write(pipe[1], remark.data(), remark.size()) < 0);
  }
  ::close(pipe[1]);
  std::string remark(100, '\0');
  const ssize_t length = ::read(pipe[0], remark.data(), remark.size());
  remark.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
  ::close(pipe[0]);
  ::waitpid(child, nullptr, 0);
  return remark;
}

TEST(OutputRemark, SaysThatNothingIsWrittenWhereTheUserHasNoPermission) {
  const TemporaryFolder folder;
  const std::string noFile = "No file can be written in this folder.";
  const std::string kept = "This file exists: it will be kept, and nothing written.";
  const std::string old = folder.MakeFile("old.mp4");
  const std::string list = folder.MakeFile("list.M3U8");
  constexpr auto kRead = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
  constexpr auto kEnter = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
  constexpr auto kWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  fs::permissions(folder.path(), kRead | kEnter);
  fs::permissions(old, kRead);
  EXPECT_EQ(RemarkForAnOrdinaryUser(folder / "new.mp4", OutputRemark), noFile);
  EXPECT_EQ(RemarkForAnOrdinaryUser(old, OutputRemark), kept);
  fs::permissions(old, kRead | kWrite);
  EXPECT_EQ(RemarkForAnOrdinaryUser(old, OutputRemark), kFileIsReplaced);
  fs::permissions(list, kRead | kWrite);
  EXPECT_EQ(RemarkForAnOrdinaryUser(list, OutputRemark), kept) << "a list needs a writable folder";
  EXPECT_EQ(RemarkForAnOrdinaryUser(list, WriteRemark), kFileIsReplaced);
  fs::permissions(folder.path(), kRead | kWrite | kEnter);
  fs::permissions(list, kRead);
  EXPECT_EQ(RemarkForAnOrdinaryUser(list, OutputRemark), kFileIsReplaced);
  EXPECT_EQ(RemarkForAnOrdinaryUser(list, WriteRemark), kept);
  fs::permissions(folder.path(), kRead | kWrite);
  EXPECT_EQ(RemarkForAnOrdinaryUser(folder / "new.mp4", OutputRemark), noFile);
  fs::permissions(folder.path(), kRead | kWrite | kEnter);
  EXPECT_EQ(RemarkForAnOrdinaryUser(folder / "new.mp4", OutputRemark), "");
}

}  // namespace
}  // namespace kelvane::testing
