#pragma once

#include <functional>
#include <string>
#include <vector>

// What the benches have in common: they run in pairs, tell ratios, and say of each mark whether it
// was met. The report is a file of lines "what, figure, mark, verdict", tabs between them, to which
// every bench adds its own; KELVANE_BENCH_REPORT names it, and without that there is none.
namespace kelvane::bench {

// Ends the bench with this complaint where `holds` is false.
void Need(bool holds, const char* complaint);
// Runs a whole bench. 0, or 1 with the complaint on the standard error if it came to one.
int ToEnd(const std::function<void()>& bench);

// Seconds since 1970.
double Now();

// The value that this share of all lie below; 0.5 is the median.
double At(std::vector<double> values, double share);

// Minimum, median and maximum.
void PrintRow(const std::string& name, const std::vector<double>& values);
// Says whether a figure is at most its mark, and tells the report of it.
void PrintVerdict(const std::string& what, double figure, double mark, const char* unit = "");
// Tells the report of a figure that has no mark.
void PrintFigure(const std::string& what, double figure, const char* unit = "");

// One of two things that are compared, and a run of it in seconds.
struct Side {
  const char* name;
  std::function<double()> run;
};

// Runs the two sides one after the other, in alternating order, prints what each took, and says
// whether the median ratio is at most `target`.
void Compare(const char* what, int pairs, double target, const Side& ours, const Side& theirs);
// The same, and says it of the ratio of the two fastest: for runs of seconds on all cores, to which
// the machine now and then adds more than the mark allows, and from which it takes nothing.
void CompareFastest(const char* what, int pairs, double target, const Side& ours,
                    const Side& theirs);

}  // namespace kelvane::bench
