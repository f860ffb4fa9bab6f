#include "sections/Module3.h"

#include "sections/Form3.h"
#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

constexpr QRgb kCentreLine = 0x464646;  // red, green and blue 70
constexpr QRgb kMinorTick = 0xC8C8C8;   // 200
constexpr QRgb kMajorTick = 0xE6E6E6;   // 230

// Lengths are in twips.
struct Tick {
  float spacing;
  float halfHeight;  // above and below the centre line
  QRgb color;
};
constexpr Tick kMinor = {200, 30, kMinorTick};
constexpr Tick kMajor = {1000, 60, kMajorTick};

// Draws nothing at a position that a signed 16-bit integer can't hold, which is far beyond the
// track.
void DrawTick(PictureBox& track, int n, const Tick& tick) {
  const std::optional<std::int16_t> x = ToInteger16(static_cast<float>(n) * tick.spacing);
  if (!x) return;
  const float middle = track.ScaleHeight() / 2;
  track.DrawLine(*x, middle - tick.halfHeight, *x, middle + tick.halfHeight, tick.color);
}

}  // namespace

void DrawOptionScales(Form3& form) {
  for (PictureBox* track : form.Picture2) {
    const float middle = track->ScaleHeight() / 2;
    track->DrawLine(0, middle, track->ScaleWidth(), middle, kCentreLine);
  }
  const std::int16_t last = ToInteger16(form.Picture2(StepSize).ScaleWidth()).value_or(0);
  for (int n = 0; n <= last; ++n) {
    for (PictureBox* track : form.Picture2) {
      DrawTick(*track, n, kMinor);
      DrawTick(*track, n, kMajor);
    }
  }
}

}  // namespace kelvane
