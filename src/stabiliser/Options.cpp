#include "stabiliser/Options.h"

#include <algorithm>
#include <cmath>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

int ValueIn(const QString& readOut, int min, int max) {
  return static_cast<int>(std::clamp<double>(std::round(LeadingNumber(readOut)), min, max));
}

// Reads a size of the unsharp filter, which takes only odd ones.
int SizeIn(const QString& readOut) {
  constexpr int kMinSize = 3;
  constexpr int kMaxSize = 15;
  return ValueIn(readOut, kMinSize, kMaxSize) | 1;
}

}  // namespace

StabiliserOptions StabiliserOptions::FromReadOuts(const std::array<QString, 7>& readOuts) {
  constexpr int kMaxHalves = 12;  // lx / 2 + ly / 2: the filter refuses more
  StabiliserOptions options{.stepsize = ValueIn(readOuts[0], 1, 30),
                            .shakiness = ValueIn(readOuts[1], 1, 10),
                            .accuracy = ValueIn(readOuts[2], 1, 15),
                            .zoom = ValueIn(readOuts[3], 1, 100),
                            .smoothing = ValueIn(readOuts[4], 1, 100),
                            .lx = SizeIn(readOuts[5]),
                            .ly = SizeIn(readOuts[6])};
  while (options.lx / 2 + options.ly / 2 > kMaxHalves) {
    (options.lx > options.ly ? options.lx : options.ly) -= 2;
  }
  return options;
}

}  // namespace kelvane
