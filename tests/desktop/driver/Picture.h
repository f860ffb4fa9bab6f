#pragma once

#include <QImage>
#include <QRect>
#include <QString>

// What is to be seen in a picture of the screen.
namespace kelvane::desktop {

// The program's own colours, as a user sees them.
constexpr QRgb kDark = 0xff232323;
constexpr QRgb kText = 0xffc0c0c0;
constexpr QRgb kLit = 0xff808080;
constexpr QRgb kFrame = 0xffa0a0a0;
constexpr QRgb kCanvas = 0xff404040;
constexpr QRgb kMarker = 0xff00ff00;
constexpr QRgb kProgressBack = 0xff3d464c;
constexpr QRgb kBlack = 0xff000000;

enum class Justify { kLeft, kCentre };

// How a label of this size draws a caption.
QImage CaptionPicture(const QString& caption, QSize size, QRgb background, Justify justify);

// True if all of `part` has the one colour.
bool AllOf(const QImage& picture, const QRect& part, QRgb color);
// How many pixels of `part` have the colour.
int CountOf(const QImage& picture, const QRect& part, QRgb color);
// The smallest rectangle that holds all pixels of `part` with the colour.
QRect Extent(const QImage& picture, const QRect& part, QRgb color);

}  // namespace kelvane::desktop
