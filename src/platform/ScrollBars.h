#pragma once

#include <cstdint>

#include "platform/ThumbControl.h"

namespace kelvane {

// The base of both scroll bars. The range is from Min to Max, 0 and 32767 at first.
class ScrollBar : public ThumbControl {
  Q_OBJECT
 public:
  std::int16_t Value() const;
  std::int16_t Max() const;
  // A value outside the range has no effect.
  void setValue(std::int16_t value) { SetThumbValue(value); }
  // Assigning a Max below Min, or a Min above Max, has no effect.
  void setMax(std::int16_t max);
  void setMin(std::int16_t min);
  // The steps of a click beside the thumb, and of one on an arrow. Both must be positive.
  void setLargeChange(std::int16_t step);
  void setSmallChange(std::int16_t step);
  // Sets whether the Tab key can give the bar the focus.
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
