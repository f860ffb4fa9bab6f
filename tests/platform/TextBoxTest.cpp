// Text boxes: one that the user reads, and one out of sight that takes a tool's output.
#include "platform/TextBox.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QtTest/QTest>
#include <algorithm>

#include "platform/App.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

// One on show, one in a hidden box, one hidden itself.
const Controls kControls{Design(kTextBox, "Text1(1)", {10, 10, 100, 21}).Caption("Source"),
                         Design(kPictureBox, "Holder", {10, 40, 200, 100}).Hidden(),
                         Design(kTextBox, "Text2", {0, 0, 100, 21}).In("Holder"),
                         Design(kTextBox, "Text3", {10, 40, 100, 21}).Hidden()};

class ATextBox : public ::testing::Test {
 protected:
  ATextBox() {
    form.Open();
    shown.Change = [this](int index) {
      events.push_back(std::to_string(index) + ": " + shown.Text().toStdString());
    };
  }

  QLineEdit* Line(const TextBox& box) { return box.findChild<QLineEdit*>(); }

  TestForm form{kControls};
  TextBox& shown = form.Find<TextBox>("Text1(1)");
  TextBox& inHiddenBox = form.Find<TextBox>("Text2");
  TextBox& hidden = form.Find<TextBox>("Text3");
  Events events;
};

TEST_F(ATextBox, RaisesChangeOnceForEachChangeOfItsTextBeforeTheAssignmentReturns) {
  EXPECT_EQ(shown.Text(), u"Source"_s);
  shown.setText(u"a"_s);
  EXPECT_EQ(events, Events{"1: a"});
  shown.setText(u"a"_s);
  EXPECT_EQ(events, Events{"1: a"});
  shown.AppendText(u"b"_s);
  EXPECT_EQ(events, (Events{"1: a", "1: ab"}));
  shown.AppendText(QString());
  EXPECT_EQ(events, (Events{"1: a", "1: ab"}));
  shown.setText(QString());
  shown.setText(u""_s);
  EXPECT_EQ(events, (Events{"1: a", "1: ab", "1: "}));
}

TEST_F(ATextBox, ShowsTheNewTextByTheTimeThatChangeIsRaised) {
  QString onShow;
  shown.Change = [&](int) { onShow = Line(shown)->text(); };
  shown.setText(u"/tmp/video.mp4"_s);
  EXPECT_EQ(onShow, u"/tmp/video.mp4"_s);
}

TEST_F(ATextBox, ShowsATextFromItsStartHoweverLong) {
  const QString path = u"/start/"_s + QString(300, QLatin1Char('x'));
  shown.setText(path);
  EXPECT_EQ(Line(shown)->displayText(), path);
  EXPECT_EQ(Line(shown)->cursorPosition(), 0);
  shown.AppendText(u"yz"_s);
  EXPECT_EQ(Line(shown)->displayText(), path + u"yz"_s);
  EXPECT_EQ(Line(shown)->cursorPosition(), 0);
  const QImage whole = Picture(*Line(shown));
  shown.setText(path.left(100));
  EXPECT_EQ(Picture(*Line(shown)), whole) << "what is in sight are the first characters";
}

TEST_F(ATextBox, CanBeSelectedAndCopied) {
  shown.setText(u"video.mp4"_s);
  Pointer pointer(form);
  pointer.MoveTo(shown, {30, 8});
  pointer.DoubleClick();
  ASSERT_TRUE(Line(shown)->hasSelectedText());
  QTest::keyClick(Line(shown), Qt::Key_A, Qt::ControlModifier);
  QApplication::clipboard()->clear();
  QTest::keyClick(Line(shown), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), u"video.mp4"_s);
}

TEST_F(ATextBox, CannotBeEdited) {
  shown.setText(u"video.mp4"_s);
  events.clear();
  QApplication::clipboard()->setText(u"pasted"_s);
  Pointer pointer(form);
  pointer.MoveTo(shown, {30, 8});
  pointer.Click();
  QLineEdit* line = Line(shown);
  line->selectAll();
  for (const Qt::Key key : {Qt::Key_X, Qt::Key_Backspace, Qt::Key_Delete})
    QTest::keyClick(line, key);
  for (const Qt::Key key : {Qt::Key_V, Qt::Key_X, Qt::Key_Z}) {
    QTest::keyClick(line, key, Qt::ControlModifier);
  }
  EXPECT_EQ(line->text(), u"video.mp4"_s);
  EXPECT_EQ(shown.Text(), u"video.mp4"_s);
  EXPECT_EQ(events, Events{});
}

QAccessibleEditableTextInterface& EditorOf(const TextBox& box) {
  return *QAccessible::queryAccessibleInterface(box.findChild<QLineEdit*>())
              ->editableTextInterface();
}

TEST_F(ATextBox, CannotBeEditedByAScreenReaderEither) {
  shown.setText(u"video.mp4"_s);
  events.clear();
  EditorOf(shown).replaceText(0, 5, u"another"_s);
  EXPECT_EQ(Line(shown)->text(), u"video.mp4"_s);
  EXPECT_EQ(shown.Text(), u"video.mp4"_s);
  EXPECT_EQ(events, Events{});
}

