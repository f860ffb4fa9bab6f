#include "desktop/driver/MarkerBars.h"

namespace kelvane::desktop {

MarkerBars BarsAround(QSize video) {
  constexpr int kThickness = 5;
  return {.left = {0, 0, kThickness, video.height()},
          .top = {0, 0, video.width(), kThickness},
          .right = {video.width() - kThickness, 0, kThickness, video.height()},
          .base = {0, video.height() - kThickness, video.width(), kThickness}};
}

Region RegionOf(const MarkerBars& bars) {
  return {bars.left.left(), bars.top.top(), bars.right.left(), bars.base.top()};
}

QRegion AllOf(const MarkerBars& bars) {
  return QRegion(bars.left) + bars.top + bars.right + bars.base;
}

}  // namespace kelvane::desktop
