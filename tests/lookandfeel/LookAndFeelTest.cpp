// Flat headers and the list's extent, by their outcome.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QListWidget>
#include <QScrollBar>
#include <QTreeView>

#include "lookandfeel/FlatListViewHeaders.h"
#include "lookandfeel/ListBoxScrollBar.h"
#include "platform/Form.h"
#include "platform/ListBox.h"
#include "platform/ListView.h"
#include "support/Events.h"
#include "support/Pictures.h"

namespace kelvane::testing {
namespace {

constexpr FormDesign kForm{.name = "Form",
                           .caption = "A form",
                           .clientWidth = 9000,
                           .clientHeight = 6000,
                           .backColor = 0x404040,
                           .labelColor = 0xC0C0C0,
                           .scale = ScaleMode::kPixels};

class LookAndFeel : public ::testing::Test {
 protected:
  LookAndFeel() {
    form.Load();
    form.Show();
    table.ColumnHeaders.Add("Index");
    PumpOnce();
  }
  ~LookAndFeel() override { form.Unload(); }

  QHeaderView& Header() const { return *table.findChild<QTreeView*>()->header(); }

  const std::vector<ControlDesign> controls{{.name = "ListView1",
                                             .controlClass = ControlClass::kListView,
                                             .place = {0, 0, 4500, 3000},
                                             .color = 0x404040},
                                            {.name = "List1",
                                             .controlClass = ControlClass::kListBox,
                                             .place = {4500, 0, 4500, 3000},
                                             .color = 0x404040}};
  Form form{kForm, controls};
  ListView& table = form.Find<ListView>("ListView1");
  ListBox& paths = form.Find<ListBox>("List1");
};

TEST_F(LookAndFeel, AFreshHeaderIsFlattenedOnce) {
  ASSERT_TRUE(Header().sectionsClickable());
  FlattenHeaders(table);
  EXPECT_FALSE(table.HeaderButtons());
  EXPECT_FALSE(Header().sectionsClickable());
}

TEST_F(LookAndFeel, AHeaderThatIsFlatAlreadyBecomesButtonsAgain) {
  FlattenHeaders(table);
  FlattenHeaders(table);
  EXPECT_TRUE(table.HeaderButtons());
}

TEST_F(LookAndFeel, AFlatHeaderIsDrawnInTheTablesColoursWithoutAnyRelief) {
  FlattenHeaders(table);
  PumpOnce();
  const QImage picture = Picture(*Header().viewport());
  // Ground, and the lines below and beside the heading.
  EXPECT_EQ(picture.pixel(60, 3), 0xff404040U);
  EXPECT_EQ(picture.pixel(60, picture.height() - 3), 0xff404040U);
  EXPECT_EQ(picture.pixel(60, picture.height() - 1), 0xff808080U);
}

TEST_F(LookAndFeel, TheListScrollsSidewaysOver900PixelsWhateverItHolds) {
  GiveHorizontalExtent(paths);
  PumpOnce();
  auto* lines = paths.findChild<QListWidget*>();
  const auto reach = [&] {
    return lines->horizontalScrollBar()->maximum() + lines->viewport()->width();
  };
  EXPECT_EQ(reach(), 900);
  paths.AddItem("/a.mp4");
  PumpOnce();
  EXPECT_EQ(reach(), 900);
  paths.AddItem(QString(400, 'w'));
  PumpOnce();
  EXPECT_EQ(reach(), 900);
}

}  // namespace
}  // namespace kelvane::testing
