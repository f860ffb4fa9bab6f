#include "platform/Slider.h"

#include <QSlider>

#include "platform/PixelSized.h"

namespace kelvane {

Slider::Slider(Container& container, const QString& name)
    : ThumbControl(container, name, new PixelSized<QSlider>(Qt::Horizontal)) {}

int Slider::Value() const { return slider().value(); }

void Slider::SetRange(int min, int max) { SetThumbRange(min, max); }

}  // namespace kelvane
