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

Answer Close() {
  return [](QDialog& dialog) { dialog.close(); };
}

Answer PressKey(Qt::Key key) {
  return [key](QDialog& dialog) { QTest::keyClick(&dialog, key); };
}

TEST(AMessageBox, HasTheProgramsNameForATitleAndOneButtonUnlessToldOtherwise) {
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  EXPECT_EQ(MsgBox(u"no change"_s), MsgBoxResult::kOK);
  EXPECT_EQ(answers.seen(), Events{"Kelvane | no change | no icon | OK"});
}

TEST(AMessageBox, CountsAsAnOpenDialogUntilItsAnswerIsReturned) {
  EXPECT_FALSE(DialogIsOpen());
  const DialogAnswers answers({[](QDialog& outer) {
    EXPECT_TRUE(DialogIsOpen());
    {
      const DialogAnswers inner({PressButton(QMessageBox::Ok)});
      MsgBox(u"a box on top of it"_s);
    }
    EXPECT_TRUE(DialogIsOpen());
    outer.accept();
    EXPECT_FALSE(outer.isVisible());
    EXPECT_TRUE(DialogIsOpen());
  }});
  MsgBox(u"no change"_s);
  EXPECT_FALSE(DialogIsOpen());
}

TEST(AMessageBox, MayHaveATitleThreeButtonsAndAnIcon) {
  const DialogAnswers answers({PressButton(QMessageBox::Yes)});
  MsgBox(u"Again ?"_s, kQuestion, u"Start Fresh"_s);
  EXPECT_EQ(answers.seen(), Events{"Start Fresh | Again ? | exclamation | Yes No Cancel"});
}

TEST(AMessageBox, MayHaveTwoButtons) {
  const DialogAnswers answers({PressButton(QMessageBox::Cancel), PressButton(QMessageBox::Ok)});
  const QString title = u"Kelvane"_s;
  EXPECT_EQ(MsgBox(u"Done."_s, kOKCancel + kExclamation, title), MsgBoxResult::kCancel);
  EXPECT_EQ(MsgBox(u"Done."_s, kOKCancel), MsgBoxResult::kOK);
  EXPECT_EQ(answers.seen(), (Events{"Kelvane | Done. | exclamation | OK Cancel",
                                    "Kelvane | Done. | no icon | OK Cancel"}));
}

TEST(AMessageBox, TellsTheButtonThatWasPressed) {
  struct Case {
    int buttons;
    QMessageBox::StandardButton pressed;
    MsgBoxResult result;
  };
  for (const auto& [buttons, pressed, result] :
       {Case{kOKOnly, QMessageBox::Ok, MsgBoxResult::kOK},
        {kExclamation, QMessageBox::Ok, MsgBoxResult::kOK},
        {kYesNoCancel, QMessageBox::Yes, MsgBoxResult::kYes},
        {kYesNoCancel, QMessageBox::No, MsgBoxResult::kNo},
        {kYesNoCancel, QMessageBox::Cancel, MsgBoxResult::kCancel},
        {kQuestion, QMessageBox::No, MsgBoxResult::kNo}}) {
    const DialogAnswers answers({PressButton(pressed)});
    EXPECT_EQ(MsgBox(u"?"_s, buttons), result);
  }
}

TEST(AMessageBox, ThatIsClosedIsCancelledWhereItCanBe) {
  for (const Answer& close : {Close(), PressKey(Qt::Key_Escape)}) {
    const DialogAnswers answers({close, close});
    EXPECT_EQ(MsgBox(u"?"_s, kQuestion), MsgBoxResult::kCancel);
    EXPECT_EQ(MsgBox(u"!"_s), MsgBoxResult::kOK);
  }
}

TEST(AMessageBox, TakesReturnForItsFirstButtonInWhateverOrderTheDesktopHasThem) {
  constexpr int kOrders = 4;
  for (int order = 0; order < kOrders; ++order) {
    SCOPED_TRACE(order);
    qApp->setStyleSheet(u"QDialogButtonBox { button-layout: %1 }"_s.arg(order));
    const Answer accept = PressKey(Qt::Key_Return);
    const DialogAnswers answers({accept, accept, accept});
    EXPECT_EQ(MsgBox(u"?"_s, kYesNoCancel), MsgBoxResult::kYes);
    EXPECT_EQ(MsgBox(u"?"_s, kOKCancel), MsgBoxResult::kOK);
    EXPECT_EQ(MsgBox(u"!"_s), MsgBoxResult::kOK);
  }
  qApp->setStyleSheet({});
}

TEST(AMessageBox, ShowsItsTextAsItIs) {
  const QString text = u"<b>bold</b>\nand & more"_s;
  Qt::TextFormat format = Qt::RichText;
  QString shown;
  const DialogAnswers answers({[&](QDialog& dialog) {
    const auto& box = dynamic_cast<QMessageBox&>(dialog);
    format = box.textFormat();
    shown = box.text();
    dialog.close();
  }});
  MsgBox(text);
  EXPECT_EQ(format, Qt::PlainText);
  EXPECT_EQ(shown, text);
}

TEST(AMessageBox, StandsInFrontOfTheActiveWindow) {
  TestForm form;
  form.Open();
  form.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  const QWidget* parent = nullptr;
  bool modal = false;
  const DialogAnswers answers({[&](QDialog& dialog) {
    parent = dialog.parentWidget();
    modal = dialog.isModal();
    dialog.close();
  }});
  MsgBox(u"!"_s);
  EXPECT_EQ(parent, &form);
  EXPECT_TRUE(modal);
}

}  // namespace
}  // namespace kelvane::testing
