// The ruler by its pixels, against one drawn anew from the rules.
#include <QImage>
#include <QPainter>

#include "joiner/JoinerWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kGround = 0xff404040;
constexpr QRgb kTick = 0xffc0c0c0;
constexpr QRgb kMajorTick = 0xffffffff;

class Ruler : public JoinerWindowTest {
 protected:
  QImage Shown() const { return Picture(Get<PictureBox>("Picture5")); }
  static void Fill(QImage& image, int x, int top, int bottom, QRgb color) {
    for (int y = top; y < bottom; ++y) image.setPixel(x, y, color);
  }
};

TEST_F(Ruler, IsTheBaseLineTheTicksToItsEndAndTheLabelsAsFarAsTheyGo) {
  QImage drawn(7000, 25, QImage::Format_RGB32);
  drawn.fill(QColor(kGround));
  for (int x = 0; x < 7000; ++x) drawn.setPixel(x, 20, kTick);
  // A major tick is drawn before the minor one at its place, whose three pixels cover its upper
  // half; at the ruler's start it is drawn after it.
  for (int x = 0; x < 7000; x += 50) Fill(drawn, x, 0, 6, kMajorTick);
  for (int x = 10; x < 7000; x += 10) Fill(drawn, x, 0, 3, kTick);
  QPainter painter(&drawn);
  QFont font("Arial");
  font.setPixelSize(11);
  painter.setFont(font);
  painter.setPen(QColor(kTick));
  for (int label = 0; label <= 32; ++label) {
    const int seconds = label * 1000;
    const QString text = QStringLiteral("%1:%2:%3")
                             .arg(seconds / 3600, 2, 10, QLatin1Char('0'))
                             .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
                             .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    painter.drawText(label * 100, 6 + QFontMetrics(font).ascent(), text);
  }
  painter.end();
  EXPECT_EQ(Shown(), drawn);
}

TEST_F(Ruler, EndsItsLabelsAt3200PixelsAndItsTicksAtItsEnd) {
  const QImage shown = Shown();
  const auto inked = [&](int left, int right) {
    int count = 0;
    for (int y = 7; y < 19; ++y) {
      for (int x = left; x < right; ++x) count += shown.pixel(x, y) == kGround ? 0 : 1;
    }
    return count;
  };
  EXPECT_GT(inked(0, 50), 0) << "00:00:00";
  EXPECT_GT(inked(3200, 3250), 0) << "08:53:20";
  EXPECT_EQ(inked(3260, 7000), 0);
  EXPECT_EQ(shown.pixel(6990, 2), kTick);
  EXPECT_EQ(shown.pixel(6950, 5), kMajorTick);
  EXPECT_EQ(shown.pixel(6950, 0), kTick);
  EXPECT_EQ(shown.pixel(0, 0), kMajorTick);
}

TEST_F(Ruler, IsDrawnOnceAndKeepsItsPictureThroughResizesAndScrolling) {
  const QImage before = Shown();
  form_->resize(1000, 600);
  Get<HScrollBar>("HScroll1").setValue(500);
  form_->hide();
  form_->Show();
  EXPECT_EQ(Shown(), before);
}

}  // namespace
}  // namespace kelvane::testing
