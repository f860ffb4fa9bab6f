// How evenly the machine runs work that needs nothing but a processor.
#include <algorithm>
#include <cstdio>
#include <future>
#include <vector>

#include "Pairs.h"

namespace {

using namespace kelvane::bench;

double MillisecondsOfFixedWork() {
  constexpr unsigned kRounds = 20'000'000;
  const double begin = Now();
  volatile unsigned sink = 0;
  unsigned value = 1;
  for (unsigned round = 0; round < kRounds; ++round) value = value * 1664525U + 1013904223U;
  sink = value;
  static_cast<void>(sink);
  return (Now() - begin) * 1e3;
}

// Runs without a pause for two seconds. Returns the longest time, in milliseconds, for which the
// system didn't let this thread run.
double LongestGap() {
  double longest = 0;
  double last = Now();
  for (const double end = last + 2; last < end;) {
    const double now = Now();
    longest = std::max(longest, now - last);
    last = now;
  }
  return longest * 1e3;
}

}  // namespace

int main() {
  constexpr int kRuns = 30;
  std::vector<double> work;
  for (int run = 0; run < kRuns; ++run) work.push_back(MillisecondsOfFixedWork());
  std::puts("the machine itself: min, median, max");
  PrintRow("the same work, ms", work);
  ReportFigure("the machine: the same work, longest against shortest",
               Quantile(work, 1) / Quantile(work, 0));
  ReportFigure("the machine: longest gap of one busy thread", LongestGap(), " ms");
  std::future<double> other = std::async(std::launch::async, LongestGap);
  const double gap = LongestGap();
  ReportFigure("the machine: longest gap of two busy threads", std::max(gap, other.get()), " ms");
  return 0;
}
