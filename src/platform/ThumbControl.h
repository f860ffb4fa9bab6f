#pragma once

#include "platform/Control.h"

class QAbstractSlider;

namespace kelvane {

// The base of scroll bars and sliders: an integer in a range, and a thumb that the user drags.
// Assigning a value outside the range has no effect; a range that shrinks clamps the value.
class ThumbControl : public Control {
  Q_OBJECT
 public:
  // Scroll is raised at each step of a drag. Change is raised at the end of a drag that changed the
  // value, and at once at any other change.
  std::function<void()> Change;
  std::function<void()> Scroll;

 protected:
  // Takes ownership of `slider`.
  ThumbControl(Container& container, const QString& name, QAbstractSlider* slider);

  QAbstractSlider& slider() const { return *slider_; }
  void SetThumbValue(int value);
  // Has no effect if `max` is less than `min`.
  void SetThumbRange(int min, int max);

 private:
  void ValueChanged();
  void ThumbReleased();

  QAbstractSlider* slider_;
  bool assigning_ = false;
  int settledValue_ = 0;  // at the last Change
};

}  // namespace kelvane
