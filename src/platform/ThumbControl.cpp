#include "platform/ThumbControl.h"

#include <QAbstractSlider>
#include <QScopedValueRollback>

#include "platform/HandlerScope.h"

namespace kelvane {

ThumbControl::ThumbControl(Container& container, const QString& name, QAbstractSlider* thumb)
    : Control(container, name), thumb_(thumb) {
  FillWith(thumb_);
  connect(thumb_, &QAbstractSlider::valueChanged, this, &ThumbControl::ValueChanged);
  connect(thumb_, &QAbstractSlider::sliderReleased, this, &ThumbControl::ThumbReleased);
}

// An assignment raises Change, even while the user drags the thumb.
void ThumbControl::SetThumbValue(int value) {
  if (value < thumb_->minimum() || value > thumb_->maximum()) return;
  const QScopedValueRollback assigning(assigning_, true);
  thumb_->setValue(value);
}

void ThumbControl::SetThumbRange(int min, int max) {
  if (max < min) return;
  const QScopedValueRollback assigning(assigning_, true);
  thumb_->setRange(min, max);
}

void ThumbControl::ValueChanged() {
  if (thumb_->isSliderDown() && !assigning_) {
    Raise(this, Scroll);
    return;
  }
  settledValue_ = thumb_->value();
  Raise(this, Change);
}

void ThumbControl::ThumbReleased() {
  if (thumb_->value() == settledValue_) return;
  settledValue_ = thumb_->value();
  Raise(this, Change);
}

}  // namespace kelvane
