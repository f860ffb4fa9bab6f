#include "platform/ScrollBars.h"

#include <QScrollBar>
#include <limits>

#include "platform/PixelSized.h"

namespace kelvane {

ScrollBar::ScrollBar(Container& container, const QString& name, Qt::Orientation orientation)
    : ThumbControl(container, name, new PixelSized<QScrollBar>(orientation)) {
  SetThumbRange(0, std::numeric_limits<std::int16_t>::max());
}

std::int16_t ScrollBar::Value() const { return static_cast<std::int16_t>(slider().value()); }

std::int16_t ScrollBar::Max() const { return static_cast<std::int16_t>(slider().maximum()); }

void ScrollBar::setMax(std::int16_t max) { SetThumbRange(slider().minimum(), max); }

void ScrollBar::setMin(std::int16_t min) { SetThumbRange(min, slider().maximum()); }

void ScrollBar::setLargeChange(std::int16_t step) { slider().setPageStep(step); }

void ScrollBar::setSmallChange(std::int16_t step) { slider().setSingleStep(step); }

void ScrollBar::setTabStop(bool stop) {
  slider().setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
}

}  // namespace kelvane
