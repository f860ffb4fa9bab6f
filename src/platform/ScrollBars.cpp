#include "platform/ScrollBars.h"

#include <QScrollBar>

namespace kelvane {

ScrollBar::ScrollBar(Container* container, const QString& name, Qt::Orientation orientation)
    : ThumbControl(container, name, new QScrollBar(orientation)) {
  SetThumbRange(0, 0);
}

std::int16_t ScrollBar::Value() const { return static_cast<std::int16_t>(thumb().value()); }

std::int16_t ScrollBar::Max() const { return static_cast<std::int16_t>(thumb().maximum()); }

void ScrollBar::setMax(std::int16_t max) { SetThumbRange(0, max); }

void ScrollBar::setLargeChange(std::int16_t step) { thumb().setPageStep(step); }

}  // namespace kelvane
