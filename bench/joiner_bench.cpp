// The joiner window: the main window's opening against its own, ruler included, and what a section
// costs among two thousand against one among twenty.
#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sstream>
#include <string>
#include <vector>

#include "FirstPaint.h"
#include "Pairs.h"
#include "joiner/Form4.h"
#include "platform/App.h"
#include "support/DialogAnswers.h"
#include "support/Process.h"
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

constexpr int kAround = 9;  // sections, to either side of the one that is told

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

// This program once more, with a list of its own: so one list can be measured beside another, in
// turns, and whatever holds the machine up holds both up.
class OtherList {
 public:
  explicit OtherList(int sections)
      : process_(
            {QCoreApplication::applicationFilePath().toStdString(), std::to_string(sections)}) {}

  void AwaitGrown() const { Need(process_.ReadLine() == "grown", "the other list ended"); }
  Cost Add() const {
    process_.Write("\n");
    Cost cost{};
    std::istringstream figures(process_.ReadLine());
    Need(static_cast<bool>(figures >> cost.whole >> cost.afterPick), "the other list ended");
    return cost;
  }

 private:
  kelvane::testing::Process process_;
};

// What the other list does: it grows, says so, and adds a section for each line that it is sent.
void BeOtherList(int sections) {
  GrowingList list;
  while (list.Sections() < sections) list.Add();
  std::puts("grown");
  std::fflush(stdout);
  for (int line = std::getchar(); line != EOF; line = std::getchar()) {
    const int before = list.Sections();
    const Cost cost = list.Add();
    Need(list.Sections() == before + 1, "a section is missing");
    std::printf("%.4f %.4f\n", cost.whole, cost.afterPick);
    std::fflush(stdout);
  }
}

// What follows the pick alone is told as well: the dialog, which costs the same whatever the list
// holds, would hide what grows.
void MeasureGrowth() {
  constexpr int kFew = 20;
  constexpr int kMany = 2000;
  constexpr int kPairs = 2 * kAround + 1;
  OtherList few(kFew - kAround - 1);
  OtherList many(kMany - kAround - 1);
  few.AwaitGrown();
  many.AwaitGrown();
  std::vector<double> manyAfterPick;
  std::vector<double> fewAfterPick;
  const auto add = [](const OtherList& list, std::vector<double>& afterPick) {
    const Cost cost = list.Add();
    afterPick.push_back(cost.afterPick);
    return cost.whole / 1e3;
  };
  constexpr double kTarget = 1.5;
  Compare("adding a section, its tool left out", kPairs, kTarget,
          {"around the 2,000th", [&] { return add(many, manyAfterPick); }},
          {"around the 20th", [&] { return add(few, fewAfterPick); }});
  PrintFigure("the same, without the dialog", At(manyAfterPick, 0.5) / At(fewAfterPick, 0.5));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QuietQt();
  const App app("kelvane");
  return ToEnd([&] {
    if (argc == 2) return BeOtherList(std::atoi(argv[1]));
    CompareOpening<Form4>("joiner window", 1.2);
    MeasureGrowth();
  });
}
