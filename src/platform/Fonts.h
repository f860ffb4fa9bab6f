#pragma once

#include <cmath>

namespace kelvane {

// The height in pixels of a face of so many points, at 96 dots to the inch: a pixel is a pixel of
// the screen, whatever its density.
inline int FontPixels(float points) {
  constexpr float kDotsPerPoint = 96.0F / 72.0F;
  return static_cast<int>(std::lround(points * kDotsPerPoint));
}

}  // namespace kelvane
