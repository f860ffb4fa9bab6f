// The section window against the main window, from the load to the first paint, and what a move of
// a needle or a slider costs with its repaint. The windows of a pair open one after the other, in
// alternating order, and each pair gives a ratio.
#include <QEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "platform/App.h"
#include "sections/Form3.h"
#include "workspace/Form1.h"

namespace {

using namespace kelvane;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

// Sees a widget's paint events.
class Paints : public QObject {
 public:
  explicit Paints(QWidget& widget) { widget.installEventFilter(this); }
  int Count() const { return count_; }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count_;
    return false;
  }

 private:
  int count_ = 0;
};

double At(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void PrintRow(const char* name, const std::vector<double>& values) {
  std::printf("  %-38s %9.4f %9.4f %9.4f\n", name, At(values, 0), At(values, 0.5), At(values, 1));
}

template <class Window>
double MillisecondsToFirstPaint() {
  const Clock::time_point begin = Clock::now();
  Window window;
  window.Load();
  const Paints paints(window);
  window.Show();
  while (paints.Count() == 0) DoEvents();
  // The controls are painted in the same turn as the window that they lie in.
  const Milliseconds took = Clock::now() - begin;
  window.Unload();
  return took.count();
}

void CompareOpening() {
  constexpr int kPairs = 40;
  constexpr double kTarget = 1.5;
  MillisecondsToFirstPaint<Form1>();
  MillisecondsToFirstPaint<Form3>();
  std::vector<double> sections;
  std::vector<double> main;
  std::vector<double> ratios;
  for (int pair = 0; pair < kPairs; ++pair) {
    const bool sectionsFirst = pair % 2 == 0;
    if (sectionsFirst) sections.push_back(MillisecondsToFirstPaint<Form3>());
    main.push_back(MillisecondsToFirstPaint<Form1>());
    if (!sectionsFirst) sections.push_back(MillisecondsToFirstPaint<Form3>());
    ratios.push_back(sections.back() / main.back());
  }
  std::printf("from the load to the first paint, %d pairs    min    median       max\n", kPairs);
  PrintRow("section window, ms", sections);
  PrintRow("main window, ms", main);
  PrintRow("ratio", ratios);
  std::printf("  median ratio at most %.2f: %s\n", kTarget,
              At(ratios, 0.5) <= kTarget ? "met" : "missed");
}

// To and fro, each move with its handler and all that is painted after it.
void MeasureMoves(const Form3& form, const char* name, Control& control, float units) {
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
  if (form.isVisible() && paints.Count() < kMoves / 2) {
    std::printf("  %s: only %d of %d moves were painted\n", name, paints.Count(), kMoves);
  }
  PrintRow(name, costs);
}

}  // namespace

int main() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const App app("kelvane");
  CompareOpening();

  Form3 form;
  form.Load();
  form.Show();
  DoEvents();
  std::printf("a move, its handler and its repaint             min    median       max\n");
  constexpr float kPixel = 1;
  constexpr float kTwips = 15;
  for (const char* needle : {"Picture4(0)", "Picture4(1)"}) {
    MeasureMoves(form, needle, form.Find<PictureBox>(QLatin1String(needle)), kPixel);
  }
  for (const char* thumb : {"Label1(0)", "Label1(3)", "Label1(6)"}) {
    MeasureMoves(form, thumb, form.Find<Label>(QLatin1String(thumb)), kTwips);
  }
  return 0;
}
