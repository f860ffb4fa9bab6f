// The section window after its load, and its frame.
#include <QFontMetrics>
#include <QLineEdit>
#include <QTest>

#include "sections/SectionWindowTest.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

TEST(SectionLayout, IsAsTheWindowTextSays) {
  SectionWindow form;
  ExpectWindowText(form);
  form.Unload();
}

TEST(SectionWindowIcon, IsTheGivenIconOrElseTheProductsFromTheLoadOn) {
  QPixmap red(16, 16);
  red.fill(Qt::red);
  SectionWindow given{QIcon(red)};
  EXPECT_TRUE(given.windowIcon().isNull());
  given.Load();
  EXPECT_EQ(given.windowIcon().pixmap(16).toImage(), red.toImage());
  SectionWindow own;
  own.Load();
  EXPECT_EQ(own.windowIcon().pixmap(32).toImage(), ProductIcon().pixmap(32).toImage());
  own.Unload();
  given.Unload();
}

class SectionWindowStart : public SectionWindowTest {};

TEST_F(SectionWindowStart, ShowsCaptionsThatFitIntoTheirLabels) {
  for (const Label* label : form_->findChildren<Label*>()) {
    if (label->parent()->objectName() == "Picture1") continue;  // hidden
    const QString shown = QString(label->Caption()).replace("&&", "&").trimmed();
    EXPECT_LE(QFontMetrics(label->font()).horizontalAdvance(shown), label->width())
        << label->objectName().toStdString();
  }
}

TEST_F(SectionWindowStart, HasTwoBorderedFieldsThatTakeTextFromTheKeyboard) {
  for (const char* name : {"Text1", "Text5"}) {
    auto& field = Get<TextBox>(name);
    QTest::keyClicks(field.findChild<QLineEdit*>(), "my.mp4");
    EXPECT_EQ(field.Text(), QString("my.mp4")) << name;
    const QImage picture = Picture(field);
    EXPECT_TRUE(AllOf(picture, QRect(0, 0, picture.width(), 1), 0x808080)) << name;
  }
}

TEST_F(SectionWindowStart, HasDarkProgressBarsThatFillGrey) {
  for (const char* name : {"pbar(0)", "pbar(1)", "pbar(2)"}) {
    auto& bar = Get<ProgressBar>(name);
    EXPECT_TRUE(AllOf(Picture(bar), bar.rect(), 0x3d464c)) << name;
    bar.setValue(bar.Max());
    EXPECT_TRUE(AllOf(Picture(bar), bar.rect(), 0x808080)) << name;
  }
}

TEST_F(SectionWindowStart, DrawsAFrameThatFollowsTheWindowWhileNothingElseMoves) {
  const auto places = [this] {
    std::map<QString, QRect> all;
    for (const Control* control : form_->findChildren<Control*>()) {
      all[control->objectName()] = control->geometry();
    }
    return all;
  };
  auto expected = places();
  for (const QSize size : {QSize(1400, 900), QSize(500, 300)}) {
    form_->resize(size);
    const int width = size.width();
    const int height = size.height();
    expected["Line4"] = QRect(2, 4, 1, height - 8);
    expected["Line5"] = QRect(2, height - 4, width - 6, 1);
    expected["Line6"] = QRect(width - 4, 4, 1, height - 8);
    EXPECT_TRUE(WaitFor([&] { return places() == expected; })) << width;
  }
}

// The length of the video is in a caption. The time line can't have a negative width, but the line
// on it can end left of its start.
TEST(VideoLengthCaption, SetsTheLengthsOfTheTimeLineAndOfTheLineOnItIfItIsANumber) {
  struct Case {
    const char* caption;
    float width;
    float lineEnd;
    const char* text;
  };
  for (const auto& [caption, width, lineEnd, text] :
       {Case{"90", 90, 90, "90"}, Case{"1234.567", 1234.567F, 1234.567F, "1234.567"},
        Case{"-5", 881, -5, "881"}, Case{"none", 881, 0, "881"}}) {
    Form3 form;
    form.Find<Label>("Label16(2)").setCaption(caption);
    form.Load();
    EXPECT_EQ(form.Find<PictureBox>("Picture3(1)").Width(), width) << caption;
    EXPECT_EQ(form.Find<Line>("Line7").X2(), lineEnd) << caption;
    EXPECT_EQ(form.Find<TextBox>("Text3").Text(), QString(text));
    form.Unload();
  }
}

}  // namespace
}  // namespace kelvane::testing
