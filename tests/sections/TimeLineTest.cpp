// The time line by its pixels, against a drawing made anew from whole numbers.
#include <QPainter>
#include <set>

#include "sections/SectionWindowTest.h"
#include "shared/TextHelpers.h"

namespace kelvane::testing {
namespace {

constexpr int kLength = 1825;
constexpr int kHeight = 41;
constexpr QRgb kBack = 0xff404040;
constexpr QRgb kBase = 0xff808080;
constexpr QRgb kLabel = 0xffc0c0c0;
constexpr QRgb kOlive = 0xff808000;

// The whole number nearest to a fraction, half to even.
int Nearest(qint64 numerator, qint64 denominator) {
  const qint64 whole = numerator / denominator;
  const qint64 twice = 2 * (numerator % denominator);
  const bool up = twice > denominator || (twice == denominator && whole % 2 == 1);
  return static_cast<int>(up ? whole + 1 : whole);
}

std::string TimeOf(qint64 numerator, qint64 denominator) {
  const auto seconds = static_cast<int>((2 * numerator + denominator) / (2 * denominator));
  return QStringLiteral("%1:%2:%3")
      .arg(seconds / 3600 % 24, 2, 10, QLatin1Char('0'))
      .arg(seconds / 60 % 60, 2, 10, QLatin1Char('0'))
      .arg(seconds % 60, 2, 10, QLatin1Char('0'))
      .toStdString();
}

class ExpectedTimeLine {
 public:
  ExpectedTimeLine(int length, int tickBase)
      : picture_(length, kHeight, QImage::Format_RGB32), tickBase_(tickBase) {
    picture_.fill(QColor(kBack));
    Level(26, kBase);
    for (int pass = 0; pass <= length; ++pass) Pass(pass);
  }

  const QImage& picture() const { return picture_; }

 private:
  void Pass(qint64 pass) {
    const int major = Nearest(pass * tickBase_, 75);
    const int minor = Nearest(pass * tickBase_, 600);
    if (major < picture_.width()) Text(major, TimeOf(pass * tickBase_, 75));
    Upright(major, 0, 5, kLabel);
    Upright(minor, 0, 1, kOlive);
    Upright(major, 36, 40, kOlive);
    Upright(minor, 39, 40, kOlive);
  }

  void Level(int y, QRgb color) {
    for (int x = 0; x < picture_.width(); ++x) picture_.setPixel(x, y, color);
  }
  // From the first to the last row, both of them coloured.
  void Upright(int x, int first, int last, QRgb color) {
    if (x >= picture_.width()) return;
    for (int y = first; y <= last; ++y) picture_.setPixel(x, y, color);
  }
  void Text(int x, const std::string& text) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(11);
    QPainter painter(&picture_);
    painter.setFont(font);
    painter.setPen(QColor(kLabel));
    painter.drawText(QRect(x, 7, 200, 20), Qt::AlignLeft | Qt::AlignTop,
                     QString::fromStdString(text));
  }

