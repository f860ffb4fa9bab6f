// The cost of a block of a tool's text in the main window's handler, at the beginning of the
// window's life and after 100 MiB of text, and the memory that this text takes.
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <vector>

#include "Pairs.h"
#include "platform/App.h"
#include "support/RecordingTools.h"
#include "workspace/Form1.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;

double ResidentMebibytes() {
  long pages = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1048576;
}

// Runs a preview that prints 1 MiB. Returns nanoseconds for a block of 256 bytes.
double CostOfABlock(Form1& form) {
  constexpr int kBlocks = 4096;
  constexpr int kPreview = 4;
  const double begin = Now();
  form.Find<Label>("Label14(4)")
      .MouseUp({.Index = kPreview, .Button = kLeftButton, .Shift = 0, .X = 0, .Y = 0});
  return (Now() - begin) * 1e9 / kBlocks;
}

void Run() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const App app("kelvane");
  const kelvane::testing::RecordingTools tools;
  tools.FfplayDoes("yes 'frame= 100 fps= 25 q=-1.0' | head -c 1048576\n");
  Form1 form;
  form.Load();
  form.Show();
  DoEvents();
  CostOfABlock(form);  // warm-up

  constexpr int kMebibytes = 100;
  constexpr int kSample = 10;
  const double before = ResidentMebibytes();
  std::vector<double> costs;
  for (int mebibyte = 0; mebibyte < kMebibytes; ++mebibyte) costs.push_back(CostOfABlock(form));
  const double grown = ResidentMebibytes() - before;
  Need(grown > kMebibytes, "the preview's text doesn't come");

  const std::vector<double> first(costs.begin(), costs.begin() + kSample);
  const std::vector<double> last(costs.end() - kSample, costs.end());
  std::puts("output handler, ns for a block: min, median, max");
  PrintRow("first 10 MiB of text", first);
  PrintRow("last 10 MiB of 100 MiB", last);
  constexpr double kFlat = 1.25;
  constexpr double kTextAlone = 2.5;  // two bytes for a character, and spare capacity
  ReportVerdict("output handler: a block after 100 MiB against the first ones",
                Quantile(last, 0.5) / Quantile(first, 0.5), kFlat);
  ReportVerdict("output handler: memory for each byte received", grown / kMebibytes, kTextAlone,
                " bytes");
}

}  // namespace

int main() { return ToEnd(Run); }
