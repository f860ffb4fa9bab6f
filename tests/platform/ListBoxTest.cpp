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

class ListBoxTest : public ::testing::Test {
 protected:
  ListBoxTest() { form.Open(); }

  void AddMany(int count) {
    for (int i = 0; i < count; ++i) list.AddItem(u"/clips/%1.mp4"_s.arg(i));
  }
  void SetExtent(int pixels) {
    list.setHorizontalExtent(pixels);
    PumpOnce();
  }
  bool InSight(int line) const {
    return inside.viewport()->rect().intersects(inside.visualItemRect(inside.item(line)));
  }

  TestForm form{{Design(kListBox, "List1", {10, 10, 200, 100}).Color(0x404040)}};
  ListBox& list = form.Find<ListBox>("List1");
  QListWidget& inside = *list.findChild<QListWidget*>();
  QScrollBar& horizontalBar = *inside.horizontalScrollBar();
};

TEST_F(ListBoxTest, IsEmptyAtFirst) {
  EXPECT_EQ(list.ListCount(), 0);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.List(0), QString());
}

TEST_F(ListBoxTest, KeepsItsLinesInOrderAndReplacesOneInItsPlace) {
  for (const char* text : {"b", "a", "b", ""}) list.AddItem(text);
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.List(0), u"b"_s);
  list.setList(1, " Deleted Section ");
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.List(1), u" Deleted Section "_s);
  EXPECT_EQ(list.List(2), u"b"_s);
  EXPECT_EQ(list.List(3), QString());
}

TEST_F(ListBoxTest, IgnoresALineThatIsNotThere) {
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

TEST_F(ListBoxTest, HasAtMostOneLineSelected) {
  AddMany(3);
  for (const int index : {2, 0, -1}) {
    list.setListIndex(index);
    EXPECT_EQ(list.ListIndex(), index);
    EXPECT_EQ(inside.selectedItems().size(), index < 0 ? 0 : 1);
  }
}

TEST_F(ListBoxTest, TakesTheFocusWithoutSelectingALine) {
  AddMany(3);
  ASSERT_TRUE(WaitFor([&] { return form.isActiveWindow(); }));
  for (const int selected : {-1, 1}) {
    list.setListIndex(selected);
    inside.clearFocus();
    inside.setFocus();
    ASSERT_TRUE(inside.hasFocus());
    EXPECT_EQ(list.ListIndex(), selected);
  }
}

TEST_F(ListBoxTest, ScrollsOnlyVerticallyToTheSelectedLine) {
  AddMany(100);
  SetExtent(900);
  horizontalBar.setValue(70);
  for (const int line : {99, 0}) {
    list.setListIndex(line);
    EXPECT_TRUE(InSight(line)) << line;
    EXPECT_EQ(horizontalBar.value(), 70) << line;
  }
}

TEST_F(ListBoxTest, ScrollsHorizontallyOnlyIfItHasAnExtent) {
  list.AddItem(QString(500, 'w'));
  PumpOnce();
  EXPECT_EQ(list.HorizontalExtent(), 0);
  EXPECT_FALSE(horizontalBar.isVisible());
  EXPECT_EQ(horizontalBar.maximum(), 0);
  SetExtent(900);
  EXPECT_TRUE(horizontalBar.isVisible());
  SetExtent(0);
  EXPECT_FALSE(horizontalBar.isVisible());
}

TEST_F(ListBoxTest, ScrollsHorizontallyOverItsExtentWhateverItHolds) {
  list.setHorizontalExtent(900);
  const auto expectRange = [&](const char* what) {
    PumpOnce();
    EXPECT_TRUE(horizontalBar.isVisible()) << what;
    EXPECT_EQ(horizontalBar.minimum(), 0) << what;
    EXPECT_EQ(horizontalBar.maximum(), 900 - inside.viewport()->width()) << what;
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
  EXPECT_EQ(horizontalBar.maximum(), 0) << "a list that is wider than its extent";
}

TEST_F(ListBoxTest, KeepsItsHorizontalPlaceWhenALineIsAdded) {
  AddMany(2);
  SetExtent(900);
  horizontalBar.setValue(200);
  AddMany(50);
  PumpOnce();
  EXPECT_EQ(horizontalBar.value(), 200);
}

TEST_F(ListBoxTest, ShowsTheTextFromWhereItIsScrolledTo) {
  list.AddItem(QString(150, 'w') + QString(150, '-'));
  SetExtent(900);
  const QImage start = Picture(*inside.viewport());
  horizontalBar.setValue(horizontalBar.maximum());
  const QImage end = Picture(*inside.viewport());
  EXPECT_NE(CountOf(end, 0x404040), end.width() * end.height());
  EXPECT_EQ(inside.visualItemRect(inside.item(0)).width(), 900);
  EXPECT_EQ(inside.visualItemRect(inside.item(0)).right(), inside.viewport()->width() - 1);
  EXPECT_NE(start, end);
}

TEST_F(ListBoxTest, HasTheDesignsColoursUntilItIsGivenOthers) {
  EXPECT_EQ(list.BackColor(), 0x404040U);
  EXPECT_EQ(list.ForeColor(), kPixelForm.labelColor);
  list.AddItem("text");
  PumpOnce();
  const QImage picture = Picture(*inside.viewport());
  EXPECT_GT(CountOf(picture, 0x404040), picture.width() * picture.height() * 9 / 10);
  list.setBackColor(0x0000FF);
  list.setForeColor(0x00FF00);
  EXPECT_EQ(list.BackColor(), 0x0000FFU);
  EXPECT_EQ(list.ForeColor(), 0x00FF00U);
}

TEST_F(ListBoxTest, LetsTheUserSelectALineAndHasNoContextMenu) {
  AddMany(3);
  PumpOnce();
  Pointer pointer(form);
  pointer.MoveTo(*inside.viewport(), inside.visualItemRect(inside.item(1)).center());
  pointer.Click();
  EXPECT_EQ(list.ListIndex(), 1);
  pointer.Click(Qt::RightButton);
  EXPECT_EQ(inside.findChild<QMenu*>(), nullptr);
  for (const QWidget* part : inside.findChildren<QWidget*>()) {
    EXPECT_EQ(part->contextMenuPolicy(), Qt::NoContextMenu) << part->metaObject()->className();
  }
}

}  // namespace
}  // namespace kelvane::testing
