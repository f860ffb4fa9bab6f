// Labels: their caption, and how it is painted.
#include "platform/Label.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QtMath>

#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = kPixelForm.backColor;
constexpr QRgb kText = kPixelForm.labelColor;

class LabelTest : public ::testing::Test {
 protected:
  LabelTest() {
    form.Open();
    label.Change = [this](int index) {
      events.push_back(std::to_string(index) + ": " + label.Caption().toStdString());
    };
  }

  // Returns the part of the form that the label covers.
  QImage Shown() { return Picture(form).copy(label.geometry()); }

  // Returns a picture of the label's size with the form's back colour and a text as Qt draws it,
  // with the font stretched to `stretch` percent.
  QImage Drawn(const QString& text, int stretch = 100, Qt::Alignment alignment = Qt::AlignLeft) {
    QImage image(label.size(), QImage::Format_RGB32);
    image.fill(kBack);
    QPainter painter(&image);
    QFont font = label.font();
    if (stretch != 100) font.setStretch(stretch);
    painter.setFont(font);
    painter.setPen(QColor(kText));
    painter.drawText(image.rect(), static_cast<int>(alignment | Qt::AlignTop) | Qt::TextSingleLine,
                     text);
    return image;
  }

  // Returns the width of a text at that stretch, rounded up: letters have fractional widths.
  int WidthOf(const QString& text, int stretch = 100) {
    QFont font = label.font();
    font.setStretch(stretch);
    return qCeil(QFontMetricsF(font).horizontalAdvance(text));
  }

  TestForm form{{Design(kLabel, "Label1(3)", {10, 10, 200, 20}),
                 Design(kLabel, "Right", {0, 40, 200, 20}).Caption("1825").RightAligned()}};
  Label& label = form.Find<Label>("Label1(3)");
  Events events;
};

TEST_F(LabelTest, RaisesChangeOnceForEachNewCaptionBeforeTheAssignmentReturns) {
  label.setCaption("pause");
  EXPECT_EQ(events, Events{"3: pause"});
  for (const char* caption : {"pause", "Pause", "", ""}) label.setCaption(caption);
  label.setCaption(QString());
  EXPECT_EQ(events, (Events{"3: pause", "3: Pause", "3: "}));
}

TEST_F(LabelTest, MayChangeItsCaptionAgainInItsOwnHandler) {
  label.Change = [this](int) {
    events.push_back(label.Caption().toStdString());
    if (label.Caption().size() < 3) label.setCaption(label.Caption() + u'x');
  };
  label.setCaption("x");
  EXPECT_EQ(events, (Events{"x", "xx", "xxx"}));
}

TEST_F(LabelTest, IsTransparentUntilItHasABackColour) {
  EXPECT_EQ(CountOf(Shown(), kBack), 200 * 20);
  for (const QRgb color : {0x808080U, 0x000000U}) {
    label.setBackColor(color);
    EXPECT_EQ(CountOf(Shown(), color), 200 * 20);
  }
}

TEST_F(LabelTest, DrawsItsCaptionInItsColourAndAlignment) {
  label.setCaption("Options");
  EXPECT_EQ(Shown(), Drawn("Options"));
  label.setAlignment(Qt::AlignHCenter);
  EXPECT_EQ(Shown(), Drawn("Options", 100, Qt::AlignHCenter));
  EXPECT_EQ(Picture(form).copy(0, 40, 200, 20), Drawn("1825", 100, Qt::AlignRight));
  const int pixels = CountOf(Shown(), kText);
  label.setForeColor(0x00FF00);
  EXPECT_EQ(CountOf(Shown(), kText), 0);
  EXPECT_EQ(CountOf(Shown(), 0x00FF00), pixels);
}

TEST_F(LabelTest, DrawsItsCaptionAsItIsButOneAmpersandForTwo) {
  for (const QString& caption : {u"Cut & paste"_s, u"<b>bold</b>"_s, u"two\nlines"_s, u"50 %"_s}) {
    label.setCaption(caption);
    EXPECT_EQ(Shown(), Drawn(caption)) << caption.toStdString();
  }
  label.setCaption("De-Shake && Stabilize");
  EXPECT_EQ(label.Caption(), u"De-Shake && Stabilize"_s);
  EXPECT_EQ(Shown(), Drawn("De-Shake & Stabilize"));
}

