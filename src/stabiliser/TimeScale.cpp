#include "stabiliser/TimeScale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTenthsFrom = 10;  // pixels a second
constexpr double kTenths = 10;

}  // namespace

QString TimeText(double seconds, Precision precision) {
  const auto tenths = std::llround(seconds * kTenths);
  const auto whole = tenths / 10;
  const QString text = u"%1:%2:%3"_s.arg(whole / 3600, 2, 10, QChar('0'))
                           .arg(whole / 60 % 60, 2, 10, QChar('0'))
                           .arg(whole % 60, 2, 10, QChar('0'));
  return precision == Precision::kTenths ? u"%1.%2"_s.arg(text).arg(tenths % 10) : text;
}

TimeScale::TimeScale(double duration, int frameWidth)
    : pixelsPerSecond_(std::max(1, static_cast<int>(frameWidth / std::max(duration, 1.0)))) {
  const double steps = HasTenths() ? kTenths : 1;
  length_ = std::max(std::floor(duration * steps) / steps, 1.0);
}

bool TimeScale::HasTenths() const { return pixelsPerSecond_ >= kTenthsFrom; }

int TimeScale::Width() const { return static_cast<int>(std::lround(PositionOf(length_))); }

double TimeScale::TimeAt(double position) const {
  const double steps = HasTenths() ? kTenths : 1;
  const double time = std::round(position / pixelsPerSecond_ * steps) / steps;
  return std::clamp(time, 0.0, length_);
}

TimeScale::Ticks TimeScale::TicksFor(int labelWidth) const {
  static constexpr std::array<Ticks, 19> kTicks = {{{0.1, 1},
                                                    {0.2, 2},
                                                    {0.5, 5},
                                                    {1, 10},
                                                    {2, 4},
                                                    {5, 5},
                                                    {10, 10},
                                                    {15, 3},
                                                    {30, 6},
                                                    {60, 6},
                                                    {120, 4},
                                                    {300, 5},
                                                    {600, 10},
                                                    {900, 3},
                                                    {1800, 6},
                                                    {3600, 6},
                                                    {7200, 4},
                                                    {18000, 5},
                                                    {36000, 10}}};
  const auto hasRoom = [&](const Ticks& ticks) { return PositionOf(ticks.spacing) >= labelWidth; };
  const auto* const found = std::ranges::find_if(kTicks, hasRoom);
  return found == kTicks.end() ? kTicks.back() : *found;
}

}  // namespace kelvane
