// The pixels of the time line, compared with a drawing that is computed in whole numbers.
#include <QPainter>
#include <QTime>

#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kLabel = 0xffc0c0c0;
constexpr QRgb kOlive = 0xff808000;

// Returns the whole number nearest to a fraction: of two that are equally near, the even one.
int Nearest(qint64 numerator, qint64 denominator) {
  const qint64 whole = numerator / denominator;
  const qint64 twice = 2 * (numerator % denominator);
  const bool up = twice > denominator || (twice == denominator && whole % 2 == 1);
  return static_cast<int>(up ? whole + 1 : whole);
}

// Draws a time line of `length` pixels, with a label every `tickBase` / 75 and a minor tick every
// `tickBase` / 600 pixels: `length` + 1 of each, of which some may lie beyond the end.
QImage DrawnTimeLine(int length, qint64 tickBase) {
  QImage picture(length, 41, QImage::Format_RGB32);
  picture.fill(QColor(0x404040));
  QFont font("Arial");
  font.setPixelSize(11);
  QPainter painter(&picture);
  painter.setFont(font);
  const auto fill = [&painter](int x, int y, int width, int height, QRgb color) {
    painter.fillRect(x, y, width, height, QColor(color));
  };
  fill(0, 26, length, 1, 0xff808080);
  for (int i = 0; i <= length; ++i) {
    const int major = Nearest(i * tickBase, 75);
    const int minor = Nearest(i * tickBase, 600);
    const qint64 seconds = (2 * i * tickBase + 75) / 150;
    painter.setPen(QColor(kLabel));
    painter.drawText(QRect(major, 7, 200, 20), Qt::AlignLeft | Qt::AlignTop,
                     QTime(0, 0).addSecs(static_cast<int>(seconds % 86400)).toString("hh:mm:ss"));
    fill(major, 0, 1, 6, kLabel);
    fill(minor, 0, 1, 2, kOlive);
    fill(major, 36, 1, 5, kOlive);
    fill(minor, 39, 1, 2, kOlive);
  }
  return picture;
}

// Hides the needles and lines on the strip, and returns its picture.
QImage StripOf(const Form3& form) {
  auto& strip = form.Find<PictureBox>("Picture3(1)");
  for (Control* child : strip.findChildren<Control*>()) child->setVisible(false);
  return Picture(strip);
}

class TimeLine : public SectionWindowTest {};

// A pixel is a second. 1825 is the designed caption of the duration, 4825 the designed text of the
// hidden box that spaces the ticks.
TEST_F(TimeLine, HasTheLengthOf1825SecondsAndTicksSpacedFor4825) {
  EXPECT_EQ(Difference(StripOf(*form_), DrawnTimeLine(1825, 4825)), QRect());
}

TEST_F(TimeLine, IsNotDrawnAgainByScrollingResizingOrTheChoiceOfAVideo) {
  const QImage before = StripOf(*form_);
  Get<TextBox>("Text4").setText("300");
  Click(ArrowButton(TowardsEnd));
  form_->resize(1200, 900);
  const DialogAnswers answers({TypeFile(tools_.MakeFile("a.mp4"))});
  Release(Get<Label>("Label6", 0));
  ServePendingEvents();
  EXPECT_EQ(StripOf(*form_), before);
  EXPECT_EQ(Get<Label>("Label16(2)").Caption(), QString("1825"));
}

TEST(TimeLineTicks, AreSpacedByTheNumberThatTheHiddenTextBeginsWith) {
  struct Case {
    const char* text;
    int tickBase;
    int length;
  };
  for (const auto& [text, tickBase, length] :
       {Case{"none", 0, 1825}, Case{"60", 60, 1825}, Case{"500", 500, 1825},
        Case{"4825 s", 4825, 100}, Case{"100000", 100000, 90500}}) {
    Form3 form;
    form.Find<TextBox>("Text4").setText(text);
    form.Find<Label>("Label16(2)").setCaption(QString::number(length));
    form.Load();
    EXPECT_EQ(Difference(StripOf(form), DrawnTimeLine(length, tickBase)), QRect()) << text;
    form.Unload();
  }
}

}  // namespace
}  // namespace kelvane::testing
