// What is drawn on a picture box, by its pixels.
#include <gtest/gtest.h>

#include <QPainter>
#include <limits>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = 0x404040;
constexpr QRgb kInk = 0x808000;

class ADrawing : public ::testing::Test {
 protected:
  ADrawing() { form.Open(); }

  QImage Shown() { return Picture(box); }
  QRect Ink() { return InkOf(Shown(), kInk); }

  // 100 by 41 pixels, in pixels; another in twips.
  TestForm form{{Design(kPictureBox, "Box", {10, 10, 100, 41}).Color(kBack),
                 Design(kPictureBox, "Twips", {10, 100, 200, 25}).Color(kBack).Twips()}};
  PictureBox& box = form.Find<PictureBox>("Box");
  PictureBox& twips = form.Find<PictureBox>("Twips");
};

TEST_F(ADrawing, OfALineLeavesOutItsLastPixel) {
  box.DrawLine(10, 26, 20, 26, kInk);
  EXPECT_EQ(Ink(), QRect(10, 26, 10, 1));
}

TEST_F(ADrawing, OfAnUprightLineLeavesOutItsLastPixel) {
  box.DrawLine(10, 0, 10, 6, kInk);
  EXPECT_EQ(Ink(), QRect(10, 0, 1, 6));
}

TEST_F(ADrawing, OfALineThatRunsBackwardsLeavesOutThePixelWhereItEnds) {
  box.DrawLine(20, 26, 10, 26, kInk);
  EXPECT_EQ(Ink(), QRect(11, 26, 10, 1));
  box.Cls();
  box.DrawLine(10, 6, 10, 0, kInk);
  EXPECT_EQ(Ink(), QRect(10, 1, 1, 6));
}

TEST_F(ADrawing, OfALineOfNoLengthLeavesNoMark) {
  box.DrawLine(10, 10, 10, 10, kInk);
  EXPECT_EQ(Ink(), QRect());
}

TEST_F(ADrawing, RoundsToTheNearestPixelHalfToEven) {
  struct Row {
    float x;
    int pixel;
  };
  for (const auto& [x, pixel] : std::vector<Row>{
           {10.4F, 10}, {10.5F, 10}, {10.6F, 11}, {11.5F, 12}, {12.5F, 12}, {96.5F, 96}}) {
    box.Cls();
    box.DrawLine(x, 0, x, 2, kInk);
    EXPECT_EQ(Ink(), QRect(pixel, 0, 1, 2)) << x;
  }
}

TEST_F(ADrawing, CountsInTheBoxsUnits) {
  twips.DrawLine(200, 187.5, 1000, 187.5, kInk);
  const QImage picture = Picture(twips);
  // 13.3 to 66.7 pixels; 12.5 down.
  EXPECT_EQ(CountOf(picture, kInk), 67 - 13);
  EXPECT_EQ(CountOf(picture.copy(13, 12, 67 - 13, 1), kInk), 67 - 13);
}

TEST_F(ADrawing, OutsideTheBoxLeavesNoMark) {
  const QImage empty = Shown();
  for (const float beyond : {100.0F, 5000.0F, -1.0F, -5000.0F, std::numeric_limits<float>::max(),
                             std::numeric_limits<float>::infinity()}) {
    box.DrawLine(beyond, 0, beyond, 41, kInk);
    box.DrawLine(0, beyond, 100, beyond, kInk);
  }
  constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
  box.DrawLine(kNoNumber, 0, kNoNumber, 41, kInk);
  box.DrawLine(0, kNoNumber, 100, kNoNumber, kInk);
  box.DrawLine(0, 10, kNoNumber, 10, kInk);
  box.PrintAt(kNoNumber, 7, u"00:00:00"_s);
  box.PrintAt(0, kNoNumber, u"00:00:00"_s);
  box.PrintAt(100, 7, u"00:00:00"_s);
  box.PrintAt(-500, 7, u"00:00:00"_s);
  box.PrintAt(0, 41, u"00:00:00"_s);
  EXPECT_EQ(Shown(), empty);
}

TEST_F(ADrawing, IsCutOffAtTheEdges) {
  box.DrawLine(-50, 10, 500, 10, kInk);
  EXPECT_EQ(Ink(), QRect(0, 10, 100, 1));
}

