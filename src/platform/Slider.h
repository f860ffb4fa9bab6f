#pragma once

#include "platform/ThumbControl.h"

namespace kelvane {

// A horizontal slider. Its range is from 0 to 99 at first.
class Slider : public ThumbControl {
  Q_OBJECT
 public:
  Slider(Container& container, const QString& name);

  int Value() const;
  void setValue(int value) { SetThumbValue(value); }
  // Has no effect if `max` is less than `min`.
  void SetRange(int min, int max);
};

}  // namespace kelvane
