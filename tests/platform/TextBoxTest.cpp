// Text boxes: those that the user reads or edits, and hidden ones that collect a tool's output.
#include "platform/TextBox.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QtTest/QTest>
#include <utility>

#include "platform/App.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

class TextBoxTest : public ::testing::Test {
 protected:
  TextBoxTest() {
    form.Open();
    for (TextBox* box : {&shown, &editable}) {
      box->Change = [this, box](int index) {
        events.push_back(std::to_string(index) + ": " + box->Text().toStdString());
      };
    }
  }

  // Returns the widget of Qt's that shows the text; null where the box has none yet.
  static QLineEdit* Line(const TextBox& box) { return box.findChild<QLineEdit*>(); }
  static QAccessibleEditableTextInterface& ScreenReadersEditor(const TextBox& box) {
    return *QAccessible::queryAccessibleInterface(Line(box))->editableTextInterface();
  }

  TestForm form{{Design(kTextBox, "Text1(1)", {10, 10, 100, 21}).Caption("Source").Color(0x404040),
                 Design(kPictureBox, "Holder", {10, 40, 200, 100}).Hidden(),
                 Design(kTextBox, "Text2", {0, 0, 100, 21}).In("Holder"),
                 Design(kTextBox, "Text3", {10, 40, 100, 21}).Hidden(),
                 Design(kTextBox, "Text5(5)", {10, 70, 100, 21}).Caption("a clip").Editable(),
                 Design(kTextBox, "Text6", {10, 100, 100, 21}).Color(0x404040).Bordered()}};
  TextBox& shown = form.Find<TextBox>("Text1(1)");
  PictureBox& holder = form.Find<PictureBox>("Holder");
  TextBox& inHiddenBox = form.Find<TextBox>("Text2");
  TextBox& hidden = form.Find<TextBox>("Text3");
  TextBox& editable = form.Find<TextBox>("Text5(5)");
  TextBox& bordered = form.Find<TextBox>("Text6");
  Events events;
};

TEST_F(TextBoxTest, RaisesChangeOnceForEachNewTextBeforeTheAssignmentReturns) {
  EXPECT_EQ(shown.Text(), u"Source"_s);
  shown.setText("a");
  EXPECT_EQ(events, Events{"1: a"});
  shown.setText("a");
  shown.AppendText("b");
  EXPECT_EQ(events, (Events{"1: a", "1: ab"}));
  shown.AppendText({});
  shown.setText({});
  shown.setText("");
  EXPECT_EQ(events, (Events{"1: a", "1: ab", "1: "}));
}

TEST_F(TextBoxTest, ShowsANewTextFromItsStartBeforeItRaisesChange) {
  QString shownText;
  shown.Change = [&](int) { shownText = Line(shown)->text(); };
  const QString path = "/start/" + QString(300, 'x');
  shown.setText(path);
  EXPECT_EQ(shownText, path);
  EXPECT_EQ(Line(shown)->cursorPosition(), 0);
  shown.AppendText("yz");
  EXPECT_EQ(shownText, path + "yz");
  EXPECT_EQ(Line(shown)->cursorPosition(), 0);
  const QImage whole = Picture(*Line(shown));
  shown.setText(path.left(100));
  EXPECT_EQ(Picture(*Line(shown)), whole) << "other characters than the first are visible";
}

TEST_F(TextBoxTest, CanBeSelectedAndCopied) {
  shown.setText("video.mp4");
  Pointer pointer(form);
  pointer.MoveTo(shown, {30, 8});
  pointer.DoubleClick();
  ASSERT_TRUE(Line(shown)->hasSelectedText());
  QTest::keyClick(Line(shown), Qt::Key_A, Qt::ControlModifier);
  QApplication::clipboard()->clear();
  QTest::keyClick(Line(shown), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), u"video.mp4"_s);
}

TEST_F(TextBoxTest, CannotBeEditedByTheKeyboardOrAScreenReader) {
  shown.setText("video.mp4");
  events.clear();
  QApplication::clipboard()->setText("pasted");
  QLineEdit* line = Line(shown);
  line->setFocus();
  line->selectAll();
  for (const Qt::Key key : {Qt::Key_X, Qt::Key_Backspace, Qt::Key_Delete}) {
    QTest::keyClick(line, key);
  }
  for (const Qt::Key key : {Qt::Key_V, Qt::Key_X, Qt::Key_Z}) {
    QTest::keyClick(line, key, Qt::ControlModifier);
  }
  ScreenReadersEditor(shown).replaceText(0, 5, "another");
  EXPECT_EQ(line->text(), u"video.mp4"_s);
  EXPECT_EQ(shown.Text(), u"video.mp4"_s);
  EXPECT_EQ(events, Events{});
}

TEST_F(TextBoxTest, RaisesChangeForEachEditIfItIsEditable) {
  ScreenReadersEditor(editable).replaceText(2, 6, "video");
  EXPECT_EQ(std::exchange(events, {}), Events{"5: a video"});
  editable.setText("a");
  events.clear();
  QLineEdit* line = Line(editable);
  line->setCursorPosition(1);
  QTest::keyClicks(line, "bc");
  QTest::keyClick(line, Qt::Key_Backspace);
  EXPECT_EQ(events, (Events{"5: ab", "5: abc", "5: ab"}));
  EXPECT_EQ(line->cursorPosition(), 2);
  editable.setText("/tmp/video.mp4");
  EXPECT_EQ(line->text(), u"/tmp/video.mp4"_s);
}

