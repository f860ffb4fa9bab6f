// Labels: their caption, and how it is painted.
#include "platform/Label.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QtMath>

#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = 0x102030;  // the form's
constexpr QRgb kText = 0xF0E0D0;

class ALabel : public ::testing::Test {
 protected:
  ALabel() {
    form.Open();
    label.Change = [this](int index) {
      events.push_back(std::to_string(index) + ": " + label.Caption().toStdString());
    };
  }

  // As it lies in the form, with what shows through.
  QImage Shown() { return Picture(form).copy(label.geometry()); }

  // The caption or another text at the width's stretch, elided or not, on the form's back colour.
  QImage Drawn(const QString& text, int stretch, Qt::Alignment alignment = Qt::AlignLeft) {
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

  // Letters have widths that are no whole pixels.
  int NaturalWidth() {
    return qCeil(QFontMetricsF(label.font()).horizontalAdvance(label.Caption()));
  }

  TestForm form{{Design(kLabel, "Label1(3)", {10, 10, 200, 20})}};
  Label& label = form.Find<Label>("Label1(3)");
  Events events;
};

TEST_F(ALabel, RaisesChangeOnceForEachChangeOfItsCaptionBeforeTheAssignmentReturns) {
  label.setCaption(u"0,640"_s);
  EXPECT_EQ(events, Events{"3: 0,640"});
  label.setCaption(u"0,640"_s);
  EXPECT_EQ(events, Events{"3: 0,640"});
  label.setCaption(QString());
  label.setCaption(u""_s);
  EXPECT_EQ(events, (Events{"3: 0,640", "3: "}));
}

TEST_F(ALabel, RaisesChangeForACaptionThatDiffersInCaseAlone) {
  label.setCaption(u"pause"_s);
  label.setCaption(u"Pause"_s);
  EXPECT_EQ(events, (Events{"3: pause", "3: Pause"}));
}

TEST_F(ALabel, MayChangeAgainInItsOwnHandler) {
  label.Change = [this](int) {
    events.push_back(label.Caption().toStdString());
    if (label.Caption().size() < 3) label.setCaption(label.Caption() + QLatin1Char('x'));
  };
  label.setCaption(u"x"_s);
  EXPECT_EQ(events, (Events{"x", "xx", "xxx"}));
}

TEST_F(ALabel, WithoutABackColourShowsWhatLiesBehind) {
  EXPECT_EQ(label.BackColor(), std::nullopt);
  EXPECT_EQ(CountOf(Shown(), kBack), 200 * 20);
}

TEST_F(ALabel, WithABackColourIsFilledWithIt) {
  label.setBackColor(0x808080);
  EXPECT_EQ(label.BackColor(), 0x808080U);
  EXPECT_EQ(CountOf(Shown(), 0x808080), 200 * 20);
  label.setBackColor(0x000000);
  EXPECT_EQ(CountOf(Shown(), 0x000000), 200 * 20);
}

TEST_F(ALabel, IsDrawnInItsColourFromTheTopLeft) {
  label.setCaption(u"Width"_s);
  EXPECT_EQ(label.ForeColor(), kText);
  EXPECT_EQ(Shown(), Drawn(u"Width"_s, 100));
  EXPECT_GT(CountOf(Shown(), kBack), 0);
  EXPECT_LT(CountOf(Shown(), kBack), 200 * 20);
}

TEST_F(ALabel, IsDrawnInAnotherColourOnceItHasOne) {
  label.setCaption(u"HHH"_s);
  const int pixels = CountOf(Shown(), kText);
  EXPECT_GT(pixels, 0);
  label.setForeColor(0x00FF00);
  EXPECT_EQ(label.ForeColor(), 0x00FF00U);
  EXPECT_EQ(CountOf(Shown(), kText), 0);
  EXPECT_EQ(CountOf(Shown(), 0x00FF00), pixels);
}

TEST_F(ALabel, MayBeCentred) {
  label.setCaption(u"Options"_s);
  const QImage left = Shown();
  label.setAlignment(Qt::AlignHCenter);
  EXPECT_EQ(label.Alignment(), Qt::AlignHCenter);
  EXPECT_EQ(Shown(), Drawn(u"Options"_s, 100, Qt::AlignHCenter));
  EXPECT_NE(Shown(), left);
}

TEST_F(ALabel, ShowsItsCaptionAsItIs) {
  for (const QString& caption : {u"Cut & paste"_s, u"<b>bold</b>"_s, u"two\nlines"_s, u"50 %"_s}) {
    label.setCaption(caption);
    EXPECT_EQ(label.Caption(), caption);
    EXPECT_EQ(Shown(), Drawn(caption, 100)) << caption.toStdString();
  }
}

TEST_F(ALabel, ThatIsWideEnoughIsNotSetTighter) {
  label.setCaption(u"Preview Cropped Video"_s);
  label.setWidth(static_cast<float>(NaturalWidth()));
  EXPECT_EQ(Shown(), Drawn(label.Caption(), 100));
}

// Down to where it would be hard to read, a caption is whole at every width.
TEST_F(ALabel, ThatIsALittleTooNarrowIsSetTighterAndWhole) {
  for (const char* caption : {"Preview Cropped Video", "Source Video Dimensions (pixels)", "0,640",
                              "Progress: 00.00 % Complete: Status: Getting"}) {
    label.setWidth(290);
    label.setCaption(QLatin1String(caption));
    const int natural = NaturalWidth();
    for (int width = natural - 1; width >= natural * 88 / 100; --width) {
      label.setWidth(static_cast<float>(width));
      const QImage shown = Shown();
      bool whole = false;
      for (int stretch = 99; stretch >= 85 && !whole; --stretch) {
        QFont font = label.font();
        font.setStretch(stretch);
        whole = QFontMetricsF(font).horizontalAdvance(label.Caption()) <= width &&
                shown == Drawn(label.Caption(), stretch);
      }
      EXPECT_TRUE(whole) << caption << " at " << width << " of " << natural;
    }
  }
}

TEST_F(ALabel, ThatIsMuchTooNarrowIsShortenedInItsMiddleAndReadsBackWhole) {
  const QString path = u"/home/user/Videos/a very long name of a video file.mp4"_s;
  label.setCaption(path);
  label.setWidth(120);
  QFont tightest = label.font();
  tightest.setStretch(85);
  const QString elided = QFontMetrics(tightest).elidedText(path, Qt::ElideMiddle, 120);
  ASSERT_NE(elided, path);
  EXPECT_EQ(Shown(), Drawn(elided, 85));
  EXPECT_EQ(label.Caption(), path);
  EXPECT_EQ(events, Events{"3: " + path.toStdString()});
}

TEST_F(ALabel, WithoutAnyWidthIsNoTrouble) {
  label.setCaption(u"Width"_s);
  label.setWidth(0);
  EXPECT_EQ(CountOf(Picture(form), kBack), 300 * 200);
  label.setWidth(1);
  EXPECT_FALSE(Shown().isNull());
}

TEST_F(ALabel, IsPaintedAnewWithItsNewCaption) {
  label.setCaption(u"Pause"_s);
  const QImage before = Shown();
  label.setCaption(u"Paused"_s);
  EXPECT_NE(Shown(), before);
}

}  // namespace
}  // namespace kelvane::testing
