#include "support/Pictures.h"

#include <gtest/gtest.h>

#include <QPixmap>
#include <QWidget>

namespace kelvane::testing {

QImage Picture(QWidget& widget) {
  return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QRgb ColorAt(const QImage& picture, int x, int y) { return picture.pixel(x, y) & RGB_MASK; }

int CountOf(const QImage& picture, QRgb color) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (ColorAt(picture, x, y) == color) ++count;
    }
  }
  return count;
}

QRect InkOf(const QImage& picture, QRgb color) {
  QRect ink;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (ColorAt(picture, x, y) == color) ink |= QRect(x, y, 1, 1);
    }
  }
  EXPECT_EQ(CountOf(picture, color), ink.width() * ink.height());
  return ink;
}

}  // namespace kelvane::testing