TEST_F(TextBoxTest, RaisesEditFinishedOnceForEachEditAtEnterOrWhenItIsLeft) {
  editable.EditFinished = [this](int index) {
    events.push_back(std::to_string(index) + " finished: " + editable.Text().toStdString());
  };
  QLineEdit* line = Line(editable);
  const auto press = [&](Qt::Key key) { QTest::keyClick(line, key); };
  const auto eventsOf = [&](const auto& step) {
    events.clear();
    step();
    return events;
  };
  const auto leave = [&] { Line(shown)->setFocus(); };
  line->setFocus();
  EXPECT_EQ(eventsOf([&] { press(Qt::Key_Return); }), Events{}) << "raised without an edit";
  EXPECT_EQ(eventsOf(leave), Events{});
  line->setFocus();
  editable.setText("b");
  QTest::keyClicks(line, "a");
  EXPECT_EQ(eventsOf([&] { press(Qt::Key_Return); }), Events{"5 finished: ab"});
  EXPECT_EQ(eventsOf([&] { press(Qt::Key_Return); }), Events{});
  EXPECT_EQ(eventsOf(leave), Events{});
  line->setFocus();
  press(Qt::Key_Backspace);
  EXPECT_EQ(eventsOf(leave), Events{"5 finished: b"});
  line->setFocus();
  press(Qt::Key_Delete);
  press(Qt::Key_X);
  EXPECT_EQ(eventsOf([&] { press(Qt::Key_Enter); }), Events{"5 finished: x"});
  press(Qt::Key_Y);
  editable.setText("from the code");
  EXPECT_EQ(eventsOf(leave), Events{}) << "raised although the edit was replaced";
}

TEST_F(TextBoxTest, RaisesNoEditFinishedWhenAnotherWindowBecomesActive) {
  int finished = 0;
  editable.EditFinished = [&](int) { ++finished; };
  Line(editable)->setFocus();
  QTest::keyClick(Line(editable), Qt::Key_X);
  TestForm other;
  other.Open();
  other.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
  EXPECT_EQ(finished, 0);
  form.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return Line(editable)->hasFocus(); }));
  QTest::keyClick(Line(editable), Qt::Key_Return);
  EXPECT_EQ(finished, 1);
}

TEST_F(TextBoxTest, IsPaintedInItsColoursAndHasABorderWhereTheDesignSaysSo) {
  for (const auto& [box, border] : {std::pair{&shown, 0}, {&bordered, 1}}) {
    box->setText({});
    EXPECT_EQ(CountOf(Picture(*box), 0x404040), (100 - 2 * border) * (21 - 2 * border));
    EXPECT_EQ(Extent(Picture(*box), box->rect(), 0x808080), border == 0 ? QRect() : box->rect());
    box->setText("HHHH");
    EXPECT_GT(CountOf(Picture(*box), kPixelForm.labelColor), 0);
    EXPECT_EQ(CountOf(Picture(*box), QRect(0, 0, 3 * border, 21), kPixelForm.labelColor), 0);
  }
}

TEST_F(TextBoxTest, UpdatesQtsWidgetOnlyWhileItIsVisible) {
  for (const auto& [box, cover] :
       {std::pair<TextBox*, Control*>{&hidden, &hidden}, {&inHiddenBox, &holder}}) {
    box->setText("a");
    box->AppendText("b");
    EXPECT_EQ(Line(*box), nullptr);
    cover->setVisible(true);
    ASSERT_NE(Line(*box), nullptr);
    EXPECT_EQ(Line(*box)->text(), u"ab"_s);
    EXPECT_EQ(Line(*box)->geometry(), box->rect());
    cover->setVisible(false);
    box->setText("new");
    box->AppendText("er");
    EXPECT_EQ(Line(*box)->text(), u"ab"_s);
    cover->setVisible(true);
    EXPECT_EQ(Line(*box)->text(), u"newer"_s);
    EXPECT_EQ(Line(*box)->cursorPosition(), 0);
  }
}

// A copy of the whole text has another address. A tool's output comes in blocks of 256 bytes.
TEST_F(TextBoxTest, SeldomCopiesItsTextWhenMoreIsAppended) {
  constexpr int kBlocks = 16384;  // 4 MiB
  const QString block(256, 'x');
  int copies = 0;
  const QChar* address = nullptr;
  for (int count = 0; count < kBlocks; ++count) {
    hidden.AppendText(block);
    const QChar* former = std::exchange(address, hidden.Text().constData());
    if (former != address) ++copies;
  }
  EXPECT_EQ(hidden.Text().size(), kBlocks * block.size());
  constexpr int kSeldom = 100;
  EXPECT_LT(copies, kSeldom);
}

}  // namespace
}  // namespace kelvane::testing