TEST_F(LabelTest, DrawsItsCaptionBoldAndInASizeInPointsIfTheseAreSet) {
  EXPECT_EQ(label.font().family(), "Arial");
  EXPECT_EQ(label.font().pixelSize(), 11);
  label.setCaption(">");
  const QImage before = Shown();
  label.setFontBold(true);
  label.setFontSize(10);
  EXPECT_TRUE(label.FontBold());
  EXPECT_EQ(label.font().pixelSize(), 13);
  EXPECT_EQ(Shown(), Drawn(">"));
  EXPECT_NE(Shown(), before);
  label.setFontBold(false);
  label.setFontSize(8);
  EXPECT_EQ(Shown(), before);
}

TEST_F(LabelTest, IsCopiedWithItsFont) {
  label.setFontBold(true);
  label.setFontSize(10);
  Label& copy = label.Duplicate("Copy");
  EXPECT_TRUE(copy.FontBold());
  EXPECT_EQ(copy.font().pixelSize(), 13);
}

TEST_F(LabelTest, CondensesACaptionThatIsALittleTooWide) {
  for (const char* caption : {"Preview Cropped Video", "Source Video Dimensions (pixels)", "0,640",
                              "Progress: 00.00 % Complete: Status: Getting"}) {
    label.setCaption(caption);
    const int natural = WidthOf(caption);
    label.setWidth(static_cast<float>(natural));
    EXPECT_EQ(Shown(), Drawn(caption)) << caption;
    for (int width = natural - 1; width >= natural * 88 / 100; --width) {
      label.setWidth(static_cast<float>(width));
      const QImage shown = Shown();
      bool whole = false;
      for (int stretch = 99; stretch >= 85 && !whole; --stretch) {
        whole = WidthOf(caption, stretch) <= width && shown == Drawn(caption, stretch);
      }
      EXPECT_TRUE(whole) << caption << " at " << width << " of " << natural;
    }
  }
}

TEST_F(LabelTest, ElidesTheMiddleOfACaptionThatIsMuchTooWide) {
  const QString path = "/home/user/Videos/a very long name of a video file.mp4";
  label.setCaption(path);
  label.setWidth(120);
  QFont tightest = label.font();
  tightest.setStretch(85);
  const QString elided = QFontMetrics(tightest).elidedText(path, Qt::ElideMiddle, 120);
  ASSERT_NE(elided, path);
  EXPECT_EQ(Shown(), Drawn(elided, 85));
  EXPECT_EQ(label.Caption(), path);
}

TEST_F(LabelTest, MayHaveNoWidth) {
  label.setCaption("Width");
  label.setWidth(0);
  EXPECT_EQ(CountOf(Picture(form).copy(0, 0, 300, 40), kBack), 300 * 40);
  label.setWidth(1);
  EXPECT_FALSE(Shown().isNull());
}

TEST(LabelBorder, IsALineOfOnePixelAroundTheCaption) {
  TestForm form(
      {Design(kLabel, "Label1", {10, 10, 50, 17}).Caption("HHHHHHHHHHHHHHHHH").Bordered()});
  form.Open();
  constexpr QRgb kBorderGrey = 0x808080;
  EXPECT_EQ(CountOf(Picture(form), kBorderGrey), 50 * 17 - 48 * 15);
  const QImage inside = Picture(form).copy(11, 11, 48, 15);
  EXPECT_EQ(CountOf(inside, kBorderGrey), 0);
  EXPECT_LT(CountOf(inside, kBack), 48 * 15) << "no caption is drawn";
}

TEST(LabelAutoSize, FitsTheLabelToEachNewCaptionBeforeChangeIsRaised) {
  for (const FormDesign& design : {kPixelForm, TwipForm()}) {
    TestForm form(
        design,
        {Design(kLabel, "Label1", {10, 10, 66, 14}).Caption("Video Details:").SizesItself()});
    auto& label = form.Find<Label>("Label1");
    EXPECT_EQ(label.size(), QSize(66, 14)) << "not the size in the design";
    int widthAtChange = 0;
    label.Change = [&](int) { widthAtChange = label.width(); };
    for (const char* caption : {"Video Details: a.mp4", "", "A && B"}) {
      label.setCaption(caption);
      const int width = qCeil(QFontMetricsF(label.font()).horizontalAdvance(label.SpokenCaption()));
      EXPECT_EQ(label.size(), QSize(width, QFontMetrics(label.font()).height())) << caption;
      EXPECT_EQ(widthAtChange, width) << caption;
    }
  }
}

}  // namespace
}  // namespace kelvane::testing
