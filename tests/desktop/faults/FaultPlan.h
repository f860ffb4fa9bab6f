#pragma once

#include <atomic>

// What the library in the program and the test outside it share: a small file that both have in
// their memory.
namespace kelvane::desktop {

// The calls of the system that can be made to fail, by what the program wants of them.
enum class Attempt : int {
  kStartTool,     // a pipe, the settings for a start, and the start itself
  kUseTemporary,  // to look at the place of temporary files, or to make a folder in it
  kFillFolder,    // to make a short name or a list in such a folder
  kStartThread,
  kLoadPlayer,    // to load the player's library
  kCount
};

constexpr int kAttempts = static_cast<int>(Attempt::kCount);

// Instead of a call's number.
constexpr int kNoCall = 0;
constexpr int kEveryCall = -1;

struct FaultPlan {
  struct Entry {
    // The call that fails, counted from 1 for the next one.
    std::atomic<int> failing;
    std::atomic<int> error;
    // How many have failed.
    std::atomic<int> failed;
  };
  Entry entries[kAttempts];
  // How many seconds the calendar clock is ahead.
  std::atomic<long> clockAhead;
  // How far ahead the usual ways to read that clock showed it when the program last read the clock
  // of its timers.
  std::atomic<long> clockShown;
};

constexpr const char* kPlanVariable = "KELVANE_FAULT_PLAN";

}  // namespace kelvane::desktop
