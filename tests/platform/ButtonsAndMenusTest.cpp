// Command buttons, option buttons, the menus of the menu bar, and context menus, which are the
// menus of the menu bar's hidden titles.
#include <gtest/gtest.h>

#include <QCursor>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QtTest/QTest>

#include "platform/CommandButton.h"
#include "platform/Menu.h"
#include "platform/OptionButton.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

const Menus kMenus{
    {.name = "mnu_open", .caption = "Open"},
    {.name = "mnu_openVideo", .caption = "Load Video", .menu = "mnu_open"},
    {.name = "mnu_Extract", .caption = "Extract", .menu = "mnu_open", .visible = false},
    {.name = "mnu_Rem", .caption = "Remove", .visible = false},
    {.name = "mnu_RemoveVideo", .caption = "Remove Video", .menu = "mnu_Rem"},
    {.name = "mnu_Donate", .caption = "Donate"},
    {.name = "mnu_Page", .caption = "Via Page", .menu = "mnu_Donate"}};

const Menus kContextMenu{{.name = "mnu_Context", .caption = "contextMenu", .visible = false},
                         {.name = "mnu_Start", .caption = "Set Start", .menu = "mnu_Context"},
                         {.name = "mnu_End", .caption = "Set End", .menu = "mnu_Context"}};

class MenuTest : public ::testing::Test {
 protected:
  explicit MenuTest(const Menus& menus = kMenus) : form(Controls{}, menus) {
    form.Open();
    for (const MenuDesign& design : menus) {
      form.Find<Menu>(design.name).Click = [this, design] { events.emplace_back(design.name); };
    }
  }

  static std::string Visible(const QList<QAction*>& actions) {
    QStringList captions;
    for (const QAction* action : actions) {
      if (action->isVisible()) captions << action->text();
    }
    return captions.join(u", "_s).toStdString();
  }

  // Opens the menu of a title with the mouse, presses Down `downwards` times and then Return.
  void Choose(int title, int downwards) {
    QAction* action = bar.actions().at(title);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(action).center());
    QMenu* open = action->menu();
    ASSERT_TRUE(open->isVisible());
    for (int step = 0; step < downwards; ++step) QTest::keyClick(open, Qt::Key_Down);
    QTest::keyClick(open, Qt::Key_Return);
    EXPECT_FALSE(open->isVisible());
  }

  Events events;
  TestForm form;
  QMenuBar& bar = *form.findChild<QMenuBar*>();
};

TEST_F(MenuTest, ShowsTheTitlesAndItemsThatAreVisible) {
  EXPECT_EQ(Visible(bar.actions()), "Open, Donate");
  EXPECT_EQ(Visible(bar.actions().at(0)->menu()->actions()), "Load Video");
  EXPECT_FALSE(form.Find<Menu>("mnu_Extract").Visible());
  form.Find<Menu>("mnu_Rem").setVisible(true);
  form.Find<Menu>("mnu_Extract").setVisible(true);
  form.Find<Menu>("mnu_Donate").setVisible(false);
  EXPECT_EQ(Visible(bar.actions()), "Open, Remove");
  EXPECT_EQ(Visible(bar.actions().at(0)->menu()->actions()), "Load Video, Extract");
  EXPECT_TRUE(form.Find<Menu>("mnu_Extract").Visible());
}

TEST_F(MenuTest, RaisesClickOfTheChosenItemIfTheItemHasAHandler) {
  Choose(0, 1);
  Choose(0, 2);  // the first item again: the second one is hidden
  Choose(2, 1);
  form.Find<Menu>("mnu_Page").Click = nullptr;
  Choose(2, 1);
  EXPECT_EQ(events, (Events{"mnu_openVideo", "mnu_openVideo", "mnu_Page"}));
}

class ContextMenu : public MenuTest {
 protected:
  ContextMenu() : MenuTest(kContextMenu) {}
  ~ContextMenu() override { menu.close(); }

  void Open() { form.Find<Menu>("mnu_Context").PopUp(); }

  QMenu& menu = *bar.actions().at(0)->menu();
};

TEST_F(ContextMenu, TakesNoRoomInItsWindow) {
  EXPECT_EQ(form.height(), 200);
  EXPECT_EQ(form.ScaleHeight(), 200);
  EXPECT_EQ(CountOf(Picture(form), kPixelForm.backColor), 300 * 200);
}

