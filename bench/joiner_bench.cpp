// The joiner window: the main window's opening against its own, ruler included, and what a section
// costs among two thousand against one among twenty.
#include <cstdio>
#include <ctime>
#include <exception>
#include <vector>

#include "FirstPaint.h"
#include "Pairs.h"
#include "joiner/Form4.h"
#include "platform/App.h"
#include "support/DialogAnswers.h"
#include "support/RecordingTools.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;

// Of this thread alone, and so without any tool and without waiting for one.
double ProcessorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

constexpr int kAround = 9;

// In milliseconds.
struct Cost {
  double whole;      // from the click to the repaint, with the dialog
  double afterPick;  // from the moment at which the file was picked
};

class GrowingList {
 public:
  GrowingList() {
    tools_.DurationProbeDoes(kelvane::testing::Print("  Duration: 00:00:35.00, start: 0.000000\n"));
    form_.Load();
    form_.Show();
    DoEvents();
  }

  // What the window itself does for one more section.
  Cost Add() {
    double picked = 0;
    Label& command = form_.Find<Label>("Label1(0)");
    const double begin = ProcessorMilliseconds();
    const kelvane::testing::Answer pick = kelvane::testing::TypeFile(file_);
    {
      const kelvane::testing::DialogAnswers answers({[&](QDialog& dialog) {
        pick(dialog);
        picked = ProcessorMilliseconds();
      }});
      command.MouseUp({.Index = 0, .Button = kelvane::kLeftButton, .Shift = 0, .X = 1, .Y = 1});
      Need(answers.AllGiven(), "no dialog comes");
    }
    DoEvents();
    const double end = ProcessorMilliseconds();
    return {end - begin, end - picked};
  }
  int Sections() const { return form_.Find<ListView>("ListView1").ListItems.Count(); }

 private:
  kelvane::testing::RecordingTools tools_;
  QString file_ = tools_.File("clip.mp4");
  Form4 form_;
};

// Around a section's number, the middle one of what the sections there cost.
double CostAround(const std::vector<double>& costs, int number) {
  const auto middle = costs.begin() + number - 1;
  return At({middle - kAround, middle + kAround + 1}, 0.5);
}

void PrintCosts(const char* what, double many, double few) {
  std::printf("  %-34s the 2,000th %.2f ms, the 20th %.2f ms\n", what, many, few);
}

// What follows the pick alone is told as well: the dialog, which costs the same whatever the list
// holds, would hide what grows.
void MeasureGrowth() {
  constexpr int kFew = 20;
  constexpr int kMany = 2000;
  GrowingList sections;
  std::vector<double> whole;
  std::vector<double> afterPick;
  for (int section = 0; section < kMany + kAround; ++section) {
    const Cost cost = sections.Add();
    whole.push_back(cost.whole);
    afterPick.push_back(cost.afterPick);
  }
  Need(sections.Sections() == kMany + kAround, "a section is missing");
  std::puts("adding a section, its tool left out: the median of those around");
  const double manyWhole = CostAround(whole, kMany);
  const double fewWhole = CostAround(whole, kFew);
  PrintCosts("dialog and all", manyWhole, fewWhole);
  constexpr double kTarget = 1.5;
  PrintVerdict("adding a section: the 2,000th against the 20th", manyWhole / fewWhole, kTarget);
  const double manyAfterPick = CostAround(afterPick, kMany);
  const double fewAfterPick = CostAround(afterPick, kFew);
  PrintCosts("after the file was picked", manyAfterPick, fewAfterPick);
  PrintFigure("the same, without the dialog", manyAfterPick / fewAfterPick);
}

}  // namespace

int main() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QuietToolkit();
  const App app("kelvane");
  try {
    CompareOpening<Form4>("joiner window", 1.2);
    MeasureGrowth();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "joiner_bench: %s\n", failure.what());
    return 1;
  }
  return 0;
}
