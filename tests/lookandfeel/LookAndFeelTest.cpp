// The look of the joiner's lists. The tests of the platform layer test how a flat header and a list
// with an extent are painted and scrolled.
#include <gtest/gtest.h>

#include "lookandfeel/FlatListViewHeaders.h"
#include "lookandfeel/ListBoxScrollBar.h"
#include "platform/Form.h"
#include "platform/ListBox.h"
#include "platform/ListView.h"

namespace kelvane::testing {
namespace {

constexpr FormDesign kForm{.name = "Form",
                           .caption = "A form",
                           .clientWidth = 9000,
                           .clientHeight = 6000,
                           .backColor = 0x404040,
                           .labelColor = 0xC0C0C0,
                           .scale = ScaleMode::kPixels};
constexpr ControlDesign kLists[]{
    {.name = "ListView1", .controlClass = ControlClass::kListView, .place = {0, 0, 4500, 3000}},
    {.name = "List1", .controlClass = ControlClass::kListBox, .place = {4500, 0, 4500, 3000}}};

TEST(LookAndFeel, TogglesAHeaderBetweenButtonsAndFlat) {
  const Form form(kForm, kLists);
  auto& table = form.Find<ListView>("ListView1");
  ToggleFlatHeaders(table);
  EXPECT_FALSE(table.HeaderButtons());
  ToggleFlatHeaders(table);
  EXPECT_TRUE(table.HeaderButtons());
}

TEST(LookAndFeel, GivesAListAHorizontalExtentOf900Pixels) {
  const Form form(kForm, kLists);
  auto& list = form.Find<ListBox>("List1");
  GiveHorizontalExtent(list);
  EXPECT_EQ(list.HorizontalExtent(), 900);
}

}  // namespace
}  // namespace kelvane::testing
