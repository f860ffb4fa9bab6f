#pragma once

#include <QPalette>

#include "platform/Control.h"

namespace kelvane {

// A control that is filled by a Qt widget that shows text. The Qt widget takes its colours from the
// control; colours that haven't been set are the desktop's.
class TextControl : public Control {
  Q_OBJECT
 public:
  // `textRole` is the palette role of the Qt widget's text.
  TextControl(Container& container, const QString& name,
              QPalette::ColorRole textRole = QPalette::Text)
      : Control(container, name), textRole_(textRole) {}

  QRgb BackColor() const { return Color(QPalette::Base); }
  void setBackColor(QRgb color) { SetColor(QPalette::Base, color); }
  QRgb ForeColor() const { return Color(textRole_); }
  void setForeColor(QRgb color) { SetColor(textRole_, color); }

 private:
  QRgb Color(QPalette::ColorRole role) const { return palette().color(role).rgb() & RGB_MASK; }
  void SetColor(QPalette::ColorRole role, QRgb color) {
    QPalette changed = palette();
    changed.setColor(role, QColor(color));
    setPalette(changed);
  }

  QPalette::ColorRole textRole_;
};

}  // namespace kelvane
