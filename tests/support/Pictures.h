#pragma once

#include <QImage>
#include <QRect>

class QWidget;

// What a picture shows, pixel by pixel. Colours are compared without their alpha.
namespace kelvane::testing {

// The widget as it would be drawn now.
QImage Picture(QWidget& widget);

// Of a pixel, without its alpha.
inline QRgb ColorAt(const QImage& picture, int x, int y) { return picture.pixel(x, y) & RGB_MASK; }
// Whether no part of the colours differs by more than `tolerance`, as what conversions of colours
// round off does.
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
// The smallest rectangle that holds all pixels in which the two differ; all of both where they
// aren't of one size.
QRect Difference(const QImage& one, const QImage& other);
// How many different colours the picture has.
int Colours(const QImage& picture);

}  // namespace kelvane::testing
