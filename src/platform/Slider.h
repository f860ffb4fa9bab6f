#pragma once

#include "platform/Control.h"

class QSlider;

namespace kelvane {

// A value outside the range is refused.
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
