// What the section window shows.
#include <QFontMetrics>
#include <QLineEdit>
#include <QTest>

#include "sections/SectionWindowTest.h"
#include "support/Pictures.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

TEST(SectionLayout, IsAsTheWindowTextSays) {
  Form3 form;
  ExpectWindowText(form);
  form.Unload();
}

class SectionTexts : public SectionWindowTest {};

TEST_F(SectionTexts, FitIntoTheirLabels) {
  for (const Label* label : form_->findChildren<Label*>()) {
    const QString shown = QString(label->Caption()).replace("&&", "&").trimmed();
    if (label->parent()->objectName() == QLatin1String("Picture1")) continue;
    EXPECT_LE(QFontMetrics(label->font()).horizontalAdvance(shown), label->width())
        << label->objectName().toStdString();
  }
}

TEST_F(SectionTexts, AreTakenFromTheKeyboardByTheTwoBorderedFields) {
  for (const char* name : {"Text1", "Text5"}) {
    auto& field = Get<TextBox>(name);
    QTest::keyClicks(field.findChild<QLineEdit*>(), QStringLiteral("my.mp4"));
    EXPECT_EQ(field.Text().toStdString(), "my.mp4") << name;
    const QImage picture = Picture(field);
    EXPECT_NE(Hex(picture.pixel(0, 5)), "0x232323") << name;
    EXPECT_NE(Hex(picture.pixel(picture.width() / 2, 0)), "0x232323") << name;
    EXPECT_EQ(Hex(picture.pixel(picture.width() / 2, 5)), "0x232323") << name;
  }
}

}  // namespace
}  // namespace kelvane::testing