TEST_F(ContextMenu, OpensAtThePointerWithoutWaitingForAChoice) {
  Open();
  EXPECT_TRUE(menu.isVisible());
  EXPECT_EQ(menu.pos(), QCursor::pos());
  EXPECT_EQ(Visible(menu.actions()), "Set Start, Set End");
  QTest::keyClick(&menu, Qt::Key_Escape);
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(events, Events{}) << "Escape chose an item";
}

TEST_F(ContextMenu, RaisesClickOfTheItemThatIsChosenEachTime) {
  for (const int item : {1, 0, 1}) {
    Open();
    // Qt ignores a click of a pointer that has hardly moved since the menu opened under it.
    const QPoint goal = menu.actionGeometry(menu.actions()[item]).center();
    constexpr int kSteps = 8;
    for (int step = 1; step <= kSteps; ++step) QTest::mouseMove(&menu, goal * step / kSteps);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, goal);
    EXPECT_FALSE(menu.isVisible());
  }
  EXPECT_EQ(events, (Events{"mnu_End", "mnu_Start", "mnu_End"}));
}

TEST(CommandButton, RaisesClickWithItsIndexAtTheRelease) {
  TestForm form({Design(kCommandButton, "Command1(4)", {0, 0, 50, 20})});
  form.Open();
  auto& button = form.Find<CommandButton>("Command1(4)");
  Events events;
  button.Click = [&](int index) { events.push_back(std::to_string(index)); };
  Pointer pointer(form);
  pointer.MoveTo(button, {10, 10});
  pointer.Press();
  EXPECT_EQ(events, Events{});
  pointer.Release();
  EXPECT_EQ(events, Events{"4"});
}

class OptionButtonTest : public ::testing::Test {
 protected:
  OptionButtonTest() { form.Open(); }

  OptionButton& Option(const char* name) { return form.Find<OptionButton>(name); }
  std::string Chosen() {
    std::string chosen;
    for (const char* name : {"One", "Two", "Three", "Four"}) {
      if (Option(name).Value()) chosen += name;
    }
    return chosen;
  }

  // The option buttons outside the box are built last, and mustn't join the group of those inside.
  TestForm form{{Design(kPictureBox, "Box", {0, 40, 200, 100}),
                 Design(kOptionButton, "Three", {0, 0, 100, 17}).In("Box"),
                 Design(kOptionButton, "Four", {0, 20, 100, 17}).In("Box"),
                 Design(kOptionButton, "One", {0, 0, 100, 17}).Caption("First").Chosen(),
                 Design(kOptionButton, "Two", {0, 20, 100, 17})}};
  Pointer pointer{form};
};

TEST_F(OptionButtonTest, IsTheOnlyOneChosenInItsContainer) {
  EXPECT_EQ(Chosen(), "One") << "not the choice of the design";
  Option("Two").Choose();
  EXPECT_EQ(Chosen(), "Two");
  Option("Three").Choose();
  EXPECT_EQ(Chosen(), "TwoThree");
  Option("One").Choose();
  EXPECT_EQ(Chosen(), "OneThree");
}

TEST_F(OptionButtonTest, IsChosenByTheUsersClickAndKeys) {
  pointer.MoveTo(Option("Two"), QPoint(8, 8));
  for (int clicks = 0; clicks < 2; ++clicks) {
    pointer.Click();
    EXPECT_EQ(Chosen(), "Two");
  }
  auto* inside = Option("Two").findChild<QRadioButton*>();
  inside->setFocus();
  QTest::keyClick(inside, Qt::Key_Up);
  EXPECT_EQ(Chosen(), "One");
}

TEST_F(OptionButtonTest, RaisesMouseMoveWhileNoMouseButtonIsHeld) {
  Events events;
  Record(Option("Two"), events);
  pointer.MoveTo(Option("Two"), QPoint(10, 5));
  pointer.MoveTo(Option("Two"), QPoint(60, 6));
  EXPECT_EQ(events, (Events{"Move at 10,5", "Move at 60,6"}));
}

TEST_F(OptionButtonTest, DrawsItsCaptionInItsColour) {
  const auto caption = [this] { return Picture(form).copy(25, 0, 70, 17); };
  const QImage before = caption();
  EXPECT_LT(CountOf(before, kPixelForm.backColor), 70 * 17) << "no caption is drawn";
  Option("One").setForeColor(0x00FF00);
  EXPECT_NE(caption(), before);
  Option("One").setForeColor(kPixelForm.labelColor);
  EXPECT_EQ(caption(), before);
}

}  // namespace
}  // namespace kelvane::testing
