#pragma once

#include "platform/Control.h"

class QAbstractSlider;

namespace kelvane {

// What scroll bars and sliders share: a whole value in a range, and a thumb that the user drags.
// Assigning a value outside the range has no effect; a range that shrinks clamps the value.
class ThumbControl : public Control {
  Q_OBJECT
 public:
  // Scroll is raised for each step of a thumb that the user drags, Change for any other change of
  // the value and at the end of a drag that changed it; before an assignment returns.
  std::function<void()> Change;
  std::function<void()> Scroll;

 protected:
  // Takes over Qt's `thumb`.
  ThumbControl(Container& container, const QString& name, QAbstractSlider* thumb);

  QAbstractSlider& thumb() const { return *thumb_; }
  void SetThumbValue(int value);
  // Has no effect if `max` is less than `min`.
  void SetThumbRange(int min, int max);

 private:
  void ValueChanged();
  void ThumbReleased();

  QAbstractSlider* thumb_;
  bool assigning_ = false;
  int settledValue_ = 0;  // as of the last Change
};

}  // namespace kelvane
