#pragma once

#include <QPaintDevice>

namespace kelvane {

// A stock widget of Qt's whose parts, such as a scroll bar's arrows, are as large as on a screen of
// 96 dots per inch: their place in the design is in pixels, however dense the screen is. It must be
// made without a parent: it takes on this density with the font of the parent that it is given
// later.
template <class Stock>
class PixelSized : public Stock {
 public:
  using Stock::Stock;

 protected:
  int metric(QPaintDevice::PaintDeviceMetric metric) const override {
    constexpr int kDotsPerInch = 96;
    const bool density = metric == QPaintDevice::PdmDpiX || metric == QPaintDevice::PdmDpiY;
    return density ? kDotsPerInch : Stock::metric(metric);
  }
};

}  // namespace kelvane
