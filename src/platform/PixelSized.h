#pragma once

#include <QPaintDevice>

namespace kelvane {

// A Qt widget whose parts, such as a scroll bar's arrows, are as large as on a screen of 96 dots
// per inch, since the design is in pixels. It must be made without a parent and get one later: its
// font takes the density from metric() when the parent is set, and Stock's constructor can't call
// the metric() of this class yet.
template <class Stock>
class PixelSized : public Stock {
 public:
  using Stock::Stock;

 protected:
  int metric(QPaintDevice::PaintDeviceMetric metric) const override {
    constexpr int kDotsPerInch = 96;
    const bool isDensity = metric == QPaintDevice::PdmDpiX || metric == QPaintDevice::PdmDpiY;
    return isDensity ? kDotsPerInch : Stock::metric(metric);
  }
};

}  // namespace kelvane
