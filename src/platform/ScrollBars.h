#pragma once

#include <cstdint>

#include "platform/ThumbControl.h"

namespace kelvane {

// What the two scroll bars share: a range from 0 to Max, in signed 16-bit integers.
class ScrollBar : public ThumbControl {
  Q_OBJECT
 public:
  std::int16_t Value() const;
  std::int16_t Max() const;
  void setValue(std::int16_t value) { SetThumbValue(value); }
  // A negative one is refused.
  void setMax(std::int16_t max);
  void setLargeChange(std::int16_t step);

 protected:
  ScrollBar(Container* container, const QString& name, Qt::Orientation orientation);
};

class HScrollBar : public ScrollBar {
  Q_OBJECT
 public:
  HScrollBar(Container* container, const QString& name)
      : ScrollBar(container, name, Qt::Horizontal) {}
};

class VScrollBar : public ScrollBar {
  Q_OBJECT
 public:
  VScrollBar(Container* container, const QString& name)
      : ScrollBar(container, name, Qt::Vertical) {}
};

}  // namespace kelvane
