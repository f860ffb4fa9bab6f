// What stands after the load, the frame of the window, and how it closes.
#include <QProgressBar>
#include <QScrollBar>

#include "platform/WindowsMediaPlayer.h"
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class StartUp : public SectionWindowTest {};

TEST_F(StartUp, TheWindowIs14610By11955Twips) {
  EXPECT_EQ(form_->Width(), 14610);
  EXPECT_EQ(form_->Height(), 11955);
  EXPECT_EQ(form_->size(), QSize(974, 797));
  EXPECT_EQ(form_->ScaleHeight(), 797);
}

TEST(StartUpWithAnIcon, TheWindowTakesItOverAtTheLoad) {
  QPixmap picture(16, 16);
  picture.fill(Qt::red);
  Form3 form{QIcon(picture)};
  EXPECT_TRUE(form.windowIcon().isNull());
  form.Load();
  EXPECT_EQ(form.windowIcon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
  form.Unload();
}

TEST(StartUpWithAnIcon, TheProgramsOwnIsTakenWhereNoneIsGiven) {
  Form3 form;
  form.Load();
  EXPECT_EQ(form.windowIcon().pixmap(32).toImage(), ProductIcon().pixmap(32).toImage());
  form.Unload();
}

TEST_F(StartUp, ThePlayerHasNoFile) {
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL().toStdString(), "");
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").currentMediaDuration(), std::nullopt);
}

// The bar's two colours, and what the bar fills of them.
TEST_F(StartUp, TheProgressBarsAreEmptyAndDark) {
  for (const char* name : {"pbar(0)", "pbar(1)", "pbar(2)"}) {
    auto& bar = Get<ProgressBar>(name);
    EXPECT_EQ(bar.Value(), 0);
    const QImage picture = Picture(bar);
    EXPECT_EQ(Hex(picture.pixel(0, 5)), "0x3d464c") << name;
    EXPECT_EQ(Hex(picture.pixel(picture.width() - 1, 5)), "0x3d464c") << name;
    bar.setValue(50);
    EXPECT_EQ(Hex(Picture(bar).pixel(2, 5)), "0x808080") << name;
  }
}

// What the drawing has in its place already is put there all the same.
TEST(StartUpOfADisarrangedWindow, PutsNeedlesOutlinesStripAndLineInTheirPlaces) {
  Form3 form;
  for (const char* name : {"Picture4(0)", "Picture4(1)"}) {
    form.Find<PictureBox>(name).setTop(3);
    form.Find<PictureBox>(name).setHeight(9);
  }
  auto& strip = form.Find<PictureBox>("Picture3(1)");
  strip.setLeft(-50);
  strip.setTop(7);
  form.Find<Line>("Line7").setX1(5);
  auto& thumb = form.Find<Label>("Label1(2)");
  thumb.setLeft(1000);
  thumb.setTop(30);
  thumb.setWidth(150);
  thumb.setHeight(300);
  form.Load();
  for (const char* name : {"Picture4(0)", "Picture4(1)"}) {
    EXPECT_EQ(form.Find<PictureBox>(name).Top(), 20) << name;
    EXPECT_EQ(form.Find<PictureBox>(name).Height(), 15) << name;
  }
  EXPECT_EQ(strip.Left(), 0);
  EXPECT_EQ(strip.Top(), 0);
  EXPECT_EQ(form.Find<Line>("Line7").X1(), 0);
  const auto& outline = form.Find<Shape>("Shape2(2)");
  EXPECT_EQ(outline.Left(), 999);
  EXPECT_EQ(outline.Top(), 29);
  EXPECT_EQ(outline.Width(), 152);
  EXPECT_EQ(outline.Height(), 302);
  form.Unload();
}

struct LengthCase {
  const char* caption;
  float width;
  float lineEnd;
};

class StartUpWithALength : public ::testing::TestWithParam<LengthCase> {};

// The strip can't have a negative width, but its line can end left of its start.
TEST_P(StartUpWithALength, StripAndLineTakeItAndWhatIsNoneChangesNeither) {
  Form3 form;
  form.Find<Label>("Label16(2)").setCaption(QLatin1String(GetParam().caption));
  form.Load();
  EXPECT_EQ(form.Find<PictureBox>("Picture3(1)").Width(), GetParam().width);
  EXPECT_EQ(form.Find<Line>("Line7").X2(), GetParam().lineEnd);
  form.Unload();
}

