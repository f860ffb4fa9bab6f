// The section window against the main window, from the load to the first paint, and what a move of
// a needle or a slider costs with its repaint. The windows of a pair open one after the other, in
// alternating order, and each pair gives a ratio.
#include <chrono>
#include <cstdio>
#include <vector>

#include "FirstPaint.h"
#include "Pairs.h"
#include "platform/App.h"
#include "sections/Form3.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

// To and fro, each move with its handler and all that is painted after it.
void MeasureMoves(const char* name, Control& control, float units) {
  constexpr int kMoves = 2000;
  constexpr int kTurn = 200;
  const auto at = [&](float x) {
    return MouseEvent{
        .Index = control.Index(), .Button = kelvane::kLeftButton, .Shift = 0, .X = x, .Y = 0};
  };
  const Paints paints(control);
  control.MouseDown(at(0));
  std::vector<double> costs;
  for (int move = 0; move < kMoves; ++move) {
    const float step = move % (2 * kTurn) < kTurn ? units : -units;
    const Clock::time_point begin = Clock::now();
    control.MouseMove(at(step));
    DoEvents();
    costs.push_back(Milliseconds(Clock::now() - begin).count());
  }
  Need(paints.Count() >= kMoves / 2, "moves aren't painted");
  PrintRow(std::string(name) + ", ms", costs);
  PrintFigure(std::string("a move of ") + name + " with its repaint", At(costs, 0.5), " ms");
}

void Run() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QuietQt();
  const App app("kelvane");
  CompareOpening<Form3>("section window", 1.5);

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

}  // namespace

int main() { return ToEnd(Run); }
