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

void PrintGrowth(const char* what, const std::vector<double>& many,
                 const std::vector<double>& few) {
  constexpr double kTarget = 1.5;
  std::vector<double> ratios;
  for (std::size_t list = 0; list < many.size(); ++list) ratios.push_back(many[list] / few[list]);
  std::printf("adding a section, %s, no tool, %zu lists: min, median, max\n", what, many.size());
  PrintRow("the 2,000th, ms", many);
  PrintRow("the 20th, ms", few);
  PrintRow("ratio", ratios);
  PrintVerdict("median ratio", At(ratios, 0.5), kTarget);
}

// Around the 20th and around the 2,000th, in windows of their own.
void CompareGrowth() {
  constexpr int kLists = 3;
  constexpr int kAround = 9;
  constexpr int kFew = 20;
  constexpr int kMany = 2000;
  std::vector<double> fewWhole;
  std::vector<double> manyWhole;
  std::vector<double> fewAfterPick;
  std::vector<double> manyAfterPick;
  for (int list = 0; list < kLists; ++list) {
    GrowingList sections;
    std::vector<double> whole;
    std::vector<double> afterPick;
    for (int section = 0; section < kMany + kAround; ++section) {
      const Cost cost = sections.Add();
      whole.push_back(cost.whole);
      afterPick.push_back(cost.afterPick);
    }
    Need(sections.Sections() == kMany + kAround, "a section is missing");
    const auto around = [](const std::vector<double>& costs, int number) {
      const auto middle = costs.begin() + number - 1;
      return At({middle - kAround, middle + kAround + 1}, 0.5);
    };
    fewWhole.push_back(around(whole, kFew));
    manyWhole.push_back(around(whole, kMany));
    fewAfterPick.push_back(around(afterPick, kFew));
    manyAfterPick.push_back(around(afterPick, kMany));
  }
  PrintGrowth("dialog and all", manyWhole, fewWhole);
  PrintGrowth("after the file was picked", manyAfterPick, fewAfterPick);
}

}  // namespace

int main() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QuietToolkit();
  const App app("kelvane");
  try {
    CompareOpening<Form4>("joiner window", 1.2);
    CompareGrowth();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "joiner_bench: %s\n", failure.what());
    return 1;
  }
  return 0;
}
