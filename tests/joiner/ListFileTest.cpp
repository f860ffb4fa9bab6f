// The list file of a join: its lines, and what happens if it can't be written.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QFileInfo>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "joiner/JoinTexts.h"
#include "joiner/JoinerWindowTest.h"
#include "media/Module1.h"

namespace kelvane::testing {
namespace {

// How many of the next lists can't be written.
std::atomic<int> failuresLeft = 0;
bool closesFail = false;

extern "C" void CountShortWrite(int /*signal*/) {
  if (--failuresLeft > 0) return;
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

// Limits the size of files to a few bytes until `count` writes have met that limit.
void FailWrites(int count) {
  failuresLeft = count;
  std::signal(SIGXFSZ, CountShortWrite);
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  limit.rlim_cur = 10;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
}

void FailCloses(int count) {
  failuresLeft = count;
  closesFail = true;
}

bool IsListFile(int descriptor) {
  const std::string entry = "/proc/self/fd/" + std::to_string(descriptor);
  return QFileInfo(QString::fromStdString(entry)).symLinkTarget().endsWith("/files.txt");
}

// Called once, after the next attempt to remove a list file, even if there was none.
std::function<void()> afterRemoval;

}  // namespace
}  // namespace kelvane::testing

// These replace the C library's functions in the whole test program.

extern "C" int close(int descriptor) {
  using namespace kelvane::testing;
  const bool fails = closesFail && IsListFile(descriptor);
  const int result = static_cast<int>(::syscall(SYS_close, descriptor));
  if (!fails) return result;
  closesFail = --failuresLeft > 0;
  errno = EDQUOT;
  return -1;
}

extern "C" int unlink(const char* path) noexcept {
  using namespace kelvane::testing;
  const auto result = static_cast<int>(::syscall(SYS_unlinkat, AT_FDCWD, path, 0));
  const int error = errno;
  if (afterRemoval && std::string_view(path).ends_with("/files.txt")) {
    std::exchange(afterRemoval, nullptr)();
  }
  errno = error;
  return result;
}

namespace kelvane::testing {
namespace {

TEST(ListFileLine, QuotesTheTrimmedPathAndEscapesNothing) {
  EXPECT_EQ(ListFileLine("/clips/a.mp4"), QString("file '/clips/a.mp4'\r\n"));
  EXPECT_EQ(ListFileLine(" Deleted Section "), QString("file 'Deleted Section'\r\n"));
  EXPECT_EQ(ListFileLine("/it's \\ 100%.mp4"), QString("file '/it's \\ 100%.mp4'\r\n"));
}

class JoinListFile : public JoinerWindowTest {
 protected:
  JoinListFile() { AddSectionOf("a.mp4"); }

  static QString PrivateList() { return QString::fromStdString(PrivateListFile()); }
  // Joins after an earlier join has left its list, while `fail` makes the next `lists` lists fail.
  void JoinFailing(void (*fail)(int count), int lists) {
    JoinTo("/tmp/earlier.mp4");
    ASSERT_EQ(ListFile(), ListLine("a.mp4"));
    QFile::remove(PrivateList());
    auto& change = Get<Label>("Label3", ProcessLine).Change;
    change = [=, this](int) {
      if (Shown(ProcessLine) == "Process: Joining Your Videos...") fail(lists);
    };
    EXPECT_EQ(JoinTo("/tmp/all.mp4"), (Texts{"Save Video As", kSuccess}));
    change = nullptr;
    EXPECT_EQ(failuresLeft, 0);
    EXPECT_EQ(ListFile(), "(not there)");
  }
};

TEST_F(JoinListFile, IsRemovedAndReplacedByAPrivateOneIfItIsNotWrittenWhole) {
  for (const auto fail : {FailWrites, FailCloses}) {
    JoinFailing(fail, 1);
    EXPECT_EQ(ContentOf(PrivateList()), ListLine("a.mp4"));
    EXPECT_EQ(FfmpegRuns().back(), "ffmpeg | -f | concat | -safe | 0 | -i | " + PrivateListFile() +
                                       " | -c | copy | -y | /tmp/all.mp4");
  }
}

TEST_F(JoinListFile, IsRemovedInBothPlacesIfItIsWrittenWholeInNeither) {
  for (const auto fail : {FailWrites, FailCloses}) {
    JoinFailing(fail, 2);
    EXPECT_EQ(ContentOf(PrivateList()), "(not there)");
    EXPECT_EQ(FfmpegRuns().back(), CopyRun("/tmp/all.mp4"));
  }
}

TEST_F(JoinListFile, IsNotWrittenThroughALinkThatIsMadeInItsPlaceAfterItsRemoval) {
  const QString target = tools_.MakeFile("target.txt");
  afterRemoval = [&] { EXPECT_TRUE(QFile::link(target, InFolder("files.txt"))); };
  JoinTo("/tmp/all.mp4");
  EXPECT_FALSE(std::exchange(afterRemoval, nullptr));
  EXPECT_EQ(ContentOf(target), "contents");
  EXPECT_NE(FfmpegRuns(), Texts{CopyRun("/tmp/all.mp4")});
}

}  // namespace
}  // namespace kelvane::testing
