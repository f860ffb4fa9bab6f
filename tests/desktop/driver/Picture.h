#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include "support/Pictures.h"

// What a picture of the screen shows.
namespace kelvane::desktop {

using testing::AllOf;
using testing::Colours;
using testing::CountOf;
using testing::Difference;
using testing::Extent;
using testing::IsNear;

// The program's own colours.
constexpr QRgb kDark = 0xff232323;
constexpr QRgb kText = 0xffc0c0c0;
constexpr QRgb kGrey = 0xff808080;
constexpr QRgb kFrame = 0xffa0a0a0;
constexpr QRgb kMarker = 0xff00ff00;
constexpr QRgb kProgressBack = 0xff3d464c;
constexpr QRgb kBlack = 0xff000000;

enum class Justify { kLeft, kCentre };

// Whether the picture of a label shows exactly this caption. Only a few pixels to the right of the
// caption are compared, since another label may overlap the rest.
bool ShowsCaption(const QImage& label, const QString& caption, QRgb background, Justify justify);

// Whether the picture shows this text anywhere, and nothing else.
bool ShowsText(const QImage& picture, const QString& text, QRgb background);

// Whether the pixels alternate between black and white in both directions, up to rounding.
bool ShowsChequers(const QImage& picture);

}  // namespace kelvane::desktop
