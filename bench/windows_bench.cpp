// The section window and the joiner: their opening against the main window's, the cost of a move of
// a needle or a slider, and that of adding the 2,000th section against adding the 20th.
#include <QLoggingCategory>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "Pairs.h"
#include "joiner/Form4.h"
#include "platform/App.h"
#include "sections/Form3.h"
#include "support/DialogAnswers.h"
#include "support/PaintsOf.h"
#include "support/Process.h"
#include "support/RecordingTools.h"
#include "workspace/Form1.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::testing;

// Makes and loads a window. Returns the seconds to its first paint.
template <class Window>
double SecondsToFirstPaint() {
  const double begin = Now();
  Window window;
  window.Load();
  const PaintsOf paints("Label1(0)");  // every window has one
  window.Show();
  while (paints.Count() == 0) DoEvents();
  const double seconds = Now() - begin;
  window.Unload();
  return seconds;
}

// Compares a window's opening with that of the main window.
template <class Window>
void CompareOpening(const char* name, double mark) {
  constexpr int kPairs = 40;
  SecondsToFirstPaint<Form1>();
  SecondsToFirstPaint<Window>();
  Compare("load to first paint", kPairs, mark, {name, SecondsToFirstPaint<Window>},
          {"main window", SecondsToFirstPaint<Form1>});
}

// Moves the control to and fro by `step`, in the unit of its container, and prints the cost.
void MeasureMoves(const char* name, Control& control, float step) {
  constexpr int kMoves = 2000;
  constexpr int kTurn = 200;
  const auto at = [&](float x) {
    return MouseEvent{.Index = control.Index(), .Button = kLeftButton, .Shift = 0, .X = x, .Y = 0};
  };
  const PaintsOf paints(control.objectName());
  control.MouseDown(at(0));
  std::vector<double> milliseconds;
  for (int move = 0; move < kMoves; ++move) {
    const double begin = Now();
    control.MouseMove(at(move % (2 * kTurn) < kTurn ? step : -step));
    DoEvents();
    milliseconds.push_back((Now() - begin) * 1e3);
  }
  Need(paints.Count() >= kMoves / 2, "moves aren't painted");
  PrintRow(std::string(name) + ", ms", milliseconds);
  ReportFigure(std::string("a move of ") + name + " with its repaint", Quantile(milliseconds, 0.5),
               " ms");
}

void MeasureAllMoves() {
  Form3 form;
  form.Load();
  form.Show();
  DoEvents();
  std::puts("a move, its handler and its repaint: min, median, max");
  constexpr float kPixel = 1;
  constexpr float kTwips = 15;
  for (const char* needle : {"Picture4(0)", "Picture4(1)"}) {
    MeasureMoves(needle, form.Find<PictureBox>(QLatin1String(needle)), kPixel);
  }
  for (const char* thumb : {"Label1(0)", "Label1(3)", "Label1(6)"}) {
    MeasureMoves(thumb, form.Find<Label>(QLatin1String(thumb)), kTwips);
  }
}

// Processor seconds of the window's thread, so that those of the tool don't count.
struct Cost {
  double whole;      // from the click to the repaint
  double afterPick;  // from the choice of the file to the repaint
};

class GrowingList {
 public:
  GrowingList() {
    tools_.DurationProbeDoes(PrintCommands("  Duration: 00:00:35.00, start: 0.000000\n"));
    form_.Load();
    form_.Show();
    DoEvents();
  }

  Cost Add() {
    const int before = Sections();
    double picked = 0;
    const double begin = Now(CLOCK_THREAD_CPUTIME_ID);
    {
      const DialogAnswers answers({[&](QDialog& dialog) {
        TypeFile(file_)(dialog);
        picked = Now(CLOCK_THREAD_CPUTIME_ID);
      }});
      add_.MouseUp({.Index = 0, .Button = kLeftButton, .Shift = 0, .X = 1, .Y = 1});
    }
    DoEvents();
    const double end = Now(CLOCK_THREAD_CPUTIME_ID);
    Need(Sections() == before + 1, "a section is missing");
    return {end - begin, end - picked};
  }
  int Sections() const { return list_.ListItems.Count(); }

 private:
  RecordingTools tools_;
  QString file_ = tools_.MakeFile("clip.mp4");
  Form4 form_;
  // Found once, so that the search through 6,000 controls is not measured.
  Label& add_ = form_.Find<Label>("Label1(0)");
  ListView& list_ = form_.Find<ListView>("ListView1");
};

// A list in a process of its own, this program with the number of sections as its argument: two
// lists can then be measured in turn without sharing an application object.
class OtherList {
 public:
  explicit OtherList(int sections)
      : process_(
            {QCoreApplication::applicationFilePath().toStdString(), std::to_string(sections)}) {}

  void AwaitGrown() const { Need(process_.ReadLine() == "grown", "the other list ended"); }
  // Returns the whole cost of one more section, and keeps the cost after the choice.
  double Add() {
    process_.Write("\n");
    Cost cost{};
    std::istringstream figures(process_.ReadLine());
    Need(static_cast<bool>(figures >> cost.whole >> cost.afterPick), "the other list ended");
    afterPick_.push_back(cost.afterPick);
    return cost.whole;
  }
  double MedianAfterPick() const { return Quantile(afterPick_, 0.5); }

 private:
  kelvane::testing::Process process_;
  std::vector<double> afterPick_;
};

// The other process: grows its list, says so, and adds a section for each line of its input.
void BeOtherList(int sections) {
  GrowingList list;
  while (list.Sections() < sections) list.Add();
  std::puts("grown");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
    const Cost cost = list.Add();
    std::printf("%.7f %.7f\n", cost.whole, cost.afterPick);
    std::fflush(stdout);
  }
}

void MeasureGrowth() {
  constexpr int kFew = 20;
  constexpr int kMany = 2000;
  constexpr int kAround = 9;  // sections on either side of these
  constexpr double kMark = 1.5;
  OtherList few(kFew - kAround - 1);
  OtherList many(kMany - kAround - 1);
  few.AwaitGrown();
  many.AwaitGrown();
  Compare("adding a section, its tool left out", 2 * kAround + 1, kMark,
          {"around the 2,000th", [&] { return many.Add(); }},
          {"around the 20th", [&] { return few.Add(); }});
  ReportFigure("the same, without the dialog", many.MedianAfterPick() / few.MedianAfterPick());
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
  const App app("kelvane");
  return ToEnd([&] {
    if (argc == 2) return BeOtherList(std::atoi(argv[1]));
    CompareOpening<Form3>("section window", 1.5);
    MeasureAllMoves();
    CompareOpening<Form4>("joiner window", 1.2);
    MeasureGrowth();
  });
}
