#pragma once

#include "platform/Container.h"
#include "platform/MouseArea.h"

namespace kelvane {

// The area of a window below its menu bar, which holds the window's controls.
class ContentArea : public MouseArea, public Container {
  Q_OBJECT
 public:
  ContentArea(QWidget* window, ScaleMode scale) : MouseArea(window, {}), Container(*this, scale) {
    setRole(SpokenRole::kBox);
  }

 protected:
  float MouseUnitsPerPixel() const override { return UnitsPerPixel(); }
  void paintEvent(QPaintEvent* event) override { PaintBackground(*event); }
};

}  // namespace kelvane