// The expected picture is drawn anew, letter for letter.
TEST_F(ADrawing, OfATextStandsWithItsTopLeftCornerThere) {
  box.SetPrintFont(u"Arial"_s, 8);
  box.setForeColor(0xC0C0C0);
  box.PrintAt(20, 7, u"00:01:04"_s);
  QImage expected(100, 41, QImage::Format_RGB32);
  expected.fill(QColor(kBack));
  QFont font(u"Arial"_s);
  font.setPixelSize(11);  // eight points
  QPainter painter(&expected);
  painter.setFont(font);
  painter.setPen(QColor(0xC0C0C0));
  painter.drawText(QRect(20, 7, 80, 34), Qt::AlignLeft | Qt::AlignTop, u"00:01:04"_s);
  painter.end();
  EXPECT_EQ(Shown(), expected);
  EXPECT_GT(CountOf(expected, 0xC0C0C0), 0);
  EXPECT_EQ(CountOf(expected.copy(0, 0, 100, 7), kBack), 700);
}

TEST_F(ADrawing, OfATextLetsWhatIsBehindShowThrough) {
  for (float y = 0; y < 41; ++y) box.DrawLine(0, y, 100, y, kInk);
  box.SetPrintFont(u"Arial"_s, 8);
  box.setForeColor(0xC0C0C0);
  box.PrintAt(0, 0, u"0"_s);
  EXPECT_EQ(CountOf(Shown(), kBack), 0);
  EXPECT_GT(CountOf(Shown(), kInk), 0);
}

TEST_F(ADrawing, GoesWithCls) {
  const QImage empty = Shown();
  box.DrawLine(0, 0, 100, 0, kInk);
  EXPECT_NE(Shown(), empty);
  box.Cls();
  EXPECT_EQ(Shown(), empty);
}

TEST_F(ADrawing, StaysWhileTheBoxIsHiddenOrGoneFromSight) {
  box.DrawLine(0, 0, 100, 0, kInk);
  box.setVisible(false);
  box.setVisible(true);
  box.setLeft(-5000);
  box.setLeft(10);
  EXPECT_EQ(Ink(), QRect(0, 0, 100, 1));
}

TEST_F(ADrawing, StaysWhileTheBoxShrinksAndGrows) {
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

TEST_F(ADrawing, MadeBeforeTheWindowIsThereShowsInIt) {
  TestForm other({Design(kPictureBox, "Box", {0, 0, 100, 41}).Color(kBack)});
  other.OnLoad = [&] { other.Find<PictureBox>("Box").DrawLine(0, 0, 100, 0, kInk); };
  other.Open();
  EXPECT_EQ(CountOf(Picture(other), kInk), 100);
}

TEST_F(ADrawing, LiesBehindTheControlsInTheBox) {
  TestForm other({Design(kPictureBox, "Box", {0, 0, 100, 41}).Color(kBack),
                  Design(kLabel, "Label1", {10, 0, 10, 41}).In("Box").Color(0xFF0000)});
  other.Open();
  other.Find<PictureBox>("Box").DrawLine(0, 5, 100, 5, kInk);
  EXPECT_EQ(CountOf(Picture(other), kInk), 90);
  EXPECT_EQ(CountOf(Picture(other), 0xFF0000), 10 * 41);
}

TEST_F(ADrawing, InABorderedBoxBeginsInsideTheBorder) {
  TestForm other({Design(kPictureBox, "Box", {0, 0, 100, 41}).Color(kBack).Bordered()});
  other.Open();
  auto& bordered = other.Find<PictureBox>("Box");
  EXPECT_EQ(bordered.ScaleWidth(), 96);
  EXPECT_EQ(bordered.ScaleHeight(), 37);
  bordered.DrawLine(0, 0, 100, 0, kInk);
  EXPECT_EQ(CountOf(Picture(other), kInk), 96);
  EXPECT_EQ(CountOf(Picture(other).copy(2, 2, 96, 1), kInk), 96);
}

TEST_F(ADrawing, KnowsTheSizeOfTheInsideInTheBoxsUnits) {
  EXPECT_EQ(box.ScaleWidth(), 100);
  EXPECT_EQ(box.ScaleHeight(), 41);
  EXPECT_EQ(twips.ScaleWidth(), 3000);
  EXPECT_EQ(twips.ScaleHeight(), 375);
}

}  // namespace
}  // namespace kelvane::testing
