#include "platform/ThumbControl.h"

#include <QAbstractSlider>
#include <QScopedValueRollback>

#include "platform/HandlerScope.h"

namespace kelvane {

ThumbControl::ThumbControl(Container& container, const QString& name, QAbstractSlider* slider)
    : Control(container, name), slider_(slider) {
  FillWith(slider_);
  connect(slider_, &QAbstractSlider::valueChanged, this, &ThumbControl::ValueChanged);
  connect(slider_, &QAbstractSlider::sliderReleased, this, &ThumbControl::ThumbReleased);
}

// An assignment that changes the value raises Change and never Scroll, even while the user drags
// the thumb.
void ThumbControl::SetThumbValue(int value) {
  if (value < slider_->minimum() || value > slider_->maximum()) return;
  const QScopedValueRollback assigning(assigning_, true);
  slider_->setValue(value);
}

void ThumbControl::SetThumbRange(int min, int max) {
  if (max < min) return;
  const QScopedValueRollback assigning(assigning_, true);
  slider_->setRange(min, max);
}

void ThumbControl::ValueChanged() {
  if (slider_->isSliderDown() && !assigning_) {
    Raise(this, Scroll);
    return;
  }
  settledValue_ = slider_->value();
  Raise(this, Change);
}

void ThumbControl::ThumbReleased() {
  if (slider_->value() == settledValue_) return;
  settledValue_ = slider_->value();
  Raise(this, Change);
}

}  // namespace kelvane
