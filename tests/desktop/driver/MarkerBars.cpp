#include "desktop/driver/MarkerBars.h"

namespace kelvane::desktop {

namespace {
constexpr int kThickness = 5;
}

MarkerBars BarsAround(QSize video) {
  return {.left = {0, 0, kThickness, video.height()},
          .top = {0, 0, video.width(), kThickness},
          .right = {video.width() - kThickness, 0, kThickness, video.height()},
          .base = {0, video.height() - kThickness, video.width(), kThickness}};
}

QRect InsideBars(QSize video) {
  return QRect(QPoint(), video).adjusted(kThickness, kThickness, -kThickness, -kThickness);
}

Region RegionOf(const MarkerBars& bars) {
  return {bars.left.left(), bars.top.top(), bars.right.left(), bars.base.top()};
}

QRegion AllOf(const MarkerBars& bars) {
  return QRegion(bars.left) + bars.top + bars.right + bars.base;
}

}  // namespace kelvane::desktop
