#include "platform/Slider.h"

#include <QSlider>

#include "platform/Container.h"

namespace kelvane {

Slider::Slider(Container* container, const QString& name)
    : Control(container, name), slider_(new QSlider(Qt::Horizontal, this)) {
  FillWith(slider_);
}

int Slider::Value() const { return slider_->value(); }

void Slider::setValue(int value) {
  if (value < slider_->minimum() || value > slider_->maximum()) return;
  slider_->setValue(value);
}

void Slider::SetRange(int min, int max) {
  if (max < min) return;
  slider_->setRange(min, max);
}

}  // namespace kelvane
