#pragma once

#include <QApplication>
#include <QEvent>
#include <QLoggingCategory>
#include <QWidget>
#include <chrono>

#include "Pairs.h"
#include "platform/App.h"
#include "workspace/Form1.h"

namespace kelvane::bench {

// Stops Qt's complaints of what a platform without a screen can't do.
inline void QuietQt() { QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false")); }

// Sees the paint events of a widget and of all that lies in it.
class Paints : public QObject {
 public:
  explicit Paints(const QWidget& widget) : widget_(widget) { qApp->installEventFilter(this); }
  int Count() const { return count_; }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    const auto* painted = qobject_cast<QWidget*>(watched);
    if (painted == &widget_ || widget_.isAncestorOf(painted)) ++count_;
    return false;
  }

 private:
  const QWidget& widget_;
  int count_ = 0;
};

// From a window's making, over its load, to its first paint. The controls are painted in the same
// turn as the window that they lie in.
template <class Window>
double SecondsToFirstPaint() {
  const auto begin = std::chrono::steady_clock::now();
  Window window;
  window.Load();
  const Paints paints(window);
  window.Show();
  while (paints.Count() == 0) DoEvents();
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
  window.Unload();
  return took.count();
}

// A window against the main window, in pairs.
template <class Window>
void CompareOpening(const char* name, double target) {
  constexpr int kPairs = 40;
  SecondsToFirstPaint<Form1>();
  SecondsToFirstPaint<Window>();
  Compare("load to first paint", kPairs, target, {name, SecondsToFirstPaint<Window>},
          {"main window", SecondsToFirstPaint<Form1>});
}

}  // namespace kelvane::bench
