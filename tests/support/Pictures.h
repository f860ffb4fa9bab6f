#pragma once

#include <QImage>
#include <QRect>

class QWidget;

// The pixels of a picture. Colours are compared without their alpha.
namespace kelvane::testing {

// Returns a picture of the widget.
QImage Picture(QWidget& widget);

inline QRgb ColorAt(const QImage& picture, int x, int y) { return picture.pixel(x, y) & RGB_MASK; }
// Returns whether red, green and blue each differ by `tolerance` at most.
bool IsNear(QRgb one, QRgb other, int tolerance);

// How many pixels of `part` have the colour.
int CountOf(const QImage& picture, const QRect& part, QRgb color);
inline int CountOf(const QImage& picture, QRgb color) {
  return CountOf(picture, picture.rect(), color);
}
// True if all of `part` has the one colour.
bool AllOf(const QImage& picture, const QRect& part, QRgb color);
// The smallest rectangle that holds all pixels of `part` with the colour.
QRect Extent(const QImage& picture, const QRect& part, QRgb color);
// The smallest rectangle that holds all pixels of another colour than `background`.
QRect Ink(const QImage& picture, QRgb background);
// The smallest rectangle that holds all pixels in which the two differ; if their sizes differ, the
// one that holds both.
QRect Difference(const QImage& one, const QImage& other);
// How many different colours the picture has.
int Colours(const QImage& picture);

}  // namespace kelvane::testing
