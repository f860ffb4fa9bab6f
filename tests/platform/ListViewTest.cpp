#include "platform/ListView.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QTreeWidget>

#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

class ListViewTest : public ::testing::Test {
 protected:
  ListViewTest() {
    form.Open();
    for (const char* heading : {"Index", "Title", "Seconds"}) {
      list.ColumnHeaders.Add(heading);
    }
    PumpOnce();
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
  // With the pointer in its first column, whatever is pressed.
  QImage HeaderUnder(Pointer& pointer) {
    pointer.MoveTo(*header.viewport(), QPoint(10, 10));
    PumpOnce();
    return Picture(*header.viewport());
  }

  TestForm form{{Design(kListView, "ListView1", {10, 10, 280, 160}).Color(0x404040)}};
  ListView& list = form.Find<ListView>("ListView1");
  QTreeWidget& inside = *list.findChild<QTreeWidget*>();
  QHeaderView& header = *inside.header();
};

TEST_F(ListViewTest, NumbersItsColumnsAndGivesThemTheDefaultWidth) {
  EXPECT_EQ(list.ColumnHeaders.Add("Fourth"), 4);
  EXPECT_EQ(inside.columnCount(), 4);
  EXPECT_EQ(inside.headerItem()->text(0), QString("Index"));
  EXPECT_EQ(inside.headerItem()->text(3), QString("Fourth"));
  for (int column = 0; column < 3; ++column) EXPECT_EQ(header.sectionSize(column), 96) << column;
}

TEST_F(ListViewTest, TakesRowsInOrderWithTheirTexts) {
  EXPECT_EQ(list.ListItems.Count(), 0);
  list.ListItems.Add("1").setSubItems(1, "a.mp4");
  ListView::ListItem second = list.ListItems.Add("2");
  second.setSubItems(1, "b.mp4");
  second.setSubItems(2, "80");
  EXPECT_EQ(list.ListItems.Count(), 2);
  EXPECT_EQ(list.ListItems(1).Text(), QString("1"));
  EXPECT_EQ(list.ListItems(1).SubItems(1), QString("a.mp4"));
  EXPECT_EQ(list.ListItems(1).SubItems(2), QString());
  EXPECT_EQ(list.ListItems(2).SubItems(2), QString("80"));
}

TEST_F(ListViewTest, IgnoresAColumnOrARowThatIsNotThere) {
  AddRows(2);
  for (const int column : {3, 0, -1}) list.ListItems(1).setSubItems(column, "x");
  EXPECT_EQ(list.ListItems(1).Text(), QString("1"));
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

TEST_F(ListViewTest, HasOneRowSelectedInAllColumns) {
  AddRows(3);
  list.ListItems(3).Select();
  EXPECT_EQ(SelectedRows(), std::vector<int>{3});
  list.ListItems(1).Select();
  EXPECT_EQ(SelectedRows(), std::vector<int>{1});
  EXPECT_EQ(inside.selectionModel()->selectedIndexes().size(), 3);
}

TEST_F(ListViewTest, ScrollsTheSelectedRowIntoView) {
  AddRows(200);
  PumpOnce();
  list.ListItems(200).Select();
  EXPECT_TRUE(
      inside.viewport()->rect().intersects(inside.visualItemRect(inside.topLevelItem(199))));
}

TEST_F(ListViewTest, GivesItsFocusToItsRows) {
  form.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return form.isActiveWindow(); }));
  list.SetFocus();
  EXPECT_EQ(QApplication::focusWidget(), &inside);
}

TEST_F(ListViewTest, RaisesMouseUpOverItsRowsAndBelowThem) {
  AddRows(2);
  PumpOnce();
  Events events;
  list.MouseUp = [&](const MouseEvent& event) { events.push_back(Describe("Up", event)); };
  Pointer pointer(form);
  pointer.MoveTo(list, QPoint(20, 30));
  pointer.Click(Qt::RightButton);
  pointer.MoveTo(list, QPoint(20, 100));
  pointer.Click();
  EXPECT_EQ(events, (Events{"Up button 2 at 20,30", "Up button 1 at 20,100"}));
}

TEST_F(ListViewTest, HasTheDesignsColoursInHeaderAndRows) {
  EXPECT_EQ(list.BackColor(), 0x404040U);
  EXPECT_EQ(list.ForeColor(), kPixelForm.labelColor);
  list.setHeaderButtons(false);
  const QImage flat = Picture(*header.viewport());
  EXPECT_GT(CountOf(flat, 0x404040), flat.width() * flat.height() / 2);
}

TEST_F(ListViewTest, HasAHeaderOfButtonsThatCanBeClickedUntilItIsFlat) {
  AddRows(2);
  int clicks = 0;
  QObject::connect(&header, &QHeaderView::sectionPressed, [&] { ++clicks; });
  QObject::connect(&header, &QHeaderView::sectionClicked, [&] { ++clicks; });
  Pointer pointer(form);
  EXPECT_TRUE(list.HeaderButtons());
  const QImage raised = HeaderUnder(pointer);
  pointer.Click();
  EXPECT_EQ(clicks, 2) << "pressed and clicked";
  list.setHeaderButtons(false);
  EXPECT_FALSE(list.HeaderButtons());
  pointer.MoveTo(form, QPoint(1, 1));
  PumpOnce();
  const QImage flat = Picture(*header.viewport());
  EXPECT_NE(flat, raised);
  EXPECT_EQ(HeaderUnder(pointer), flat);
  pointer.Press();
  EXPECT_EQ(HeaderUnder(pointer), flat);
  pointer.Release();
  EXPECT_EQ(HeaderUnder(pointer), flat);
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(list.ListItems(1).Text(), QString("1")) << "nothing was sorted";
}

TEST_F(ListViewTest, ShowsItsHeadingsWholeInTheFlatHeader) {
  list.setHeaderButtons(false);
  const auto under = [&](const char* heading) {
    inside.headerItem()->setText(2, QLatin1String(heading));
    return Picture(*header.viewport());
  };
  EXPECT_NE(under("Duration (seconds)"), under("Duration (second:")) << "to the last letter";
}

TEST_F(ListViewTest, HasNoContextMenu) {
  for (const QWidget* part : inside.findChildren<QWidget*>()) {
    EXPECT_EQ(part->contextMenuPolicy(), Qt::NoContextMenu) << part->metaObject()->className();
  }
}

}  // namespace
}  // namespace kelvane::testing
