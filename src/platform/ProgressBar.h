#pragma once

#include "platform/Control.h"

class QProgressBar;

namespace kelvane {

// Range and value have single precision; only the drawing is rounded. Assigning a value outside the
// range, a Min that isn't below Max, a Max that isn't above Min, or a bound that isn't finite has
// no effect. Shrinking the range clamps the value.
class ProgressBar : public Control {
  Q_OBJECT
 public:
  ProgressBar(Container& container, const QString& name);

  float Min() const { return min_; }
  float Max() const { return max_; }
  float Value() const { return value_; }
  void setMin(float min);
  void setMax(float max);
  void setValue(float value);

  void SetColours(QRgb bar, QRgb back);

 private:
  void ShowValue();

  QProgressBar* bar_;
  float min_ = 0;
  float max_ = 100;
  float value_ = 0;
};

}  // namespace kelvane
