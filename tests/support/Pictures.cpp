#include "support/Pictures.h"

#include <QPixmap>
#include <QSet>
#include <QWidget>
#include <cstdlib>

namespace kelvane::testing {
namespace {

// Calls `visit` with the coordinates of each pixel of `part`.
template <class Visit>
void ForEachPixel(const QImage& picture, const QRect& part, Visit visit) {
  const QRect inside = part & picture.rect();
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x) visit(x, y);
  }
}

// Returns the smallest rectangle around all pixels of `part` for which `holds` is true.
template <class Condition>
QRect ExtentIf(const QImage& picture, const QRect& part, Condition holds) {
  QRect extent;
  ForEachPixel(picture, part, [&](int x, int y) {
    if (holds(x, y)) extent |= QRect(x, y, 1, 1);
  });
  return extent;
}

}  // namespace

QImage Picture(QWidget& widget) {
  return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

bool IsNear(QRgb one, QRgb other, int tolerance) {
  return std::abs(qRed(one) - qRed(other)) <= tolerance &&
         std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
         std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

int CountOf(const QImage& picture, const QRect& part, QRgb color) {
  int count = 0;
  ForEachPixel(picture, part, [&](int x, int y) {
    if (ColorAt(picture, x, y) == (color & RGB_MASK)) ++count;
  });
  return count;
}

bool AllOf(const QImage& picture, const QRect& part, QRgb color) {
  return CountOf(picture, part, color) == part.width() * part.height();
}

QRect Extent(const QImage& picture, const QRect& part, QRgb color) {
  return ExtentIf(picture, part,
                  [&](int x, int y) { return ColorAt(picture, x, y) == (color & RGB_MASK); });
}

QRect Ink(const QImage& picture, QRgb background) {
  return ExtentIf(picture, picture.rect(),
                  [&](int x, int y) { return ColorAt(picture, x, y) != (background & RGB_MASK); });
}

QRect Difference(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return one.rect() | other.rect();
  return ExtentIf(one, one.rect(),
                  [&](int x, int y) { return ColorAt(one, x, y) != ColorAt(other, x, y); });
}

int Colours(const QImage& picture) {
  QSet<QRgb> colours;
  ForEachPixel(picture, picture.rect(),
               [&](int x, int y) { colours.insert(ColorAt(picture, x, y)); });
  return static_cast<int>(colours.size());
}

}  // namespace kelvane::testing
