// What a pointer that rests on a control is told.
#include <gtest/gtest.h>

#include <QTextDocument>
#include <QToolTip>

#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

class AToolTip : public ::testing::Test {
 protected:
  AToolTip() { form_.Open(); }
  ~AToolTip() override { QToolTip::hideText(); }

  void RestOnTheBox() {
    Pointer pointer(form_);
    pointer.MoveTo(box_, {5, 6});
    pointer.Rest();
  }
  // As it is read: Qt takes a text with markup in it for such.
  static std::string Shown() {
    const QString text = QToolTip::text();
    if (!Qt::mightBeRichText(text)) return text.toStdString();
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText().toStdString();
  }

 private:
  TestForm form_{{Design(kPictureBox, "Box", {0, 0, 50, 50})}};

 protected:
  PictureBox& box_ = form_.Find<PictureBox>("Box");
};

TEST_F(AToolTip, IsShownAsItStandsAndReadsBackSo) {
  for (const char* text :
       {"The box's tip", "00:12:34", "a<i>b.mp4", "x&lt;y.mp4", "<b>", "<br/>", "a & b",
        "two  blanks", " a blank at each end ", "one line\nand another", "\"quoted\"",
        "Horizontal Position: 120 pixels Vertical Position: 40 pixels"}) {
    box_.setToolTipText(QLatin1String(text));
    RestOnTheBox();
    EXPECT_EQ(Shown(), text);
    EXPECT_EQ(box_.ToolTipText().toStdString(), text);
    QToolTip::hideText();
  }
}

TEST_F(AToolTip, WithoutATextIsNone) {
  RestOnTheBox();
  EXPECT_FALSE(QToolTip::isVisible());
  box_.setToolTipText(u"tip"_s);
  RestOnTheBox();
  EXPECT_TRUE(QToolTip::isVisible());
  QToolTip::hideText();
  ASSERT_TRUE(PumpUntil([] { return !QToolTip::isVisible(); }));
  box_.setToolTipText(QString());
  RestOnTheBox();
  EXPECT_FALSE(QToolTip::isVisible());
}

}  // namespace
}  // namespace kelvane::testing
