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

// Returns the time of a clock in seconds: by default, since 1970.
double Now(clockid_t clock = CLOCK_REALTIME);

// Returns the value below which this share of the values lies: for 0.5 the median, for 0 and 1 the
// least and the greatest. Throws if there is no value.
double Quantile(std::vector<double> values, double share);

// Prints a row with minimum, median and maximum of the values.
void PrintRow(const std::string& name, const std::vector<double>& values);
// Prints and reports a figure, and whether it is at most its mark.
void ReportVerdict(const std::string& what, double figure, double mark, const char* unit = "");
// Prints and reports a figure without a mark.
void ReportFigure(const std::string& what, double figure, const char* unit = "");

// One of two things that are compared.
struct Side {
  const char* name;
  std::function<double()> run;  // returns seconds
};

// The ratio that is compared with the mark: the median of the pairs' ratios, or the ratio of our
// fastest run to theirs. The latter is for runs that other work on the machine may delay by more
// than the mark allows.
enum class Counts { kMedianRatio, kRatioOfTheFastest };

// Runs both sides in each of the pairs; in every second pair `theirs` runs first. Prints what each
// side took. Prints and reports the ratio of ours to theirs, and whether it is at most `mark`.
void Compare(const std::string& what, int pairs, double mark, const Side& ours, const Side& theirs,
             Counts counts = Counts::kMedianRatio);

}  // namespace kelvane::bench
