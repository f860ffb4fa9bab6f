#include "Pairs.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace kelvane::bench {
namespace {

void Report(const std::string& line) {
  const char* report = std::getenv("KELVANE_BENCH_REPORT");
  if (report != nullptr) std::ofstream(report, std::ios::app) << line << '\n';
}

}  // namespace

void Need(bool holds, const char* complaint) {
  if (!holds) throw std::runtime_error(complaint);
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
  std::fflush(stdout);
  std::ostringstream line;
  line << std::fixed << std::setprecision(2) << what << '\t' << figure << unit << "\tat most "
       << mark << unit << '\t' << verdict;
  Report(line.str());
}

void PrintFigure(const std::string& what, double figure, const char* unit) {
  std::printf("  %s %.2f%s\n", what.c_str(), figure, unit);
  std::fflush(stdout);
  std::ostringstream line;
  line << std::fixed << std::setprecision(2) << what << '\t' << figure << unit << "\t\t";
  Report(line.str());
}

void Compare(const char* what, int pairs, double target, const Side& ours, const Side& theirs) {
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
  std::printf("%s, %d pairs: min, median, max\n", what, pairs);
  PrintRow(std::string(ours.name) + ", s", ourSeconds);
  PrintRow(std::string(theirs.name) + ", s", theirSeconds);
  PrintRow("ratio", ratios);
  PrintVerdict(std::string(what) + ": " + ours.name + " against " + theirs.name, At(ratios, 0.5),
               target);
}

}  // namespace kelvane::bench
