#pragma once

#include <QRgb>

namespace kelvane {

// Colours of the windows, as 0xRRGGBB.
constexpr QRgb kDark = 0x232323;
constexpr QRgb kLight = 0xC0C0C0;
constexpr QRgb kGrey = 0x808080;
constexpr QRgb kCanvasGrey = 0x404040;
constexpr QRgb kWhite = 0xFFFFFF;
constexpr QRgb kBlack = 0x000000;
constexpr QRgb kProgressBack = 0x3D464C;

}  // namespace kelvane
