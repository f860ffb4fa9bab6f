// List boxes and list views.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QListWidget>
#include <QScrollBar>
#include <QTreeWidget>

#include "platform/ListBox.h"
#include "platform/ListView.h"
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
    ServePendingEvents();
  }

  TestForm form{{Design(kListBox, "List1", {10, 10, 200, 100}).Color(0x404040)}};
  ListBox& list = form.Find<ListBox>("List1");
  QListWidget& inside = *list.findChild<QListWidget*>();
  QScrollBar& horizontalBar = *inside.horizontalScrollBar();
};

TEST_F(ListBoxTest, KeepsItsLinesInOrderAndReplacesOneInItsPlace) {
  EXPECT_EQ(list.ListIndex(), -1);
  for (const char* text : {"b", "a", "b", ""}) list.AddItem(text);
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.List(0), u"b"_s);
  list.setList(1, " Deleted Section ");
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.List(1), u" Deleted Section "_s);
  EXPECT_EQ(list.List(2), u"b"_s);
}

TEST_F(ListBoxTest, HasAtMostOneLineSelectedAndIgnoresOneThatDoesNotExist) {
  AddMany(3);
  for (const int index : {2, -1, 1}) {
    list.setListIndex(index);
    EXPECT_EQ(list.ListIndex(), index);
    EXPECT_EQ(inside.selectedItems().size(), index < 0 ? 0 : 1);
  }
  for (const int index : {-2, 3, 100, -100}) {
    list.setList(index, "x");
    list.setListIndex(index);
    EXPECT_EQ(list.List(index), QString()) << index;
    EXPECT_EQ(list.ListIndex(), 1) << index;
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

TEST_F(ListBoxTest, ScrollsVerticallyToTheSelectedLineAndNotHorizontally) {
  AddMany(50);
  SetExtent(900);
  horizontalBar.setValue(70);
  AddMany(50);
  ServePendingEvents();
  for (const int line : {99, 0}) {
    list.setListIndex(line);
    EXPECT_TRUE(inside.viewport()->rect().intersects(inside.visualItemRect(inside.item(line))))
        << line;
    EXPECT_EQ(horizontalBar.value(), 70) << line;
  }
}

TEST_F(ListBoxTest, ScrollsHorizontallyOnlyIfItHasAnExtent) {
  list.AddItem(QString(500, 'w'));
  ServePendingEvents();
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
    ServePendingEvents();
    EXPECT_TRUE(horizontalBar.isVisible()) << what;
    EXPECT_EQ(horizontalBar.minimum(), 0) << what;
    EXPECT_EQ(horizontalBar.maximum(), 900 - inside.viewport()->width()) << what;
  };
  expectRange("no line");
  list.AddItem("short");
  expectRange("a short line");
  list.AddItem(QString(500, 'w'));
  expectRange("a line that is longer than the extent");
  AddMany(100);
  expectRange("more lines than fit");
  list.setWidth(300);
  expectRange("a wider list");
  list.setWidth(1000);
  ServePendingEvents();
  EXPECT_EQ(horizontalBar.maximum(), 0) << "a list that is wider than its extent scrolls";
}

TEST_F(ListBoxTest, ShowsTheTextFromWhereItIsScrolledTo) {
  list.AddItem(QString(150, 'w') + QString(150, '-'));
  SetExtent(900);
  const QImage start = Picture(*inside.viewport());
  horizontalBar.setValue(horizontalBar.maximum());
  const QImage end = Picture(*inside.viewport());
  EXPECT_NE(CountOf(end, 0x404040), end.width() * end.height()) << "the text doesn't go on";
  EXPECT_NE(start, end);
}

TEST_F(ListBoxTest, IsPaintedInItsColours) {
  list.AddItem("HHHH");
  ServePendingEvents();
  const auto count = [this](QRgb color) { return CountOf(Picture(*inside.viewport()), color); };
  EXPECT_GT(count(0x404040), inside.viewport()->width() * inside.viewport()->height() * 9 / 10);
  EXPECT_GT(count(kPixelForm.labelColor), 0);
  list.setBackColor(0x0000FF);
  list.setForeColor(0x00FF00);
  EXPECT_EQ(count(0x404040), 0);
  EXPECT_GT(count(0x00FF00), 0);
}

TEST_F(ListBoxTest, LetsTheUserSelectALine) {
  AddMany(3);
  ServePendingEvents();
  Pointer pointer(form);
  pointer.MoveTo(*inside.viewport(), inside.visualItemRect(inside.item(1)).center());
  pointer.Click();
  EXPECT_EQ(list.ListIndex(), 1);
}

class ListViewTest : public ::testing::Test {
 protected:
  ListViewTest() {
    form.Open();
    for (const char* heading : {"Index", "Title", "Seconds"}) list.ColumnHeaders.Add(heading);
    ServePendingEvents();
  }

  void AddRows(int count) {
    for (int i = 1; i <= count; ++i) list.ListItems.Add(QString::number(i));
  }
  std::vector<int> SelectedRows() const {
    std::vector<int> rows;
    for (int number = 1; number <= list.ListItems.Count(); ++number) {
      if (list.ListItems(number).Selected()) rows.push_back(number);
    }
    return rows;
  }
  QImage HeaderPicture() {
    ServePendingEvents();
    return Picture(*header.viewport());
  }

  TestForm form{{Design(kListView, "ListView1", {10, 10, 280, 160}).Color(0x404040)}};
  ListView& list = form.Find<ListView>("ListView1");
  QTreeWidget& inside = *list.findChild<QTreeWidget*>();
  QHeaderView& header = *inside.header();
  Pointer pointer{form};
};

TEST_F(ListViewTest, NumbersItsColumnsAndGivesThemTheDefaultWidth) {
  EXPECT_EQ(list.ColumnHeaders.Add("Fourth"), 4);
  EXPECT_EQ(inside.columnCount(), 4);
  EXPECT_EQ(inside.headerItem()->text(3), u"Fourth"_s);
  for (int column = 0; column < 3; ++column) EXPECT_EQ(header.sectionSize(column), 96) << column;
}

TEST_F(ListViewTest, KeepsItsRowsInOrderWithTheirTexts) {
  list.ListItems.Add("1").setSubItems(1, "a.mp4");
  list.ListItems.Add("2").setSubItems(2, "80");
  EXPECT_EQ(list.ListItems.Count(), 2);
  EXPECT_EQ(list.ListItems(1).Text(), u"1"_s);
  EXPECT_EQ(list.ListItems(1).SubItems(1), u"a.mp4"_s);
  EXPECT_EQ(list.ListItems(1).SubItems(2), QString());
  EXPECT_EQ(list.ListItems(2).SubItems(2), u"80"_s);
}

TEST_F(ListViewTest, IgnoresAColumnOrARowThatDoesNotExist) {
  AddRows(2);
  for (const int column : {3, 0, -1}) list.ListItems(1).setSubItems(column, "x");
  EXPECT_EQ(list.ListItems(1).Text(), u"1"_s);
  EXPECT_EQ(inside.columnCount(), 3);
  list.ListItems(2).Select();
  for (const int number : {0, 3, -1, 100}) {
    ListView::ListItem none = list.ListItems(number);
    none.setSubItems(1, "x");
    none.Select();
    EXPECT_EQ(none.Text(), QString()) << number;
    EXPECT_FALSE(none.Selected()) << number;
    EXPECT_EQ(SelectedRows(), std::vector<int>{2}) << number;
  }
}

TEST_F(ListViewTest, HasOneRowSelectedInAllColumnsAndScrollsItIntoView) {
  AddRows(200);
  ServePendingEvents();
  for (const int number : {200, 1}) {
    list.ListItems(number).Select();
    EXPECT_EQ(SelectedRows(), std::vector<int>{number});
    EXPECT_EQ(inside.selectionModel()->selectedIndexes().size(), 3);
    const QRect row = inside.visualItemRect(inside.topLevelItem(number - 1));
    EXPECT_TRUE(inside.viewport()->rect().intersects(row)) << number;
  }
}

TEST_F(ListViewTest, GivesItsFocusToItsRows) {
  ASSERT_TRUE(WaitFor([&] { return form.isActiveWindow(); }));
  list.SetFocus();
  EXPECT_EQ(QApplication::focusWidget(), &inside);
}

TEST_F(ListViewTest, RaisesMouseUpOverItsRowsAndBelowThem) {
  AddRows(2);
  ServePendingEvents();
  Events events;
  list.MouseUp = [&](const MouseEvent& event) { events.push_back(Describe("Up", event)); };
  pointer.MoveTo(list, QPoint(20, 30));
  pointer.Click(Qt::RightButton);
  pointer.MoveTo(list, QPoint(20, 100));
  pointer.Click();
  EXPECT_EQ(events, (Events{"Up button 2 at 20,30", "Up button 1 at 20,100"}));
}

TEST_F(ListViewTest, HasAHeaderOfButtonsThatCanBeClickedUntilItIsFlat) {
  AddRows(2);
  int pressesAndClicks = 0;
  QObject::connect(&header, &QHeaderView::sectionPressed, [&] { ++pressesAndClicks; });
  QObject::connect(&header, &QHeaderView::sectionClicked, [&] { ++pressesAndClicks; });
  EXPECT_TRUE(list.HeaderButtons());
  const QImage raised = HeaderPicture();
  pointer.MoveTo(*header.viewport(), QPoint(10, 10));
  pointer.Click();
  EXPECT_EQ(pressesAndClicks, 2) << "not one press and one click";
  pointer.MoveTo(form, QPoint(1, 1));
  list.setHeaderButtons(false);
  EXPECT_FALSE(list.HeaderButtons());
  const QImage flat = HeaderPicture();
  EXPECT_NE(flat, raised);
  EXPECT_EQ(ColorAt(flat, 60, 3), 0x404040U);
  EXPECT_EQ(ColorAt(flat, 60, flat.height() - 3), 0x404040U);
  EXPECT_EQ(ColorAt(flat, 60, flat.height() - 1), 0x808080U) << "no line below";
  pointer.MoveTo(*header.viewport(), QPoint(10, 10));
  EXPECT_EQ(HeaderPicture(), flat);
  pointer.Press();
  EXPECT_EQ(HeaderPicture(), flat);
  pointer.Release();
  EXPECT_EQ(HeaderPicture(), flat);
  EXPECT_EQ(pressesAndClicks, 2);
  EXPECT_EQ(list.ListItems(1).Text(), u"1"_s) << "the rows were sorted";
}

TEST_F(ListViewTest, ShowsItsHeadingsToTheLastLetterInTheFlatHeader) {
  list.setHeaderButtons(false);
  const auto pictureOf = [&](const char* heading) {
    inside.headerItem()->setText(2, QLatin1String(heading));
    return HeaderPicture();
  };
  EXPECT_NE(pictureOf("Duration (seconds)"), pictureOf("Duration (second:"));
}

}  // namespace
}  // namespace kelvane::testing
