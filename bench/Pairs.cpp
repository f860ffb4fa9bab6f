#include "Pairs.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iomanip>
#include <stdexcept>

namespace kelvane::bench {
namespace {

struct Runs {
  std::vector<double> ours;
  std::vector<double> theirs;
  std::vector<double> ratios;
};

// Opened anew for each line, as the benches write it one after the other; none where it isn't
// named.
std::ofstream Report() {
  std::fflush(stdout);
  std::ofstream report;
  if (const char* name = std::getenv("KELVANE_BENCH_REPORT")) report.open(name, std::ios::app);
  report << std::fixed << std::setprecision(2);
  return report;
}

Runs RunPairs(const char* what, int pairs, const Side& ours, const Side& theirs) {
  Runs runs;
  for (int pair = 0; pair < pairs; ++pair) {
    const bool oursFirst = pair % 2 == 0;
    if (oursFirst) runs.ours.push_back(ours.run());
    runs.theirs.push_back(theirs.run());
    if (!oursFirst) runs.ours.push_back(ours.run());
    runs.ratios.push_back(runs.ours.back() / runs.theirs.back());
  }
  std::printf("%s, %d pairs: min, median, max\n", what, pairs);
  PrintRow(std::string(ours.name) + ", s", runs.ours);
  PrintRow(std::string(theirs.name) + ", s", runs.theirs);
  PrintRow("ratio", runs.ratios);
  return runs;
}

std::string Comparison(const char* what, const Side& ours, const Side& theirs) {
  return std::string(what) + ": " + ours.name + " against " + theirs.name;
}

}  // namespace

void Need(bool holds, const char* complaint) {
  if (!holds) throw std::runtime_error(complaint);
}

int ToEnd(const std::function<void()>& bench) {
  try {
    bench();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, failure.what());
    return 1;
  }
  return 0;
}

double Now() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

double At(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void PrintRow(const std::string& name, const std::vector<double>& values) {
  std::printf("  %-34s %9.4f %9.4f %9.4f\n", name.c_str(), At(values, 0), At(values, 0.5),
              At(values, 1));
  std::fflush(stdout);
}

void PrintVerdict(const std::string& what, double figure, double mark, const char* unit) {
  const char* verdict = figure <= mark ? "met" : "missed";
  std::printf("  %s %.2f%s, at most %.2f%s: %s\n", what.c_str(), figure, unit, mark, unit, verdict);
  Report() << what << '\t' << figure << unit << "\tat most " << mark << unit << '\t' << verdict
           << '\n';
}

void PrintFigure(const std::string& what, double figure, const char* unit) {
  std::printf("  %s %.2f%s\n", what.c_str(), figure, unit);
  Report() << what << '\t' << figure << unit << "\t\t\n";
}

void Compare(const char* what, int pairs, double target, const Side& ours, const Side& theirs) {
  const Runs runs = RunPairs(what, pairs, ours, theirs);
  PrintVerdict(Comparison(what, ours, theirs), At(runs.ratios, 0.5), target);
}

void CompareFastest(const char* what, int pairs, double target, const Side& ours,
                    const Side& theirs) {
  const Runs runs = RunPairs(what, pairs, ours, theirs);
  PrintFigure(Comparison(what, ours, theirs) + ", median ratio", At(runs.ratios, 0.5));
  PrintVerdict(Comparison(what, ours, theirs) + ", fastest runs",
               At(runs.ours, 0) / At(runs.theirs, 0), target);
}

}  // namespace kelvane::bench
