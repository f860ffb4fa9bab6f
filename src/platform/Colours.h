#pragma once

#include <QColor>

namespace kelvane {

// The windows' colours, red, green, blue.
constexpr QRgb kDark = 0x232323;
constexpr QRgb kLight = 0xC0C0C0;
constexpr QRgb kGrey = 0x808080;
constexpr QRgb kPaleGrey = 0xA0A0A0;
constexpr QRgb kCanvasGrey = 0x404040;
constexpr QRgb kMarkerGreen = 0x00FF00;
constexpr QRgb kStripGreen = 0x008000;
constexpr QRgb kWhite = 0xFFFFFF;
constexpr QRgb kBlack = 0x000000;
constexpr QRgb kProgressBack = 0x3D464C;  // red 61, green 70, blue 76

}  // namespace kelvane
