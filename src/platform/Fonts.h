#pragma once

#include <QFont>
#include <QString>
#include <cmath>

namespace kelvane {

// Returns the height in pixels of a font of `points` points at 96 dots per inch, whatever the
// density of the screen.
inline int FontPixels(float points) {
  constexpr float kDotsPerPoint = 96.0F / 72.0F;
  return static_cast<int>(std::lround(points * kDotsPerPoint));
}

// Returns `font`, condensed as far as `text` needs to fit into `width` pixels, but not to less than
// 85 percent.
QFont FittingFont(const QFont& font, const QString& text, int width);

}  // namespace kelvane
