#pragma once

#include <QPalette>

#include "platform/Control.h"

namespace kelvane {

// A control whose inside is a stock widget of Qt's that shows text. The stock widget takes its
// colours from the control; those that nobody has set are the desktop's.
class TextControl : public Control {
  Q_OBJECT
 public:
  // `text` is the role in which the stock widget has the colour of its text.
  TextControl(Container& container, const QString& name, QPalette::ColorRole text = QPalette::Text)
      : Control(container, name), text_(text) {}

  QRgb BackColor() const { return Color(QPalette::Base); }
  void setBackColor(QRgb color) { SetColor(QPalette::Base, color); }
  QRgb ForeColor() const { return Color(text_); }
  void setForeColor(QRgb color) { SetColor(text_, color); }

 private:
  QRgb Color(QPalette::ColorRole role) const { return palette().color(role).rgb() & RGB_MASK; }
  void SetColor(QPalette::ColorRole role, QRgb color) {
    QPalette changed = palette();
    changed.setColor(role, QColor(color));
    setPalette(changed);
  }

  QPalette::ColorRole text_;
};

}  // namespace kelvane
