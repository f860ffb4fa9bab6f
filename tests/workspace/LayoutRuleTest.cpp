// The layout rule: run at each change of the window's size, in pixels, but for the guards.
#include <array>
#include <set>

#include "shared/SharedValues.h"
#include "workspace/DesignTable.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

struct WindowSize {
  const char* name;
  float width;  // twips
  float height;
};

void PrintTo(const WindowSize& size, std::ostream* out) {
  *out << size.width << " by " << size.height << " twips";
}

constexpr auto kSizes = std::to_array<WindowSize>({{"TheLeast", 16665, 6500},
                                                   {"TheOneAtStart", 19335, 11265},
                                                   {"Tall", 16800, 14400},
                                                   {"FullHighDefinition", 28800, 16200},
                                                   {"VeryLarge", 57600, 32400}});

class LayoutRule : public MainWindowTest, public ::testing::WithParamInterface<WindowSize> {
 protected:
  struct Place {
    const char* name;
    float left;
    float top;
    float width;
    float height;
  };

  void ExpectPlaces(const std::vector<Place>& places) const {
    for (const auto& [name, left, top, width, height] : places) {
      const auto& control = Get<Control>(name);
      EXPECT_EQ(control.Left(), left) << name;
      EXPECT_EQ(control.Top(), top) << name;
      EXPECT_EQ(control.Width(), width) << name;
      EXPECT_EQ(control.Height(), height) << name;
      EXPECT_EQ(control.size(), QSize(static_cast<int>(width), static_cast<int>(height))) << name;
    }
  }
};

TEST_P(LayoutRule, PlacesEveryControlThatItMoves) {
  form_->setWidth(GetParam().width);
  form_->setHeight(GetParam().height);
  const float SW = form_->ScaleWidth();
  const float SH = form_->ScaleHeight();
  ASSERT_EQ(SW, GetParam().width / 15);
  ASSERT_GT(SH, 380);

  const float frameWidth = SW - 40;
  const float frameHeight = SH - 152 - 140;
  const float shape5Top = SH - 81 - 20;
  const float commands = shape5Top - 7 + 17 + 15;
  const float pbarWidth = SW - 35 - 816;
  ExpectPlaces({{"Picture1(0)", 20, 152, frameWidth, frameHeight},
                {"Picture1(1)", 0, 0, frameWidth - 17 - 4, frameHeight - 17},
                {"VScroll1", frameWidth - 17 - 4, 0, 17, frameHeight - 17 - 3},
                {"HScroll1", 0, frameHeight - 17 - 4, frameWidth - 17 - 4, 17},
                {"Shape5", 20, shape5Top, frameWidth, 81},
                {"Label6", 40, shape5Top - 7, 89, 17},
                {"Label14(0)", 40, commands, 89, 17},
                {"Label14(1)", 144, commands, 89, 17},
                {"Label14(2)", 248, commands, 89, 17},
                {"Label14(3)", 344, commands, 89, 17},
                {"Label14(4)", 440, commands, 137, 17},
                {"Label14(5)", 584, commands, 89, 17},
                {"Label14(6)", 680, commands, 89, 17},
                {"Label10", 784, commands, 73, 17},
                {"Label11", 928, commands, 81, 17},
                {"Label12", 864, commands, 49, 17},
                {"Label13", 1016, commands, 49, 17},
                {"Shape6", 2, 2, SW - 4, SH - 4},
                {"pbar", 816, 120, pbarWidth, 12},
                {"Shape4", 808, 104, pbarWidth + 22, 41},
                {"Shape3", 24, 40, SW - 45, 41}});
}

TEST_P(LayoutRule, LeavesEverythingElseAtItsDesignPlace) {
  const std::set<std::string> moved = {
      "Picture1(0)", "Picture1(1)", "VScroll1", "HScroll1", "Shape5", "Label6", "Label14(0)",
      "Label14(1)", "Label14(2)", "Label14(3)", "Label14(4)", "Label14(5)", "Label14(6)", "Label10",
      "Label11", "Label12", "Label13", "Shape6", "pbar", "Shape4", "Shape3",
      // Start-up has put these at the canvas's edges, and the player at its corner.
      "Picture2(0)", "Picture2(1)", "Picture2(2)", "Picture2(3)", "wmp"};
  form_->setWidth(GetParam().width);
  form_->setHeight(GetParam().height);
  std::vector<DesignRow> rows = kDesign;
  rows.insert(rows.end(), kReadOuts.begin(), kReadOuts.end());
  int checked = 0;
  for (const DesignRow& row : rows) {
    if (moved.contains(row.name) || std::string(row.container) == "Picture3") continue;
    const auto& control = Get<Control>(row.name);
    EXPECT_EQ(control.Left(), row.place.left / 15) << row.name;
    EXPECT_EQ(control.Top(), row.place.top / 15) << row.name;
    EXPECT_EQ(control.Width(), row.place.width / 15) << row.name;
    EXPECT_EQ(control.Height(), row.place.height / 15) << row.name;
    ++checked;
  }
  EXPECT_EQ(checked, 66 - 26 - 1);
}

