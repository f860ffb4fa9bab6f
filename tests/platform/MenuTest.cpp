#include "platform/Menu.h"

#include <gtest/gtest.h>

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

class AMenu : public ::testing::Test {
 protected:
  AMenu() {
    form.Open();
    for (const MenuDesign& design : kMenus) {
      const QString name = QLatin1String(design.name);
      form.Find<Menu>(name).Click = [this, name] { events.push_back(name.toStdString()); };
    }
  }

  static std::string Shown(const QList<QAction*>& actions) {
    QStringList shown;
    for (const QAction* action : actions) {
      if (action->isVisible()) shown << action->text();
    }
    return shown.join(", "_L1).toStdString();
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

  TestForm form{Controls{}, kMenus};
  QMenuBar& bar = *form.findChild<QMenuBar*>();
  Events events;
};

TEST_F(AMenu, ShowsTheTitlesAndItemsThatAreNotHidden) {
  EXPECT_EQ(Shown(bar.actions()), "Open, Donate");
  EXPECT_EQ(Shown(bar.actions().at(0)->menu()->actions()), "Load Video");
  EXPECT_EQ(Shown(bar.actions().at(2)->menu()->actions()), "Via Page");
}

TEST_F(AMenu, KnowsItsCaptionAndWhetherItIsVisible) {
  for (const MenuDesign& design : kMenus) {
    const auto& menu = form.Find<Menu>(design.name);
    EXPECT_EQ(menu.Caption(), QLatin1String(design.caption));
    EXPECT_EQ(menu.Visible(), design.visible) << design.name;
  }
}

TEST_F(AMenu, CanBeShownAndHidden) {
  form.Find<Menu>("mnu_Rem").setVisible(true);
  form.Find<Menu>("mnu_Extract").setVisible(true);
  form.Find<Menu>("mnu_Donate").setVisible(false);
  EXPECT_EQ(Shown(bar.actions()), "Open, Remove");
  EXPECT_EQ(Shown(bar.actions().at(0)->menu()->actions()), "Load Video, Extract");
}

TEST_F(AMenu, RaisesClickWhenTheUserChoosesIt) {
  Choose(0, 1);
  Choose(2, 1);
  EXPECT_EQ(events, (Events{"mnu_openVideo", "mnu_Page"}));
}

TEST_F(AMenu, ThatIsHiddenIsPassedOver) {
  Choose(0, 2);
  EXPECT_EQ(events, Events{"mnu_openVideo"});
}

TEST_F(AMenu, WithNobodyToTellIsNoTrouble) {
  form.Find<Menu>("mnu_Page").Click = nullptr;
  Choose(2, 1);
  EXPECT_EQ(events, Events{});
}

TEST_F(AMenu, StandsInTheWindowItselfAboveItsArea) {
  EXPECT_FALSE(bar.isNativeMenuBar());
  EXPECT_EQ(bar.pos(), QPoint(0, 0));
  EXPECT_EQ(bar.width(), form.width());
  EXPECT_GT(bar.height(), 0);
  EXPECT_EQ(form.height(), 200 + bar.height());
  EXPECT_EQ(form.ScaleHeight(), 200);
}

TEST(AForm, WithoutMenusHasNoMenuBar) {
  const TestForm form;
  EXPECT_EQ(form.findChild<QMenuBar*>(), nullptr);
}

}  // namespace
}  // namespace kelvane::testing
