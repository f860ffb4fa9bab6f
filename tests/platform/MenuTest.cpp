// Menus under the menu bar, and one that only pops up.
#include "platform/Menu.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QMenu>
#include <QMenuBar>
#include <QtTest/QTest>

#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

const Menus kMenus{
    {.name = "mnu_open", .caption = "Open"},
    {.name = "mnu_openVideo", .caption = "Load Video", .title = "mnu_open"},
    {.name = "mnu_Extract", .caption = "Extract", .title = "mnu_open", .visible = false},
    {.name = "mnu_Rem", .caption = "Remove", .visible = false},
    {.name = "mnu_RemoveVideo", .caption = "Remove Video", .title = "mnu_Rem"},
    {.name = "mnu_Donate", .caption = "Donate"},
    {.name = "mnu_Page", .caption = "Via Page", .title = "mnu_Donate"}};

const Menus kPopUp{{.name = "mnu_Context", .caption = "contextMenu", .visible = false},
                   {.name = "mnu_Start", .caption = "Set Start", .title = "mnu_Context"},
                   {.name = "mnu_End", .caption = "Set End", .title = "mnu_Context"}};

class MenuTest : public ::testing::Test {
 protected:
  explicit MenuTest(const Menus& menus = kMenus) : form(Controls{}, menus) {
    form.Open();
    for (const MenuDesign& design : menus) {
      form.Find<Menu>(design.name).Click = [this, design] { events.emplace_back(design.name); };
    }
  }

  static std::string Shown(const QList<QAction*>& actions) {
    QStringList shown;
    for (const QAction* action : actions) {
      if (action->isVisible()) shown << action->text();
    }
    return shown.join(u", "_s).toStdString();
  }

  // Opens a title with the mouse and presses return on the item.
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

TEST_F(MenuTest, ShowsWhatIsNotHidden) {
  EXPECT_EQ(Shown(bar.actions()), "Open, Donate");
  EXPECT_EQ(Shown(bar.actions().at(0)->menu()->actions()), "Load Video");
  EXPECT_EQ(Shown(bar.actions().at(2)->menu()->actions()), "Via Page");
  for (const MenuDesign& design : kMenus) {
    const auto& menu = form.Find<Menu>(design.name);
    EXPECT_EQ(menu.Caption(), QLatin1String(design.caption));
    EXPECT_EQ(menu.Visible(), design.visible) << design.name;
  }
  form.Find<Menu>("mnu_Rem").setVisible(true);
  form.Find<Menu>("mnu_Extract").setVisible(true);
  form.Find<Menu>("mnu_Donate").setVisible(false);
  EXPECT_EQ(Shown(bar.actions()), "Open, Remove");
  EXPECT_EQ(Shown(bar.actions().at(0)->menu()->actions()), "Load Video, Extract");
}

TEST_F(MenuTest, RaisesClickOfTheItemThatTheUserChoosesIfItIsConnected) {
  Choose(0, 1);
  Choose(0, 2);  // passes the hidden item over
  Choose(2, 1);
  form.Find<Menu>("mnu_Page").Click = nullptr;
  Choose(2, 1);
  EXPECT_EQ(events, (Events{"mnu_openVideo", "mnu_openVideo", "mnu_Page"}));
}

TEST_F(MenuTest, StandsInTheWindowAboveItsContentArea) {
  EXPECT_FALSE(bar.isNativeMenuBar());
  EXPECT_EQ(bar.pos(), QPoint(0, 0));
  EXPECT_EQ(bar.width(), form.width());
  EXPECT_GT(bar.height(), 0);
  EXPECT_EQ(form.height(), 200 + bar.height());
  EXPECT_EQ(form.ScaleHeight(), 200);
  EXPECT_EQ(TestForm().findChild<QMenuBar*>(), nullptr) << "a form without menus has none";
}

class PopUpMenu : public MenuTest {
 protected:
  PopUpMenu() : MenuTest(kPopUp) {}
  ~PopUpMenu() override { menu.close(); }

  void Open() { form.Find<Menu>("mnu_Context").PopUp(); }

  QMenu& menu = *bar.actions().at(0)->menu();
};

TEST_F(PopUpMenu, TakesNoRoomInItsWindow) {
  EXPECT_EQ(form.height(), 200);
  EXPECT_EQ(form.ScaleHeight(), 200);
  EXPECT_EQ(CountOf(Picture(form), kPixelForm.backColor), 300 * 200);
}

TEST_F(PopUpMenu, OpensAtThePointerAndReturnsAtOnce) {
  EXPECT_FALSE(menu.isVisible());
  Open();
  EXPECT_TRUE(menu.isVisible());
  EXPECT_EQ(menu.pos(), QCursor::pos());
  EXPECT_EQ(Shown(menu.actions()), "Set Start, Set End");
}

TEST_F(PopUpMenu, RaisesClickOfTheEntryThatIsChosenEachTime) {
  for (const int entry : {1, 0, 1}) {
    Open();
    // Qt ignores a click of a pointer that has hardly moved since the menu opened under it.
    const QPoint goal = menu.actionGeometry(menu.actions()[entry]).center();
    constexpr int kSteps = 8;
    for (int step = 1; step <= kSteps; ++step) QTest::mouseMove(&menu, goal * step / kSteps);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, goal);
    EXPECT_FALSE(menu.isVisible());
  }
  EXPECT_EQ(events, (Events{"mnu_End", "mnu_Start", "mnu_End"}));
}

TEST_F(PopUpMenu, RaisesNothingWhereItIsClosed) {
  Open();
  QTest::keyClick(&menu, Qt::Key_Escape);
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(events, Events{});
}

}  // namespace
}  // namespace kelvane::testing
