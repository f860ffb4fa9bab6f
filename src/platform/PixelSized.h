#pragma once

#include <QPaintDevice>

namespace kelvane {

// A stock widget of Qt's whose own parts, as the knob of a choice or a scroll bar's
// arrows, have the size that they have on a screen of 96 dots to the inch: the place that the
// design has for them is in pixels, however dense the screen. To be made without a parent: it is
// with the font of its later one that it takes on this density.
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
