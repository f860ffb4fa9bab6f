#pragma once

#include "platform/Control.h"

class QSlider;

namespace kelvane {

// A value outside the range, and a range that ends before it begins, are refused. A range that
// shrinks takes the value along.
class Slider : public Control {
  Q_OBJECT
 public:
  Slider(Container* container, const QString& name);

  int Value() const;
  void setValue(int value);
  void SetRange(int min, int max);

 private:
  QSlider* slider_;
};

}  // namespace kelvane
