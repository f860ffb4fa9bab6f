#include "platform/ProgressBar.h"

#include <QProgressBar>
#include <algorithm>
#include <cmath>

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {
constexpr int kSteps = 100000;  // more than a screen has columns
}

ProgressBar::ProgressBar(Container& container, const QString& name)
    : Control(container, name), bar_(new QProgressBar) {
  bar_->setTextVisible(false);
  bar_->setRange(0, kSteps);
  bar_->setValue(0);
  FillWith(bar_);
}

void ProgressBar::setMin(float min) {
  if (!(min < max_) || !std::isfinite(min)) return;
  min_ = min;
  value_ = std::max(value_, min_);
  ShowValue();
}

void ProgressBar::setMax(float max) {
  if (!(max > min_) || !std::isfinite(max)) return;
  max_ = max;
  value_ = std::min(value_, max_);
  ShowValue();
}

void ProgressBar::setValue(float value) {
  if (!(value >= min_ && value <= max_)) return;
  value_ = value;
  ShowValue();
}

void ProgressBar::ShowValue() {
  // In double precision, since Max - Min may overflow a float.
  const double part = (double{value_} - min_) / (double{max_} - min_);
  bar_->setValue(static_cast<int>(std::lround(part * kSteps)));
}

void ProgressBar::SetColours(QRgb bar, QRgb back) {
  bar_->setStyleSheet(
      u"QProgressBar { border: none; background-color: %1; }"
      "QProgressBar::chunk { background-color: %2; }"_s.arg(QColor(back).name(),
                                                            QColor(bar).name()));
}

}  // namespace kelvane
