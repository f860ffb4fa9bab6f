// The tip beside a pointer that rests on a control.
#include <gtest/gtest.h>

#include <QTextDocument>
#include <QToolTip>

#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class ToolTip : public ::testing::Test {
 protected:
  ToolTip() { form.Open(); }
  ~ToolTip() override { QToolTip::hideText(); }

  void RestOnTheBox() {
    Pointer pointer(form);
    pointer.MoveTo(box, {5, 6});
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

  TestForm form{{Design(kPictureBox, "Box", {0, 0, 50, 50})}};
  PictureBox& box = form.Find<PictureBox>("Box");
};

TEST_F(ToolTip, IsShownAsItStandsAndReadsBackSo) {
  for (const char* text :
       {"The box's tip", "00:12:34", "a<i>b.mp4", "x&lt;y.mp4", "<b>", "<br/>", "a & b",
        "two  blanks", " a blank at each end ", "one line\nand another", "\"quoted\"",
        "Horizontal Position: 120 pixels Vertical Position: 40 pixels"}) {
    box.setToolTipText(text);
    RestOnTheBox();
    EXPECT_EQ(Shown(), text);
    EXPECT_EQ(box.ToolTipText().toStdString(), text);
    QToolTip::hideText();
  }
}

TEST_F(ToolTip, IsNotShownWithoutAText) {
  RestOnTheBox();
  EXPECT_FALSE(QToolTip::isVisible());
}

}  // namespace
}  // namespace kelvane::testing
