// The steps of a tool's start, each of which may fail for lack of memory.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <spawn.h>

#include <cerrno>
#include <set>

#include "TestTools.h"
#include "media/DOSOutputs.h"

namespace {

// The number of steps until one fails: 1 for the next one, 0 for none.
int stepsUntilFailure = 0;

bool FailsNow() { return stepsUntilFailure > 0 && --stepsUntilFailure == 0; }

}  // namespace

// Replaces a function of the C library, in the whole test program, with a step that can fail.
#define FAILING(function, parameters, arguments)                              \
  extern "C" int function parameters noexcept {                               \
    static auto* const original =                                             \
        reinterpret_cast<decltype(&::function)>(dlsym(RTLD_NEXT, #function)); \
    return FailsNow() ? ENOMEM : original arguments;                          \
  }

using Actions = posix_spawn_file_actions_t;
using Attributes = posix_spawnattr_t;

FAILING(posix_spawn_file_actions_init, (Actions * a), (a))
FAILING(posix_spawn_file_actions_adddup2, (Actions * a, int from, int to), (a, from, to))
FAILING(posix_spawn_file_actions_addopen,
        (Actions * a, int number, const char* path, int flags, mode_t mode),
        (a, number, path, flags, mode))
FAILING(posix_spawn_file_actions_addclosefrom_np, (Actions * a, int from), (a, from))
FAILING(posix_spawnattr_init, (Attributes * a), (a))
FAILING(posix_spawnattr_setsigmask, (Attributes * a, const sigset_t* set), (a, set))
FAILING(posix_spawnattr_setsigdefault, (Attributes * a, const sigset_t* set), (a, set))
FAILING(posix_spawnattr_setflags, (Attributes * a, short flags), (a, flags))

namespace kelvane::testing {
namespace {

TEST(ToolStart, RaisesNoEventAndLeaksNoDescriptorWhicheverStepFails) {
  // The two initialisations, two duplicates, the null device, the closing of all other descriptors,
  // two sets of signals, and the flags.
  constexpr int kSteps = 9;
  const std::set<int> descriptors = OpenDescriptors();
  for (int step = 1; step <= kSteps; ++step) {
    stepsUntilFailure = step;
    EXPECT_EQ(RunLine("/bin/echo text"), Events{}) << step;
    EXPECT_EQ(stepsUntilFailure, 0) << "no step failed";
    EXPECT_EQ(OpenDescriptors(), descriptors) << step;
  }
  stepsUntilFailure = kSteps + 1;
  EXPECT_EQ(Joined(RunLine("/bin/echo text")), "text\n");
  EXPECT_EQ(stepsUntilFailure, 1) << "there is a further step";
  stepsUntilFailure = 0;
}

}  // namespace
}  // namespace kelvane::testing
