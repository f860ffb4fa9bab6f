#pragma once

#include <functional>
#include <string>
#include <vector>

// What the benches have in common that drive the program: they run in pairs, tell ratios, and say
// of each mark whether it was met.
namespace kelvane::bench {

// Ends the bench with this complaint where `holds` is false.
void Need(bool holds, const char* complaint);

// The value that this share of all lie below; 0.5 is the median.
double At(std::vector<double> values, double share);

// Minimum, median and maximum.
void PrintRow(const std::string& name, const std::vector<double>& values);
// Says whether a figure is at most its mark.
void PrintVerdict(const char* what, double figure, double mark, const char* unit = "");

// One of two things that are compared, and a run of it in seconds.
struct Side {
  const char* name;
  std::function<double()> run;
};

// Runs the two sides one after the other, in alternating order, prints the table, and says whether
// the median ratio is at most `target`.
void Compare(const char* what, int pairs, double target, const Side& ours, const Side& theirs);

}  // namespace kelvane::bench
