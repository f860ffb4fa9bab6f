#pragma once

#include <QRect>
#include <QRegion>

namespace kelvane::desktop {

// The four green bars as they lie on the canvas, in pixels of the video.
struct MarkerBars {
  QRect left;
  QRect top;
  QRect right;
  QRect base;
};

// What the read-outs say: the upper left edges of the bars.
struct Region {
  int left;
  int top;
  int right;
  int base;
};

// At the edges of a video of this size.
MarkerBars BarsAround(QSize video);
// The canvas without them.
QRect InsideBars(QSize video);
Region RegionOf(const MarkerBars& bars);
QRegion AllOf(const MarkerBars& bars);

}  // namespace kelvane::desktop
