#pragma once

#include <QString>

namespace kelvane {

enum class Precision { kSeconds, kTenths };

// "hh:mm:ss" or, with tenths, "hh:mm:ss.t". Hours don't wrap. `seconds` isn't negative; it is
// rounded to tenths, and for kSeconds then down to a second.
QString TimeText(double seconds, Precision precision);

// How a time line shows a video's times. Times are in seconds, positions in pixels of the time
// line. Its times are whole steps: seconds or, from ten pixels a second on, tenths.
class TimeScale {
 public:
  // A pixel is a second. `seconds` is the length of the time line.
  explicit TimeScale(int seconds) : length_(seconds) {}
  // Fits a video of that duration, more than 0, into a frame of that width: a second has the
  // largest whole number of pixels with which the video fits, at least one. A video shorter than a
  // second has a time line of a second.
  TimeScale(double duration, int frameWidth);

  int PixelsPerSecond() const { return pixelsPerSecond_; }
  bool HasTenths() const;
  // The last time, a whole number of steps.
  double Length() const { return length_; }
  int Width() const;
  // The nearest whole step, from 0 to Length.
  double TimeAt(double position) const;
  double PositionOf(double time) const { return time * pixelsPerSecond_; }
  // The time as text, with tenths if HasTenths.
  QString Text(double time) const {
    return TimeText(time, HasTenths() ? Precision::kTenths : Precision::kSeconds);
  }
  // The time from one labelled tick to the next, such as 0.5, 15 or 300, and the number of parts
  // into which unlabelled ones divide it. Labelled ticks are at least `labelWidth` pixels apart.
  struct Ticks {
    double spacing;
    int parts;
  };
  Ticks TicksFor(int labelWidth) const;

 private:
  int pixelsPerSecond_ = 1;
  double length_;
};

}  // namespace kelvane
