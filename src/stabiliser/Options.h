#pragma once

#include <QString>
#include <array>

namespace kelvane {

// What the filters of both passes take. Each member stands for one slider.
struct StabiliserOptions {
  int stepsize;   // 1 to 30
  int shakiness;  // 1 to 10
  int accuracy;   // 1 to 15
  int zoom;       // 1 to 100, in per cent
  int smoothing;  // 1 to 100
  int lx;         // 3 to 15, odd
  int ly;         // 3 to 15, odd; lx / 2 + ly / 2 is at most 12, the filter's limit

  // Reads the sliders' read-outs, in the sliders' order, and brings each value into its range.
  static StabiliserOptions FromReadOuts(const std::array<QString, 7>& readOuts);
  // The values in the sliders' order.
  std::array<int, 7> Values() const {
    return {stepsize, shakiness, accuracy, zoom, smoothing, lx, ly};
  }
};

}  // namespace kelvane