TEST(AnEditableTextBox, TakesWhatAScreenReaderWrites) {
  TestForm form({Design(kTextBox, "Text5", {10, 10, 100, 21}).Caption("a clip").Editable()});
  form.Open();
  auto& box = form.Find<TextBox>("Text5");
  Events events;
  box.Change = [&](int) { events.push_back(box.Text().toStdString()); };
  EditorOf(box).replaceText(2, 6, u"video"_s);
  EXPECT_EQ(box.Text(), u"a video"_s);
  EXPECT_EQ(events, Events{"a video"});
}

TEST(AnEditableTextBox, TakesWhatTheUserTypesAndRaisesChangeForEachLetter) {
  TestForm form({Design(kTextBox, "Text5", {10, 10, 100, 21}).Caption("a").Editable()});
  form.Open();
  auto& box = form.Find<TextBox>("Text5");
  Events events;
  box.Change = [&](int) { events.push_back(box.Text().toStdString()); };
  auto* line = box.findChild<QLineEdit*>();
  line->setCursorPosition(1);
  QTest::keyClicks(line, u"bc"_s);
  QTest::keyClick(line, Qt::Key_Backspace);
  EXPECT_EQ(events, (Events{"ab", "abc", "ab"}));
  EXPECT_EQ(line->cursorPosition(), 2);
  box.setText(u"/tmp/video.mp4"_s);
  EXPECT_EQ(line->text(), u"/tmp/video.mp4"_s);
}

TEST_F(ATextBox, IsDarkWithLightTextAndNoBorder) {
  shown.setText(QString());
  EXPECT_EQ(CountOf(Picture(shown), 0x232323), 100 * 21);
  shown.setText(u"HHHH"_s);
  EXPECT_GT(CountOf(Picture(shown), 0xC0C0C0), 0);
}

TEST_F(ATextBox, OutOfSightHasNoLineOfQts) {
  for (TextBox* box : {&inHiddenBox, &hidden}) {
    box->setText(u"a"_s);
    box->AppendText(u"b"_s);
    DoEvents();
    EXPECT_EQ(Line(*box), nullptr) << box->objectName().toStdString();
    EXPECT_EQ(box->Text(), u"ab"_s);
  }
}

TEST_F(ATextBox, ShowsItsTextOnceItComesInSight) {
  inHiddenBox.setText(u"first"_s);
  hidden.setText(u"second"_s);
  form.Find<PictureBox>("Holder").setVisible(true);
  hidden.setVisible(true);
  ASSERT_NE(Line(inHiddenBox), nullptr);
  ASSERT_NE(Line(hidden), nullptr);
  EXPECT_EQ(Line(inHiddenBox)->text(), u"first"_s);
  EXPECT_EQ(Line(inHiddenBox)->geometry(), inHiddenBox.rect());
  EXPECT_EQ(Line(hidden)->text(), u"second"_s);
}

TEST_F(ATextBox, ThatWasOnShowAndIsHiddenCatchesUpWhenItIsShownAgain) {
  hidden.setText(u"old"_s);
  hidden.setVisible(true);
  hidden.setVisible(false);
  hidden.setText(u"new"_s);
  hidden.AppendText(u"er"_s);
  EXPECT_EQ(Line(hidden)->text(), u"old"_s) << "a hidden line is left alone";
  hidden.setVisible(true);
  EXPECT_EQ(Line(hidden)->text(), u"newer"_s);
  EXPECT_EQ(Line(hidden)->cursorPosition(), 0);
}

// The output of a tool that prints without end, by blocks of 256 characters.
TEST_F(ATextBox, OutOfSightTakesAMebibyteAndMoreWithEachAdditionAsCheapAsTheFirst) {
  constexpr int kBlock = 256;
  constexpr int kBlocks = 16384;  // 4 MiB
  constexpr int kTenth = kBlocks / 10;
  const QString block(kBlock, QLatin1Char('x'));
  for (TextBox* box : {&inHiddenBox, &hidden}) {
    // Shown once, so that it has a line.
    if (box == &hidden) {
      hidden.setVisible(true);
      hidden.setVisible(false);
    }
    box->setText(QString());
    int changes = 0;
    box->Change = [&](int) { ++changes; };
    std::vector<qint64> tenths;
    QElapsedTimer clock;
    for (int tenth = 0; tenth < 10; ++tenth) {
      clock.start();
      for (int count = 0; count < kTenth; ++count) box->AppendText(block);
      tenths.push_back(clock.nsecsElapsed());
    }
    EXPECT_EQ(box->Text().size(), static_cast<qsizetype>(10) * kTenth * kBlock);
    EXPECT_EQ(changes, 10 * kTenth);
    // Were the whole text gone through at each addition, the last tenth would take seconds.
    constexpr qint64 kLongest = 500'000'000;  // ns
    EXPECT_LT(*std::max_element(tenths.begin(), tenths.end()), kLongest);
  }
}

}  // namespace
}  // namespace kelvane::testing
