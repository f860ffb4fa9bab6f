// Labels: ampersands, sides and faces.
#include <gtest/gtest.h>

#include <QPainter>

#include "platform/Label.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

TEST(ALabelsLook, ShowsOneAmpersandForTwoAndReadsBackBoth) {
  TestForm form({Design(kLabel, "Label1", {0, 0, 200, 20}).Caption("De-Shake && Stabilize"),
                 Design(kLabel, "Label2", {0, 20, 200, 20}).Caption("De-Shake & Stabilize")});
  form.Open();
  EXPECT_EQ(form.Find<Label>("Label1").Caption(), u"De-Shake && Stabilize"_s);
  const QImage picture = Picture(form);
  EXPECT_EQ(picture.copy(0, 0, 200, 20), picture.copy(0, 20, 200, 20));
  EXPECT_LT(CountOf(picture.copy(0, 0, 200, 20), kPixelForm.backColor), 200 * 20);
}

TEST(ALabelsLook, StandsAtTheRightWhereTheDesignSaysSo) {
  TestForm form({Design(kLabel, "Label1", {0, 0, 200, 20}).Caption("1825").RightAligned()});
  form.Open();
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(label.Alignment(), Qt::AlignRight);
  QImage expected(200, 20, QImage::Format_RGB32);
  expected.fill(QColor(kPixelForm.backColor));
  QPainter painter(&expected);
  painter.setFont(label.font());
  painter.setPen(QColor(kPixelForm.labelColor));
  painter.drawText(expected.rect(), Qt::AlignRight | Qt::AlignTop, u"1825"_s);
  painter.end();
  EXPECT_EQ(Picture(form).copy(0, 0, 200, 20), expected);
}

TEST(ALabelsLook, TakesASizeInPointsAndBoldType) {
  TestForm form({Design(kLabel, "Label1", {0, 0, 20, 20}).Caption(">")});
  form.Open();
  auto& label = form.Find<Label>("Label1");
  const QImage before = Picture(form);
  label.setFontBold(true);
  label.setFontSize(10);
  EXPECT_TRUE(label.FontBold());
  EXPECT_EQ(label.font().pixelSize(), 13);
  EXPECT_EQ(label.font().family(), u"Arial"_s);
  EXPECT_NE(Picture(form), before);
  label.setFontBold(false);
  label.setFontSize(8);
  EXPECT_FALSE(label.FontBold());
  EXPECT_EQ(label.font().pixelSize(), 11);
  EXPECT_EQ(Picture(form), before);
}

}  // namespace
}  // namespace kelvane::testing
