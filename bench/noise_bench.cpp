// The machine itself: how evenly it runs what needs nothing but a processor. Where these figures
// are large, so is what the other benches owe to it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "Pairs.h"

namespace {

using namespace kelvane::bench;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

// In milliseconds.
double FixedWork() {
  constexpr unsigned kRounds = 20'000'000;
  const Clock::time_point begin = Clock::now();
  volatile unsigned sink = 0;
  unsigned value = 1;
  for (unsigned round = 0; round < kRounds; ++round) value = value * 1664525U + 1013904223U;
  sink = value;
  static_cast<void>(sink);
  return Milliseconds(Clock::now() - begin).count();
}

// The longest time for which a thread that never sleeps was kept from running, in milliseconds.
double LongestGap() {
  constexpr std::chrono::seconds kLength{2};
  double longest = 0;
  const Clock::time_point end = Clock::now() + kLength;
  for (Clock::time_point last = Clock::now(); last < end;) {
    const Clock::time_point now = Clock::now();
    longest = std::max(longest, Milliseconds(now - last).count());
    last = now;
  }
  return longest;
}

}  // namespace

int main() {
  constexpr int kRuns = 30;
  std::vector<double> work;
  for (int run = 0; run < kRuns; ++run) work.push_back(FixedWork());
  std::puts("the machine itself: min, median, max");
  PrintRow("the same work, ms", work);
  PrintFigure("the machine: the same work, longest against shortest", At(work, 1) / At(work, 0));
  PrintFigure("the machine: longest gap of one busy thread", LongestGap(), " ms");
  double other = 0;
  std::thread second([&other] { other = LongestGap(); });
  const double first = LongestGap();
  second.join();
  PrintFigure("the machine: longest gap of two busy threads", std::max(first, other), " ms");
  return 0;
}
