#include "Pairs.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iomanip>
#include <stdexcept>

namespace kelvane::bench {
namespace {

std::ofstream Report() {
  std::fflush(stdout);
  std::ofstream report;
  if (const char* name = std::getenv("KELVANE_BENCH_REPORT")) report.open(name, std::ios::app);
  report << std::fixed << std::setprecision(2);
  return report;
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

double Now(clockid_t clock) {
  timespec time{};
  Need(clock_gettime(clock, &time) == 0, "the clock doesn't answer");
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double Quantile(std::vector<double> values, double share) {
  Need(!values.empty(), "nothing was measured");
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void PrintRow(const std::string& name, const std::vector<double>& values) {
  std::printf("  %-34s %9.4f %9.4f %9.4f\n", name.c_str(), Quantile(values, 0),
              Quantile(values, 0.5), Quantile(values, 1));
  std::fflush(stdout);
}

void ReportVerdict(const std::string& what, double figure, double mark, const char* unit) {
  const char* verdict = figure <= mark ? "met" : "missed";
  std::printf("  %s %.2f%s, at most %.2f%s: %s\n", what.c_str(), figure, unit, mark, unit, verdict);
  Report() << what << '\t' << figure << unit << "\tat most " << mark << unit << '\t' << verdict
           << '\n';
}

void ReportFigure(const std::string& what, double figure, const char* unit) {
  std::printf("  %s %.2f%s\n", what.c_str(), figure, unit);
  Report() << what << '\t' << figure << unit << "\t\t\n";
}

void Compare(const std::string& what, int pairs, double mark, const Side& ours, const Side& theirs,
             Counts counts) {
  std::vector<double> ourSeconds;
  std::vector<double> theirSeconds;
  std::vector<double> ratios;
  for (int pair = 0; pair < pairs; ++pair) {
    const bool oursFirst = pair % 2 == 0;
    if (oursFirst) ourSeconds.push_back(ours.run());
    theirSeconds.push_back(theirs.run());
    if (!oursFirst) ourSeconds.push_back(ours.run());
    ratios.push_back(ourSeconds.back() / theirSeconds.back());
  }
  std::printf("%s, %d pairs: min, median, max\n", what.c_str(), pairs);
  PrintRow(std::string(ours.name) + ", s", ourSeconds);
  PrintRow(std::string(theirs.name) + ", s", theirSeconds);
  PrintRow("ratio", ratios);
  const std::string comparison = what + ": " + ours.name + " against " + theirs.name;
  if (counts == Counts::kMedianRatio) return ReportVerdict(comparison, Quantile(ratios, 0.5), mark);
  ReportFigure(comparison + ", median ratio", Quantile(ratios, 0.5));
  ReportVerdict(comparison + ", fastest runs", Quantile(ourSeconds, 0) / Quantile(theirSeconds, 0),
                mark);
}

}  // namespace kelvane::bench
