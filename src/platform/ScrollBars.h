#pragma once

#include <cstdint>

#include "platform/Control.h"

class QScrollBar;

namespace kelvane {

// What the two scroll bars share. The range begins at 0 and ends at Max, the value is a signed
// 16-bit integer in it; another value is refused. A smaller Max cuts the value down.
class ScrollBar : public Control {
  Q_OBJECT
 public:
  std::int16_t Value() const;
  std::int16_t Max() const;
  void setValue(std::int16_t value);
  // A negative one is refused.
  void setMax(std::int16_t max);
  void setLargeChange(std::int16_t step);

  // Scroll is raised for each step of a thumb that the user drags, Change for any other change of
  // the value and at the end of a drag that changed it; before an assignment returns.
  std::function<void()> Change;
  std::function<void()> Scroll;

 protected:
  ScrollBar(Container* container, const QString& name, Qt::Orientation orientation);

 private:
  void Assign(void (QScrollBar::*setter)(int), int value);
  void ValueChanged();
  void ThumbReleased();

  QScrollBar* bar_;
  int settledValue_ = 0;  // as of the last Change
  bool assigning_ = false;
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
