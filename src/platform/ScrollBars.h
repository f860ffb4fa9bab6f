#pragma once

#include <cstdint>

#include "platform/ThumbControl.h"

namespace kelvane {

// What the two scroll bars share: a range in signed 16-bit integers from Min, 0 at first, to Max,
// 32767 at first.
class ScrollBar : public ThumbControl {
  Q_OBJECT
 public:
  std::int16_t Value() const;
  std::int16_t Max() const;
  void setValue(std::int16_t value) { SetThumbValue(value); }
  // Assigning a Max below Min, or a Min above Max, has no effect.
  void setMax(std::int16_t max);
  void setMin(std::int16_t min);
  // The steps of a click beside the thumb, and of one on an arrow.
  void setLargeChange(std::int16_t step);
  void setSmallChange(std::int16_t step);
  // Whether the Tab key comes to it.
  void setTabStop(bool stop);

 protected:
  ScrollBar(Container& container, const QString& name, Qt::Orientation orientation);
};

class HScrollBar : public ScrollBar {
  Q_OBJECT
 public:
  HScrollBar(Container& container, const QString& name)
      : ScrollBar(container, name, Qt::Horizontal) {}
};

class VScrollBar : public ScrollBar {
  Q_OBJECT
 public:
  VScrollBar(Container& container, const QString& name)
      : ScrollBar(container, name, Qt::Vertical) {}
};

}  // namespace kelvane
