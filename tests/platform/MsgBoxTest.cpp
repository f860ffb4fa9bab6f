#include "platform/MsgBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QtTest/QTest>

#include "platform/DialogLoop.h"
#include "platform/TestForm.h"
#include "support/DialogAnswers.h"

namespace kelvane::testing {
namespace {

constexpr int kQuestion = kYesNoCancel + kExclamation;

Answer PressKey(Qt::Key key) {
  return [key](QDialog& dialog) { QTest::keyClick(&dialog, key); };
}

TEST(MessageBox, HasItsTitleAndButtonsAndIconAndReturnsTheButtonThatWasPressed) {
  struct Case {
    int buttons;
    QMessageBox::StandardButton pressed;
    MsgBoxResult result;
    std::string seen;
  };
  for (const auto& [buttons, pressed, result, seen] :
       {Case{kOKOnly, QMessageBox::Ok, MsgBoxResult::kOK, "no icon | OK"},
        {kExclamation, QMessageBox::Ok, MsgBoxResult::kOK, "exclamation | OK"},
        {kOKCancel, QMessageBox::Ok, MsgBoxResult::kOK, "no icon | OK Cancel"},
        {kOKCancel + kExclamation, QMessageBox::Cancel, MsgBoxResult::kCancel,
         "exclamation | OK Cancel"},
        {kYesNoCancel, QMessageBox::Yes, MsgBoxResult::kYes, "no icon | Yes No Cancel"},
        {kYesNoCancel, QMessageBox::Cancel, MsgBoxResult::kCancel, "no icon | Yes No Cancel"},
        {kQuestion, QMessageBox::No, MsgBoxResult::kNo, "exclamation | Yes No Cancel"}}) {
    const DialogAnswers answers({PressButton(pressed)});
    EXPECT_EQ(MsgBox("Again ?", buttons, "Start Fresh"), result);
    EXPECT_EQ(answers.seen(), Events{"Start Fresh | Again ? | " + seen});
  }
}

TEST(MessageBox, HasTheProgramsNameAndAnOKButtonByDefault) {
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  EXPECT_EQ(MsgBox("no change"), MsgBoxResult::kOK);
  EXPECT_EQ(answers.seen(), Events{"Kelvane | no change | no icon | OK"});
}

TEST(MessageBox, CountsAsAnOpenDialogUntilItReturns) {
  EXPECT_FALSE(DialogIsOpen());
  const DialogAnswers answers({[](QDialog& outer) {
    EXPECT_TRUE(DialogIsOpen());
    {
      const DialogAnswers inner({PressButton(QMessageBox::Ok)});
      MsgBox("a nested box");
    }
    EXPECT_TRUE(DialogIsOpen());
    outer.accept();
    EXPECT_FALSE(outer.isVisible());
    EXPECT_TRUE(DialogIsOpen());
  }});
  MsgBox("no change");
  EXPECT_FALSE(DialogIsOpen());
}

TEST(MessageBox, ReturnsCancelWhenItIsClosedAndOKIfThatIsItsOnlyButton) {
  for (const Answer& close :
       {Answer([](QDialog& dialog) { dialog.close(); }), PressKey(Qt::Key_Escape)}) {
    const DialogAnswers answers({close, close});
    EXPECT_EQ(MsgBox("?", kQuestion), MsgBoxResult::kCancel);
    EXPECT_EQ(MsgBox("!"), MsgBoxResult::kOK);
  }
}

TEST(MessageBox, TakesReturnForYesOrOKInWhateverOrderTheDesktopHasTheButtons) {
  constexpr int kOrders = 4;
  for (int order = 0; order < kOrders; ++order) {
    SCOPED_TRACE(order);
    qApp->setStyleSheet(u"QDialogButtonBox { button-layout: %1 }"_s.arg(order));
    const Answer accept = PressKey(Qt::Key_Return);
    const DialogAnswers answers({accept, accept, accept});
    EXPECT_EQ(MsgBox("?", kYesNoCancel), MsgBoxResult::kYes);
    EXPECT_EQ(MsgBox("?", kOKCancel), MsgBoxResult::kOK);
    EXPECT_EQ(MsgBox("!"), MsgBoxResult::kOK);
  }
  qApp->setStyleSheet({});
}

TEST(MessageBox, ShowsItsTextWithoutMarkupAndIsModalToTheActiveWindow) {
  TestForm form;
  form.Open();
  form.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  const QString text = "<b>bold</b>\nand & more";
  const DialogAnswers answers({[&](QDialog& dialog) {
    const auto& box = dynamic_cast<QMessageBox&>(dialog);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), text);
    EXPECT_EQ(box.parentWidget(), &form);
    EXPECT_TRUE(box.isModal());
    dialog.close();
  }});
  MsgBox(text);
}

}  // namespace
}  // namespace kelvane::testing
