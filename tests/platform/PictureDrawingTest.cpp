// What is drawn on a picture box, by its pixels.
#include <gtest/gtest.h>

#include <QPainter>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"
#include "support/Events.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = 0x404040;
constexpr QRgb kInk = 0x808000;
constexpr QRgb kText = 0xC0C0C0;

class PictureBoxDrawing : public ::testing::Test {
 protected:
  PictureBoxDrawing() {
    form.Open();
    box.SetPrintFont("Arial", 8);
    box.setForeColor(kText);
  }

  QImage Shown() { return Picture(box); }
  QRect Ink() { return InkOf(Shown(), kInk); }

  // In pixels, in twips, and with a border and a label.
  TestForm form{{Design(kPictureBox, "Box", {10, 10, 100, 41}).Color(kBack),
                 Design(kPictureBox, "Twips", {10, 100, 200, 25}).Color(kBack).Twips(),
                 Design(kPictureBox, "Bordered", {150, 10, 100, 41}).Color(kBack).Bordered(),
                 Design(kLabel, "Label1", {10, 0, 10, 37}).In("Bordered").Color(0xFF0000)}};
  PictureBox& box = form.Find<PictureBox>("Box");
  PictureBox& twips = form.Find<PictureBox>("Twips");
  PictureBox& bordered = form.Find<PictureBox>("Bordered");
};

TEST_F(PictureBoxDrawing, LeavesOutTheLastPixelOfALine) {
  struct Case {
    float x1, y1, x2, y2;
    QRect ink;
  };
  for (const Case& given : {Case{10, 26, 20, 26, {10, 26, 10, 1}},
                            {10, 0, 10, 6, {10, 0, 1, 6}},
                            {20, 26, 10, 26, {11, 26, 10, 1}},
                            {10, 6, 10, 0, {10, 1, 1, 6}},
                            {10, 10, 10, 10, {}},
                            {-50, 10, 500, 10, {0, 10, 100, 1}}}) {
    box.DrawLine(given.x1, given.y1, given.x2, given.y2, kInk);
    EXPECT_EQ(Ink(), given.ink) << given.x1 << ',' << given.y1;
    box.Cls();
    EXPECT_EQ(CountOf(Shown(), kBack), 100 * 41);
  }
}

TEST_F(PictureBoxDrawing, RoundsToTheNearestPixelHalfToEven) {
  struct Case {
    float x;
    int pixel;
  };
  for (const auto& [x, pixel] :
       {Case{10.4F, 10}, {10.5F, 10}, {10.6F, 11}, {11.5F, 12}, {12.5F, 12}, {96.5F, 96}}) {
    box.Cls();
    box.DrawLine(x, 0, x, 2, kInk);
    EXPECT_EQ(Ink(), QRect(pixel, 0, 1, 2)) << x;
  }
}

TEST_F(PictureBoxDrawing, HasTheBoxesUnit) {
  EXPECT_EQ(box.ScaleWidth(), 100);
  EXPECT_EQ(box.ScaleHeight(), 41);
  EXPECT_EQ(twips.ScaleWidth(), 3000);
  EXPECT_EQ(twips.ScaleHeight(), 375);
  // From 13.3 to 66.7 pixels, and 12.5 down.
  twips.DrawLine(200, 187.5, 1000, 187.5, kInk);
  EXPECT_EQ(InkOf(Picture(twips), kInk), QRect(13, 12, 67 - 13, 1));
}

TEST_F(PictureBoxDrawing, LeavesNoMarkOutsideTheBoxOrWhereAPlaceIsNoNumber) {
  const QImage empty = Shown();
  for (const float beyond : {100.0F, 5000.0F, -1.0F, -5000.0F, kGreatest, kInfinite, kNotANumber}) {
    box.DrawLine(beyond, 0, beyond, 41, kInk);
    box.DrawLine(0, beyond, 100, beyond, kInk);
  }
  box.DrawLine(0, 10, kNotANumber, 10, kInk);
  for (const auto& [x, y] : {std::pair{kNotANumber, 7.0F},
                             {0.0F, kNotANumber},
                             {100.0F, 7.0F},
                             {-500.0F, 7.0F},
                             {0.0F, 41.0F}}) {
    box.PrintAt(x, y, "00:00:00");
  }
  EXPECT_EQ(Shown(), empty);
}

