// The main window's output handler over a long program life: what a block costs in the first MiB of
// text, and what it costs when a hundred have been received. Prints the cost of a block, and the
// memory that the text has taken.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <vector>

#include "Pairs.h"
#include "platform/App.h"
#include "support/RecordingTools.h"
#include "workspace/Form1.h"

namespace {

using namespace kelvane::bench;

constexpr int kMebibytes = 100;
constexpr int kBlocksPerMebibyte = 1024 * 1024 / 256;
constexpr int kPreviewCommand = 4;

double ResidentMebibytes() {
  long pages = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1048576;
}

double PreviewNanosecondsPerBlock(kelvane::Form1& form) {
  const auto begin = std::chrono::steady_clock::now();
  form.Find<kelvane::Label>("Label14(4)")
      .MouseUp(
          {.Index = kPreviewCommand, .Button = kelvane::kLeftButton, .Shift = 0, .X = 0, .Y = 0});
  const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - begin;
  return took.count() / kBlocksPerMebibyte;
}

void Run() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  kelvane::App app("kelvane");
  const kelvane::testing::RecordingTools tools;
  tools.PreviewDoes("yes 'frame= 100 fps= 25 q=-1.0' | head -c 1048576\n");
  kelvane::Form1 form;
  form.Load();
  form.Show();
  kelvane::DoEvents();
  PreviewNanosecondsPerBlock(form);  // warm-up; its text begins the store

  const double before = ResidentMebibytes();
  std::vector<double> costs;
  for (int mebibyte = 0; mebibyte < kMebibytes; ++mebibyte) {
    costs.push_back(PreviewNanosecondsPerBlock(form));
  }
  const double grown = ResidentMebibytes() - before;
  Need(grown > kMebibytes, "the player's text doesn't come");

  constexpr int kSample = 10;
  const std::vector<double> first(costs.begin(), costs.begin() + kSample);
  const std::vector<double> last(costs.end() - kSample, costs.end());
  std::puts("output handler, ns to a block: min, median, max");
  PrintRow("first 10 MiB of text", first);
  PrintRow("last 10 MiB of 100 MiB", last);
  // The store has two bytes to a character, and what its growing leaves unused.
  constexpr double kFlat = 1.25;
  constexpr double kTextAlone = 2.5;
  PrintVerdict("output handler: a block after 100 MiB against the first ones",
               At(last, 0.5) / At(first, 0.5), kFlat);
  PrintVerdict("output handler: memory for each byte received", grown / kMebibytes, kTextAlone,
               " bytes");
}

}  // namespace

int main() { return ToEnd(Run); }
