#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include "support/Pictures.h"

// What is to be seen in a picture of the screen.
namespace kelvane::desktop {

using testing::AllOf;
using testing::Colours;
using testing::CountOf;
using testing::Difference;
using testing::Extent;
using testing::IsNear;

// The program's own colours, as a user sees them.
constexpr QRgb kDark = 0xff232323;
constexpr QRgb kText = 0xffc0c0c0;
constexpr QRgb kLit = 0xff808080;
constexpr QRgb kFrame = 0xffa0a0a0;
constexpr QRgb kMarker = 0xff00ff00;
constexpr QRgb kProgressBack = 0xff3d464c;
constexpr QRgb kBlack = 0xff000000;

enum class Justify { kLeft, kCentre };

// True if the picture of a label shows exactly this caption. Beyond the caption's end it may show
// what lies behind the label: some captions are drawn shorter than their labels, and these overlap.
bool ShowsCaption(const QImage& label, const QString& caption, QRgb background, Justify justify);

// True if the picture shows this text and nothing else, wherever in it.
bool ShowsText(const QImage& picture, const QString& text, QRgb background);

// True if the picture holds a tip, and this is its text.
bool ShowsTip(const QImage& picture, const QString& text);

// True if every pixel is black or white, give or take what a conversion of colours rounds off, and
// unlike its neighbours beside, above and below it.
bool ShowsChequers(const QImage& picture);

}  // namespace kelvane::desktop
