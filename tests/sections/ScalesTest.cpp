// The scales on the sliders' tracks by their pixels.
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr int kTrackWidth = 537;  // 8055 twips
constexpr int kTrackHeight = 25;  // 375 twips
constexpr QRgb kBack = 0xff232323;
constexpr QRgb kCentre = 0xff464646;
constexpr QRgb kMinor = 0xffc8c8c8;
constexpr QRgb kMajor = 0xffe6e6e6;

// In twips and whole numbers: the middle is 187.5 twips or 12.5 pixels down, which is row 12. A
// minor tick reaches from row 10.5 to row 14.5, a major one from 8.5 to 16.5, the last left out.
QImage ExpectedScale() {
  QImage picture(kTrackWidth, kTrackHeight, QImage::Format_RGB32);
  picture.fill(QColor(kBack));
  for (int x = 0; x < kTrackWidth; ++x) picture.setPixel(x, 12, kCentre);
  const auto tick = [&](int twips, int first, int last, QRgb color) {
    const int x = (twips + 7) / 15;
    for (int y = first; y <= last; ++y) picture.setPixel(x, y, color);
  };
  for (int twips = 0; twips < 8055; twips += 200) tick(twips, 10, 13, kMinor);
  for (int twips = 0; twips < 8055; twips += 1000) tick(twips, 8, 15, kMajor);
  // Pass n draws the minor tick at 200 n and then the major one at 1000 n: the minor tick of pass 5
  // k comes over the major one of pass k, but for the first, where the major one comes last.
  for (int twips = 1000; twips < 8055; twips += 1000) tick(twips, 10, 13, kMinor);
  return picture;
}

class Scales : public SectionWindowTest {
 protected:
  QImage TrackOf(int slider) const {
    for (Control* child : Track(slider).findChildren<Control*>()) child->setVisible(false);
    return Picture(Track(slider));
  }
};

TEST_F(Scales, AreDrawnPixelForPixelOnEveryTrack) {
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    EXPECT_EQ(TrackOf(slider), ExpectedScale()) << slider;
  }
}

TEST_F(Scales, Have41MinorAnd9MajorTicks) {
  const QImage track = TrackOf(Zoom);
  int minor = 0;
  int major = 0;
  for (int x = 0; x < kTrackWidth; ++x) {
    if (track.pixel(x, 10) != kBack) ++minor;
    if (track.pixel(x, 8) != kBack) ++major;
  }
  EXPECT_EQ(minor, 41);
  EXPECT_EQ(major, 9);
}

TEST_F(Scales, HaveTheirCentreLineFromEdgeToEdge) {
  const QImage track = TrackOf(StepSize);
  for (int x = 0; x < kTrackWidth; ++x) EXPECT_NE(track.pixel(x, 12), kBack) << x;
  EXPECT_EQ(track.pixel(1, 12), kCentre);
  EXPECT_EQ(track.pixel(kTrackWidth - 1, 12), kCentre);
}

TEST_F(Scales, StayWhenThumbsAreDraggedOverThem) {
  DragTo(Thumb(Smoothing), 4000);
  DragTo(Thumb(Smoothing), 720);
  const QImage dragged = TrackOf(Smoothing);
  EXPECT_EQ(dragged, TrackOf(Accuracy));
}

}  // namespace
}  // namespace kelvane::testing
