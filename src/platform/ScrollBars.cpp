#include "platform/ScrollBars.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include "platform/Container.h"
#include "platform/HandlerScope.h"

namespace kelvane {

ScrollBar::ScrollBar(Container* container, const QString& name, Qt::Orientation orientation)
    : Control(container, name), bar_(new QScrollBar(orientation, this)) {
  bar_->setRange(0, 0);
  // Its menu would serve the queue, and hold up the handler at whose DoEvents it came up.
  bar_->setContextMenuPolicy(Qt::NoContextMenu);
  FillWith(bar_);
  connect(bar_, &QScrollBar::valueChanged, this, &ScrollBar::ValueChanged);
  connect(bar_, &QScrollBar::sliderReleased, this, &ScrollBar::ThumbReleased);
}

std::int16_t ScrollBar::Value() const { return static_cast<std::int16_t>(bar_->value()); }

std::int16_t ScrollBar::Max() const { return static_cast<std::int16_t>(bar_->maximum()); }

void ScrollBar::setValue(std::int16_t value) {
  if (value < 0 || value > bar_->maximum()) return;
  Assign(&QScrollBar::setValue, value);
}

void ScrollBar::setMax(std::int16_t max) {
  if (max < 0) return;
  Assign(&QScrollBar::setMaximum, max);
}

// What the code assigns is no step of the thumb, even while the user holds it.
void ScrollBar::Assign(void (QScrollBar::*setter)(int), int value) {
  const QScopedValueRollback assigning(assigning_, true);
  (bar_->*setter)(value);
}

void ScrollBar::setLargeChange(std::int16_t step) { bar_->setPageStep(step); }

void ScrollBar::ValueChanged() {
  if (bar_->isSliderDown() && !assigning_) {
    Raise(this, Scroll);
    return;
  }
  settledValue_ = bar_->value();
  Raise(this, Change);
}

void ScrollBar::ThumbReleased() {
  if (bar_->value() == settledValue_) return;
  settledValue_ = bar_->value();
  Raise(this, Change);
}

}  // namespace kelvane