TEST_P(LayoutRule, ResizedByTheUserTheWindowIsLaidOutInTheSameWay) {
  const QSize size(static_cast<int>(GetParam().width / 15),
                   static_cast<int>(GetParam().height / 15) + 1);
  form_->resize(size);
  PumpOnce();
  EXPECT_EQ(form_->size(), size);
  const float SH = form_->ScaleHeight();
  EXPECT_EQ(form_->ScaleWidth(), static_cast<float>(size.width()));
  EXPECT_EQ(Get<Control>("Shape5").Top(), SH - 101);
  EXPECT_EQ(Get<Control>("Label14(6)").Top(), SH - 101 - 7 + 32);
  EXPECT_EQ(Get<Control>("Picture1(0)").Height(), SH - 292);
  EXPECT_EQ(Get<Control>("Shape3").Width(), form_->ScaleWidth() - 45);
}

INSTANTIATE_TEST_SUITE_P(At, LayoutRule, ::testing::ValuesIn(kSizes),
                         [](const auto& size) { return std::string(size.param.name); });

class LayoutRuleGuards : public MainWindowTest {};

TEST_F(LayoutRuleGuards, AWindowMadeTooNarrowSnapsBack) {
  form_->setWidth(16664);
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->width(), 1111);
  form_->resize(300, form_->height());
  PumpOnce();
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->width(), 1111);
  EXPECT_EQ(Get<Control>("Shape6").Width(), 1111 - 4);
}

TEST_F(LayoutRuleGuards, AWindowMadeTooLowSnapsBack) {
  form_->setHeight(6499);
  EXPECT_EQ(form_->Height(), 6500);
  EXPECT_EQ(form_->height(), 433);
  form_->resize(form_->width(), 100);
  PumpOnce();
  EXPECT_EQ(form_->Height(), 6500);
  EXPECT_EQ(form_->height(), 433);
  EXPECT_EQ(Get<Control>("Shape6").Height(), form_->ScaleHeight() - 4);
}

TEST_F(LayoutRuleGuards, AWindowMadeTooSmallBothWaysSnapsBackBothWays) {
  form_->resize(10, 10);
  PumpOnce();
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->Height(), 6500);
}

TEST_F(LayoutRuleGuards, AWindowOfExactlyTheLeastSizeStays) {
  form_->setWidth(16665);
  form_->setHeight(6500);
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->Height(), 6500);
}

TEST_F(LayoutRuleGuards, MinimisingDoesNoLayoutAndRestoringRunsTheRuleInFull) {
  auto& command = Get<Control>("Label14(0)");
  auto& frame = Get<Control>("Picture1(0)");
  const float commandTop = command.Top();
  const float frameWidth = frame.Width();
  command.setTop(1);
  frame.setWidth(7);

  form_->showMinimized();
  ASSERT_TRUE(WaitFor([&] { return MainWindowMinimised; }));
  EXPECT_EQ(form_->State(), WindowState::kMinimised);
  EXPECT_EQ(command.Top(), 1);
  EXPECT_EQ(frame.Width(), 7);

  form_->showNormal();
  ASSERT_TRUE(WaitFor([&] { return !MainWindowMinimised; }));
  EXPECT_EQ(form_->State(), WindowState::kNormal);
  EXPECT_EQ(command.Top(), commandTop);
  EXPECT_EQ(frame.Width(), frameWidth);
}

TEST_F(LayoutRuleGuards, WhatWasMovedAwayIsPutBackInTheCorner) {
  auto& viewport = Get<Control>("Picture1(1)");
  auto& across = Get<Control>("HScroll1");
  auto& down = Get<Control>("VScroll1");
  auto& frame = Get<Control>("Picture1(0)");
  auto& border = Get<Control>("Shape6");
  viewport.setLeft(9);
  viewport.setTop(8);
  across.setLeft(7);
  down.setTop(6);
  frame.setLeft(5);
  border.setLeft(4);
  border.setTop(3);
  form_->setWidth(24000);
  EXPECT_EQ(viewport.Left(), 0);
  EXPECT_EQ(viewport.Top(), 0);
  EXPECT_EQ(across.Left(), 0);
  EXPECT_EQ(down.Top(), 0);
  EXPECT_EQ(frame.Left(), 20);
  EXPECT_EQ(border.Left(), 2);
  EXPECT_EQ(border.Top(), 2);
}

TEST_F(LayoutRuleGuards, TheLayoutRuleTouchesNeitherTheCanvasNorTheBars) {
  Canvas().setLeft(-30);
  Canvas().setTop(-50);
  Bar(LeftBar).setLeft(33);
  form_->setWidth(24000);
  form_->setHeight(12000);
  EXPECT_EQ(Canvas().Left(), -30);
  EXPECT_EQ(Canvas().Top(), -50);
  EXPECT_EQ(Canvas().Width(), 417);
  EXPECT_EQ(Canvas().Height(), 249);
  EXPECT_EQ(Bar(LeftBar).Left(), 33);
}

}  // namespace
}  // namespace kelvane::testing