TEST_F(PictureBoxDrawing, PrintsATextWithItsTopLeftCornerThereOverWhatIsBehind) {
  QImage expected(100, 41, QImage::Format_RGB32);
  expected.fill(QColor(kBack));
  QPainter painter(&expected);
  for (int y = 0; y < 20; ++y) {
    box.DrawLine(0, static_cast<float>(y), 100, static_cast<float>(y), kInk);
    painter.fillRect(0, y, 100, 1, QColor(kInk));
  }
  box.PrintAt(20, 7, "00:01:04");
  QFont font("Arial");
  font.setPixelSize(11);  // eight points
  painter.setFont(font);
  painter.setPen(QColor(kText));
  painter.drawText(QRect(20, 7, 80, 34), Qt::AlignLeft | Qt::AlignTop, "00:01:04");
  painter.end();
  EXPECT_EQ(Shown(), expected);
  EXPECT_GT(CountOf(expected, kText), 0);
}

TEST_F(PictureBoxDrawing, StaysWhileTheBoxIsHiddenOrScrolledOutOfSight) {
  box.DrawLine(0, 0, 100, 0, kInk);
  box.setVisible(false);
  box.setVisible(true);
  box.setLeft(-5000);
  box.setLeft(10);
  EXPECT_EQ(Ink(), QRect(0, 0, 100, 1));
}

TEST_F(PictureBoxDrawing, StaysWhileTheBoxShrinksAndGrows) {
  box.DrawLine(0, 10, 100, 10, kInk);
  box.setWidth(50);
  EXPECT_EQ(Ink(), QRect(0, 10, 50, 1));
  box.DrawLine(0, 11, 100, 11, kInk);
  box.setWidth(200);
  EXPECT_EQ(CountOf(Shown().copy(0, 10, 200, 1), kInk), 100);
  EXPECT_EQ(CountOf(Shown().copy(0, 11, 200, 1), kInk), 50) << "drawn while that was all";
  box.DrawLine(150, 20, 200, 20, kInk);
  EXPECT_EQ(CountOf(Shown().copy(150, 20, 50, 1), kInk), 50);
  EXPECT_EQ(CountOf(Shown(), kBack), 200 * 41 - 100 - 50 - 50);
}

TEST_F(PictureBoxDrawing, ShowsInAWindowThatIsOpenedLater) {
  TestForm other({Design(kPictureBox, "Box", {0, 0, 100, 41}).Color(kBack)});
  other.OnLoad = [&] { other.Find<PictureBox>("Box").DrawLine(0, 0, 100, 0, kInk); };
  other.Open();
  EXPECT_EQ(CountOf(Picture(other), kInk), 100);
}

TEST_F(PictureBoxDrawing, LiesInsideTheBorderAndBehindTheControlsInTheBox) {
  EXPECT_EQ(bordered.ScaleWidth(), 96);
  EXPECT_EQ(bordered.ScaleHeight(), 37);
  bordered.DrawLine(0, 5, 100, 5, kInk);
  EXPECT_EQ(CountOf(Picture(bordered), kInk), 86);
  EXPECT_EQ(CountOf(Picture(bordered).copy(2, 7, 96, 1), kInk), 86);
  EXPECT_EQ(CountOf(Picture(bordered), 0xFF0000), 10 * 37);
}

TEST_F(PictureBoxDrawing, IsClearedByABackColourEvenTheSame) {
  for (const QRgb color : {0x808080U, 0x808080U}) {
    box.DrawLine(0, 5, 30, 5, kInk);
    ASSERT_EQ(CountOf(Shown(), kInk), 30);
    box.setBackColor(color);
    EXPECT_EQ(CountOf(Shown(), color), 100 * 41);
  }
}

TEST_F(PictureBoxDrawing, IsShownAtOnceByRefresh) {
  PumpOnce();
  const PaintsOf paints("Box");
  box.DrawLine(0, 5, 30, 5, kInk);
  EXPECT_EQ(paints.Count(), 0);
  box.Refresh();
  EXPECT_EQ(paints.Count(), 1);
}

}  // namespace
}  // namespace kelvane::testing
