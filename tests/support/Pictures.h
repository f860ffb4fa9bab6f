#pragma once

#include <QImage>
#include <QRect>

class QWidget;

// What a widget shows, by its pixels.
namespace kelvane::testing {

// The widget as it would be drawn now.
QImage Picture(QWidget& widget);
// Of a pixel, without its alpha.
QRgb ColorAt(const QImage& picture, int x, int y);
// How many pixels of the picture have the colour.
int CountOf(const QImage& picture, QRgb color);
// Where the picture has the colour, empty if nowhere. The test fails if the place isn't full of it.
QRect InkOf(const QImage& picture, QRgb color);

}  // namespace kelvane::testing
