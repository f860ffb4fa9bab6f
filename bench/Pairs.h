#pragma once

#include <ctime>
#include <functional>
#include <string>
#include <vector>

// What the benches share. KELVANE_BENCH_REPORT names the report, a file to which every figure is
// added as a line "what, figure, mark, verdict" with tabs between; without it there is no report.
namespace kelvane::bench {

// Throws std::runtime_error with the complaint unless the condition holds.
void Need(bool holds, const char* complaint);
// Runs a whole bench. Returns 0, or prints the complaint and returns 1 if the bench throws.
int ToEnd(const std::function<void()>& bench);

// Seconds of a clock; of the default one, since 1970.
double Now(clockid_t clock = CLOCK_REALTIME);

// The value below which this share of all lies; 0.5 is the median. Throws if there is no value.
double At(std::vector<double> values, double share);

// Prints minimum, median and maximum.
void PrintRow(const std::string& name, const std::vector<double>& values);
// Prints and reports a figure, and whether it is at most its mark.
void PrintVerdict(const std::string& what, double figure, double mark, const char* unit = "");
// Prints and reports a figure without a mark.
void PrintFigure(const std::string& what, double figure, const char* unit = "");

// One of two things that are compared.
struct Side {
  const char* name;
  std::function<double()> run;  // returns seconds
};

// The fastest runs count where other work adds more to single runs than the mark allows.
enum class Counts { kMedianRatio, kRatioOfTheFastest };

// Runs both sides in turn, the other one first in every second pair. Prints what each took, and
// whether the ratio is at most `mark`.
void Compare(const std::string& what, int pairs, double mark, const Side& ours, const Side& theirs,
             Counts counts = Counts::kMedianRatio);

}  // namespace kelvane::bench
