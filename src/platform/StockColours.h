#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

namespace kelvane {

// The colours of a stock widget of Qt's that shows text on a ground.

inline QRgb GroundOf(const QWidget& stock) {
  return stock.palette().color(QPalette::Base).rgb() & RGB_MASK;
}

inline QRgb TextColourOf(const QWidget& stock) {
  return stock.palette().color(QPalette::Text).rgb() & RGB_MASK;
}

inline void SetStockColours(QWidget& stock, QRgb ground, QRgb text) {
  QPalette colours = stock.palette();
  colours.setColor(QPalette::Base, QColor(ground));
  colours.setColor(QPalette::Text, QColor(text));
  stock.setPalette(colours);
}

}  // namespace kelvane
