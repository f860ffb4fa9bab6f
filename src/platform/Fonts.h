#pragma once

#include <QFont>
#include <QString>
#include <cmath>

namespace kelvane {

// The height in pixels of a face of so many points, at 96 dots to the inch: a pixel is a pixel of
// the screen, whatever its density.
inline int FontPixels(float points) {
  constexpr float kDotsPerPoint = 96.0F / 72.0F;
  return static_cast<int>(std::lround(points * kDotsPerPoint));
}

// `font`, set as much tighter as `text` needs for `width` pixels and legible text allows.
QFont FittingFont(const QFont& font, const QString& text, int width);

}  // namespace kelvane