  QImage picture_;
  int tickBase_;
};

// The strip alone, without the needles and lines on it.
QImage StripOf(const Form3& form) {
  auto& strip = form.Find<PictureBox>("Picture3(1)");
  for (Control* child : strip.findChildren<Control*>()) child->setVisible(false);
  return Picture(strip);
}

// The first place at which two pictures of one size differ; (-1, -1) if none.
QPoint FirstDifference(const QImage& one, const QImage& other) {
  for (int x = 0; x < one.width(); ++x) {
    for (int y = 0; y < one.height(); ++y) {
      if (one.pixel(x, y) != other.pixel(x, y)) return {x, y};
    }
  }
  return {-1, -1};
}

void ExpectSamePicture(const QImage& found, const QImage& expected) {
  ASSERT_EQ(found.size(), expected.size());
  const QPoint place = FirstDifference(found, expected);
  EXPECT_EQ(place.x(), -1) << "at " << place.x() << ", " << place.y() << ": found "
                           << Hex(found.pixel(place)) << ", expected "
                           << Hex(expected.pixel(place));
}

class TimeLine : public SectionWindowTest {
 protected:
  // The columns in which a row of the strip has the colour.
  static std::vector<int> Columns(const QImage& strip, int row, QRgb color) {
    std::vector<int> columns;
    for (int x = 0; x < strip.width(); ++x) {
      if (strip.pixel(x, row) == color) columns.push_back(x);
    }
    return columns;
  }
};

TEST_F(TimeLine, IsDrawnPixelForPixelAsTheRulesSay) {
  ExpectSamePicture(StripOf(*form_), ExpectedTimeLine(kLength, 4825).picture());
}

TEST_F(TimeLine, Has29LabelledAnd227MinorTicksAtBothEdges) {
  const QImage strip = StripOf(*form_);
  EXPECT_EQ(Columns(strip, 0, kOlive).size(), 227U);
  EXPECT_EQ(Columns(strip, 1, kOlive).size(), 227U);
  for (const int row : {2, 3, 4, 5}) EXPECT_EQ(Columns(strip, row, kLabel).size(), 29U) << row;
  EXPECT_EQ(Columns(strip, 6, kBack).size(), 1825U);
  EXPECT_EQ(Columns(strip, 35, kBack).size(), 1825U);
  for (const int row : {36, 37, 38}) EXPECT_EQ(Columns(strip, row, kOlive).size(), 29U) << row;
  EXPECT_EQ(Columns(strip, 39, kOlive).size(), 227U);
  EXPECT_EQ(Columns(strip, 40, kOlive).size(), 227U);
}

// The bar with the arrows begins on it.
TEST_F(TimeLine, ShowsItsLastRowInTheFrame) {
  const QImage strip = StripOf(*form_);
  const QRect lastRow(0, kHeight - 1, 877, 1);
  EXPECT_EQ(Picture(Frame()).copy(lastRow.translated(Frame().ContentOrigin())),
            strip.copy(lastRow));
}

TEST_F(TimeLine, IsNotDrawnAnewByScrollingResizingOrAChangedPreset) {
  const QImage before = StripOf(*form_);
  Get<TextBox>("Text4").setText(QStringLiteral("300"));
  Get<Label>("Label7", TowardsEnd).MouseDown(At(Get<Label>("Label7", TowardsEnd), kLeftButton, 1));
  form_->resize(1200, 900);
  PumpOnce();
  EXPECT_EQ(StripOf(*form_), before);
}

TEST_F(TimeLine, KeepsWhatWasDrawnWhileItIsHidden) {
  const QImage before = StripOf(*form_);
  Strip().setVisible(false);
  PumpOnce();
  Strip().setVisible(true);
  EXPECT_EQ(StripOf(*form_), before);
}

struct Preset {
  const char* name;
  const char* text;
  int tickBase;
  int length = kLength;
};
void PrintTo(const Preset& preset, std::ostream* out) { *out << preset.name; }

class ATimeLine : public ::testing::TestWithParam<Preset> {};

TEST_P(ATimeLine, IsDrawnFromThePresets) {
  const Preset& preset = GetParam();
  Form3 form;
  form.Find<TextBox>("Text4").setText(QString::fromUtf8(preset.text));
  form.Find<Label>("Label16(2)").setCaption(QString::number(preset.length));
  form.Load();
  ExpectSamePicture(StripOf(form), ExpectedTimeLine(preset.length, preset.tickBase).picture());
  form.Unload();
}

// A base below 600 has its minor ticks, and one below 75 its labels, end before the strip does.
INSTANTIATE_TEST_SUITE_P(Sections, ATimeLine,
                         ::testing::Values(Preset{"OfNought", "0", 0}, Preset{"OfNothing", "", 0},
                                           Preset{"OfAText", "none", 0},
                                           Preset{"OfANumberTooLarge", "1e400", 0},
                                           Preset{"BelowSeventyFive", "60", 60},
                                           Preset{"AtSeventyFour", "74", 74},
                                           Preset{"BelowSixHundred", "500", 500},
                                           Preset{"OfANumberWithAUnit", "4825 s", 4825},
                                           Preset{"OfAShortVideo", "4825", 4825, 100},
                                           Preset{"OfADayAndMore", "100000", 100000, 90500}),
                         [](const auto& test) { return test.param.name; });

TEST(ATimeLineThatWasDrawnOn, IsClearedFirst) {
  constexpr QRgb kRed = 0xff0000;
  Form3 form;
  auto& strip = form.Find<PictureBox>("Picture3(1)");
  for (const float y : {10.0F, 24.0F, 33.0F}) strip.DrawLine(0, y, 881, y, kRed);
  ASSERT_EQ(Hex(StripOf(form).pixel(400, 33)), "0xff0000");
  form.Load();
  ExpectSamePicture(StripOf(form), ExpectedTimeLine(kLength, 4825).picture());
  form.Unload();
}

}  // namespace
}  // namespace kelvane::testing