INSTANTIATE_TEST_SUITE_P(Sections, StartUpWithALength,
                         ::testing::Values(LengthCase{"1825", 1825, 1825}, LengthCase{"90", 90, 90},
                                           LengthCase{"0", 0, 0}, LengthCase{"3,600", 3600, 3600},
                                           LengthCase{"-5", 881, -5}, LengthCase{"", 881, 0},
                                           LengthCase{"none", 881, 0}));

TEST(StartUpWithAFraction, TheWidthIsToldWithSevenDigits) {
  Form3 form;
  form.Find<Label>("Label16(2)").setCaption(QStringLiteral("1234.567"));
  form.Load();
  EXPECT_EQ(form.Find<PictureBox>("Picture3(1)").Width(), 1234.567F);
  EXPECT_EQ(form.Find<TextBox>("Text3").Text().toStdString(), "1234.567");
  form.Unload();
}

TEST(StartUpTwice, IsOne) {
  Form3 form;
  form.Load();
  form.Find<PictureBox>("Picture4(0)").setLeft(500);
  form.Load();
  EXPECT_EQ(form.Find<PictureBox>("Picture4(0)").Left(), 500) << "it was loaded already";
  form.Unload();
}

// The order of the steps, as far as an eye on the controls can tell it.
TEST(StartUpOrder, TheStripIsDrawnAtItsNewWidthAfterTheScales) {
  Form3 form;
  std::vector<std::string> order;
  auto& strip = form.Find<PictureBox>("Picture3(1)");
  strip.Resize = [&](int) {
    order.push_back("strip " + std::to_string(strip.width()));
    order.push_back("Line7 " + std::to_string(static_cast<int>(form.Find<Line>("Line7").X2())));
    order.push_back(
        "scale drawn " +
        std::to_string(qRed(Picture(form.Find<PictureBox>("Picture2(6)")).pixel(300, 12))));
  };
  form.Find<TextBox>("Text3").Change = [&](int) {
    order.push_back("labels at " + form.Find<TextBox>("Text3").Text().toStdString());
    order.push_back("Line7 " + std::to_string(static_cast<int>(form.Find<Line>("Line7").X2())));
    order.push_back("Line8 " + std::to_string(static_cast<int>(form.Find<Line>("Line8").X2())));
  };
  form.Load();
  EXPECT_EQ(order, (std::vector<std::string>{"strip 1825", "Line7 0", "scale drawn 70",
                                             "labels at 1825", "Line7 1825", "Line8 0"}));
  EXPECT_EQ(form.Find<Line>("Line8").X2(), 136);
  form.Unload();
}

struct Ends {
  float x1, y1, x2, y2;
  bool operator==(const Ends&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Ends& ends) {
  return out << ends.x1 << ',' << ends.y1 << " to " << ends.x2 << ',' << ends.y2;
}

class WindowFrame : public SectionWindowTest {
 protected:
  Ends Of(const char* name) const {
    const auto& line = Get<Line>(name);
    return {line.X1(), line.Y1(), line.X2(), line.Y2()};
  }
};

TEST_F(WindowFrame, FollowsTheWindowAndNothingElseMoves) {
  std::vector<std::pair<Control*, QRect>> others;
  for (Control* control : form_->findChildren<Control*>()) {
    const QString name = control->objectName();
    if (!name.isEmpty() && name != "Line4" && name != "Line5" && name != "Line6") {
      others.emplace_back(control, control->geometry());
    }
  }
  ASSERT_EQ(others.size(), 113U);
  for (const QSize size : {QSize(1400, 900), QSize(500, 300)}) {
    form_->resize(size);
    const auto S = static_cast<float>(size.width());
    const auto H = static_cast<float>(size.height());
    ASSERT_TRUE(WaitFor([&] { return Of("Line4").y2 == H - 4; }));
    EXPECT_EQ(Of("Line4"), (Ends{2, 4, 2, H - 4}));
    EXPECT_EQ(Of("Line5"), (Ends{2, H - 4, S - 4, H - 4}));
    EXPECT_EQ(Of("Line6"), (Ends{S - 4, 4, S - 4, H - 4}));
    for (const auto& [control, place] : others) {
      EXPECT_EQ(control->geometry(), place) << control->objectName().toStdString();
    }
  }
}

TEST(ASectionWindow, ClosesWithoutAskingAndEndsItsLife) {
  FormInstance<Form3> instance;
  instance.Load(QIcon()).Show();
  EXPECT_TRUE(instance.Visible());
  instance.Unload();
  EXPECT_FALSE(instance.Loaded());
  PumpOnce();
  EXPECT_EQ(instance.Load(QIcon()).Find<PictureBox>("Picture4(0)").Left(), 8) << "a fresh one";
  instance.Unload();
}

}  // namespace
}  // namespace kelvane::testing
