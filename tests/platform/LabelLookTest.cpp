// Labels: ampersands, sides and faces.
#include <gtest/gtest.h>

#include <QPainter>

#include "platform/Label.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

TEST(ALabelsLook, ShowsOneAmpersandForTwoAndReadsBackBoth) {
  TestForm form({{.name = "Label1",
                  .controlClass = ControlClass::kLabel,
                  .place = {0, 0, 3000, 300},
                  .caption = "De-Shake && Stabilize"},
                 {.name = "Label2",
                  .controlClass = ControlClass::kLabel,
                  .place = {0, 300, 3000, 300},
                  .caption = "De-Shake & Stabilize"}});
  form.Open();
  EXPECT_EQ(form.Find<Label>("Label1").Caption(), QStringLiteral("De-Shake && Stabilize"));
  const QImage picture = Picture(form);
  EXPECT_EQ(picture.copy(0, 0, 200, 20), picture.copy(0, 20, 200, 20));
  EXPECT_LT(CountOf(picture.copy(0, 0, 200, 20), kPixelForm.backColor), 200 * 20);
}

TEST(ALabelsLook, StandsAtTheRightWhereTheDesignSaysSo) {
  TestForm form({{.name = "Label1",
                  .controlClass = ControlClass::kLabel,
                  .place = {0, 0, 3000, 300},
                  .caption = "1825",
                  .rightAligned = true}});
  form.Open();
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(label.Alignment(), Qt::AlignRight);
  QImage expected(200, 20, QImage::Format_RGB32);
  expected.fill(QColor(kPixelForm.backColor));
  QPainter painter(&expected);
  painter.setFont(label.font());
  painter.setPen(QColor(kPixelForm.labelColor));
  painter.drawText(expected.rect(), Qt::AlignRight | Qt::AlignTop, QStringLiteral("1825"));
  painter.end();
  EXPECT_EQ(Picture(form).copy(0, 0, 200, 20), expected);
}

TEST(ALabelsLook, TakesASizeInPointsAndBoldType) {
  TestForm form({{.name = "Label1",
                  .controlClass = ControlClass::kLabel,
                  .place = {0, 0, 300, 300},
                  .caption = ">"}});
  form.Open();
  auto& label = form.Find<Label>("Label1");
  const QImage before = Picture(form);
  label.setFontBold(true);
  label.setFontSize(10);
  EXPECT_TRUE(label.FontBold());
  EXPECT_EQ(label.font().pixelSize(), 13);
  EXPECT_EQ(label.font().family(), QStringLiteral("Arial"));
  EXPECT_NE(Picture(form), before);
  label.setFontBold(false);
  label.setFontSize(8);
  EXPECT_FALSE(label.FontBold());
  EXPECT_EQ(label.font().pixelSize(), 11);
  EXPECT_EQ(Picture(form), before);
}

}  // namespace
}  // namespace kelvane::testing
