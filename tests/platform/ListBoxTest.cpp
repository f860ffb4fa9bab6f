#include "platform/ListBox.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <QMenu>
#include <QScrollBar>

#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

class AListBox : public ::testing::Test {
 protected:
  AListBox() { form.Open(); }

  void AddMany(int count) {
    for (int i = 0; i < count; ++i) list.AddItem(u"/clips/%1.mp4"_s.arg(i));
  }
  QScrollBar& Across() const { return *inside.horizontalScrollBar(); }

  TestForm form{{Design(kListBox, "List1", {10, 10, 200, 100}).Color(0x404040)}};
  ListBox& list = form.Find<ListBox>("List1");
  QListWidget& inside = *list.findChild<QListWidget*>();
};

TEST_F(AListBox, IsEmptyByDesign) {
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.List(0), QString());
}

TEST_F(AListBox, TakesLinesInOrderAndTheSameOneAgain) {
  for (const char* text : {"b", "a", "b", ""}) list.AddItem(QLatin1String(text));
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.List(0), QString("b"));
  EXPECT_EQ(list.List(1), QString("a"));
  EXPECT_EQ(list.List(2), QString("b"));
  EXPECT_EQ(list.List(3), QString());
}

TEST_F(AListBox, ReplacesALinesTextInItsPlace) {
  AddMany(3);
  list.setList(1, " Deleted Section ");
  EXPECT_EQ(list.ListCount(), 3);
  EXPECT_EQ(list.List(1), QString(" Deleted Section "));
  EXPECT_EQ(list.List(2), QString("/clips/2.mp4"));
}

TEST_F(AListBox, RefusesWhatMeansALineThatIsNotThere) {
  AddMany(2);
  list.setListIndex(1);
  for (const int index : {-2, 2, 100, -100}) {
    list.setList(index, "x");
    list.setListIndex(index);
    EXPECT_EQ(list.List(index), QString()) << index;
    EXPECT_EQ(list.ListIndex(), 1) << index;
  }
  list.setList(-1, "x");
  EXPECT_EQ(list.ListCount(), 2);
}

TEST_F(AListBox, HasOneLineSelectedAtMost) {
  AddMany(3);
  list.setListIndex(2);
  EXPECT_EQ(list.ListIndex(), 2);
  list.setListIndex(0);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(inside.selectedItems().size(), 1);
  list.setListIndex(-1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(inside.selectedItems().size(), 0);
}

TEST_F(AListBox, TakesTheFocusWithoutSelectingALine) {
  AddMany(3);
  inside.setFocus();
  ASSERT_TRUE(PumpUntil([&] { return inside.hasFocus(); }));
  EXPECT_EQ(list.ListIndex(), -1);
  list.setListIndex(1);
  inside.clearFocus();
  inside.setFocus();
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(AListBox, ScrollsTheSelectedLineIntoViewDownAndUpAlone) {
  AddMany(100);
  list.setHorizontalExtent(900);
  PumpOnce();
  Across().setValue(70);
  list.setListIndex(99);
  EXPECT_TRUE(inside.viewport()->rect().intersects(inside.visualItemRect(inside.item(99))));
  EXPECT_EQ(Across().value(), 70);
  list.setListIndex(0);
  EXPECT_TRUE(inside.viewport()->rect().intersects(inside.visualItemRect(inside.item(0))));
  EXPECT_EQ(Across().value(), 70);
}

TEST_F(AListBox, ScrollsSidewaysNoMoreWhereItsExtentIsNought) {
  list.setHorizontalExtent(900);
  PumpOnce();
  ASSERT_TRUE(Across().isVisible());
  list.setHorizontalExtent(0);
  PumpOnce();
  EXPECT_FALSE(Across().isVisible());
}

TEST_F(AListBox, DoesNotScrollSidewaysByDesign) {
  list.AddItem(QString(500, 'w'));
  PumpOnce();
  EXPECT_EQ(list.HorizontalExtent(), 0);
  EXPECT_FALSE(Across().isVisible());
  EXPECT_EQ(Across().maximum(), 0);
}

TEST_F(AListBox, ScrollsSidewaysOverItsExtentWhateverItHolds) {
  list.setHorizontalExtent(900);
  const auto expectRange = [&](const char* what) {
    PumpOnce();
    EXPECT_TRUE(Across().isVisible()) << what;
    EXPECT_EQ(Across().minimum(), 0) << what;
    EXPECT_EQ(Across().maximum(), 900 - inside.viewport()->width()) << what;
  };
  expectRange("nothing");
  list.AddItem("short");
  expectRange("a short line");
  list.AddItem(QString(500, 'w'));
  expectRange("a line that is longer than that");
  AddMany(100);
  expectRange("more lines than fit");
  list.setWidth(300);
  expectRange("a wider list");
  list.setWidth(1000);
  PumpOnce();
  EXPECT_EQ(Across().maximum(), 0) << "a list that is wider than its extent";
}

TEST_F(AListBox, KeepsItsPlaceSidewaysWhenALineComesIn) {
  list.setHorizontalExtent(900);
  AddMany(2);
  PumpOnce();
  Across().setValue(200);
  AddMany(50);
  PumpOnce();
  EXPECT_EQ(Across().value(), 200);
}

TEST_F(AListBox, ShowsTheTextFromWhereItIsScrolledTo) {
  list.AddItem(QString(150, 'w') + QString(150, '-'));
  list.setHorizontalExtent(900);
  PumpOnce();
  const QImage start = Picture(*inside.viewport());
  Across().setValue(Across().maximum());
  const QImage end = Picture(*inside.viewport());
  EXPECT_NE(CountOf(end, 0x404040), end.width() * end.height());
  EXPECT_EQ(inside.visualItemRect(inside.item(0)).width(), 900);
  EXPECT_EQ(inside.visualItemRect(inside.item(0)).right(), inside.viewport()->width() - 1);
  EXPECT_NE(start, end);
}

TEST_F(AListBox, HasItsColours) {
  EXPECT_EQ(list.BackColor(), 0x404040U);
  EXPECT_EQ(list.ForeColor(), 0xF0E0D0U) << "the form's";
  list.AddItem("text");
  PumpOnce();
  const QImage picture = Picture(*inside.viewport());
  EXPECT_GT(CountOf(picture, 0x404040), picture.width() * picture.height() * 9 / 10);
  list.SetColours(0x0000FF, 0x00FF00);
  EXPECT_EQ(list.BackColor(), 0x0000FFU);
  EXPECT_EQ(list.ForeColor(), 0x00FF00U);
}

TEST_F(AListBox, LetsTheUserSelectALineAndHasNoMenuOfItsOwn) {
  AddMany(3);
  PumpOnce();
  Pointer pointer(form);
  pointer.MoveTo(*inside.viewport(), inside.visualItemRect(inside.item(1)).center());
  pointer.Click();
  EXPECT_EQ(list.ListIndex(), 1);
  pointer.Click(Qt::RightButton);
  EXPECT_EQ(inside.findChild<QMenu*>(), nullptr);
  for (QScrollBar* bar : {inside.horizontalScrollBar(), inside.verticalScrollBar()}) {
    EXPECT_EQ(bar->contextMenuPolicy(), Qt::NoContextMenu);
    EXPECT_EQ(bar->parentWidget()->contextMenuPolicy(), Qt::NoContextMenu);
  }
}

}  // namespace
}  // namespace kelvane::testing
