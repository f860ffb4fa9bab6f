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
#include "workspace/Form1.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;

void CompareOpening() {
  constexpr int kPairs = 40;
  constexpr double kTarget = 1.2;
  SecondsToFirstPaint<Form1>();
  SecondsToFirstPaint<Form4>();
  Compare("from the load to the first paint", kPairs, kTarget,
          {"joiner window", SecondsToFirstPaint<Form4>},
          {"main window", SecondsToFirstPaint<Form1>});
}

// Of this thread alone, and so without any tool and without waiting for one.
double ProcessorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class GrowingList {
 public:
  GrowingList() {
    tools_.DurationProbeDoes(kelvane::testing::Print("  Duration: 00:00:35.00, start: 0.000000\n"));
    form_.Load();
    form_.Show();
    DoEvents();
  }

  // What the window itself does for one more section, its repaint included, from the moment at
  // which the file was picked, in milliseconds.
  double Add() {
    double begin = 0;
    const kelvane::testing::Answer pick = kelvane::testing::TypeFile(file_);
    {
      const kelvane::testing::DialogAnswers answers({[&](QDialog& dialog) {
        pick(dialog);
        begin = ProcessorMilliseconds();
      }});
      Label& command = form_.Find<Label>("Label1(0)");
      command.MouseUp({.Index = 0, .Button = kelvane::kLeftButton, .Shift = 0, .X = 1, .Y = 1});
      Need(answers.AllGiven(), "no dialog comes");
    }
    DoEvents();
    return ProcessorMilliseconds() - begin;
  }
  int Sections() const { return form_.Find<ListView>("ListView1").ListItems.Count(); }

 private:
  kelvane::testing::RecordingTools tools_;
  QString file_ = tools_.File("clip.mp4");
  Form4 form_;
};

// Around the 20th and around the 2,000th, in windows of their own.
void CompareGrowth() {
  constexpr int kLists = 3;
  constexpr int kAround = 9;
  constexpr int kFew = 20;
  constexpr int kMany = 2000;
  constexpr double kTarget = 1.5;
  std::vector<double> few;
  std::vector<double> many;
  std::vector<double> ratios;
  for (int list = 0; list < kLists; ++list) {
    GrowingList sections;
    std::vector<double> costs;
    while (sections.Sections() < kMany + kAround) costs.push_back(sections.Add());
    const auto around = [&](int number) {
      const auto middle = costs.begin() + number - 1;
      return At({middle - kAround, middle + kAround + 1}, 0.5);
    };
    few.push_back(around(kFew));
    many.push_back(around(kMany));
    ratios.push_back(many.back() / few.back());
  }
  std::printf("adding a section, the tool left out, %d lists: min, median, max\n", kLists);
  PrintRow("the 2,000th, ms", many);
  PrintRow("the 20th, ms", few);
  PrintRow("ratio", ratios);
  PrintVerdict("median ratio", At(ratios, 0.5), kTarget);
}

}  // namespace

int main() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QuietToolkit();
  const App app("kelvane");
  try {
    CompareOpening();
    CompareGrowth();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "joiner_bench: %s\n", failure.what());
    return 1;
  }
  return 0;
}
