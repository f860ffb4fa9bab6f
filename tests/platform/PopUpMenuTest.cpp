// A menu that only pops up.
#include <gtest/gtest.h>

#include <QCursor>
#include <QMenu>
#include <QMenuBar>
#include <QtTest/QTest>

#include "platform/Menu.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

const Menus kMenus{{.name = "mnu_Context", .caption = "contextMenu", .visible = false},
                   {.name = "mnu_Start", .caption = "Set Start", .title = "mnu_Context"},
                   {.name = "mnu_End", .caption = "Set End", .title = "mnu_Context"}};

class APopUpMenu : public ::testing::Test {
 protected:
  APopUpMenu() {
    form.Open();
    for (const char* name : {"mnu_Start", "mnu_End"}) {
      form.Find<Menu>(name).Click = [this, name] { events.emplace_back(name); };
    }
  }
  ~APopUpMenu() override { menu.close(); }

  // Goes to the entry as a hand does: Qt ignores a click of a pointer that has hardly moved since
  // the menu opened under it.
  void Choose(int entry) {
    const QPoint goal = menu.actionGeometry(menu.actions()[entry]).center();
    constexpr int kSteps = 8;
    for (int step = 1; step <= kSteps; ++step) QTest::mouseMove(&menu, goal * step / kSteps);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, goal);
  }

  TestForm form{Controls{}, kMenus};
  QMenu& menu = *form.findChild<QMenuBar*>()->actions().at(0)->menu();
  Events events;
};

TEST_F(APopUpMenu, TakesNoRoomInItsWindow) {
  EXPECT_EQ(form.height(), 200);
  EXPECT_EQ(form.ScaleHeight(), 200);
  EXPECT_EQ(CountOf(Picture(form), kPixelForm.backColor), 300 * 200);
  EXPECT_FALSE(form.Find<Menu>("mnu_Context").Visible());
}

TEST_F(APopUpMenu, OpensAtThePointerAndReturnsAtOnce) {
  EXPECT_FALSE(menu.isVisible());
  form.Find<Menu>("mnu_Context").PopUp();
  EXPECT_TRUE(menu.isVisible());
  EXPECT_EQ(menu.pos(), QCursor::pos());
  ASSERT_EQ(menu.actions().size(), 2);
  EXPECT_EQ(menu.actions()[0]->text(), u"Set Start"_s);
  EXPECT_EQ(menu.actions()[1]->text(), u"Set End"_s);
  EXPECT_TRUE(menu.actions()[0]->isVisible());
}

TEST_F(APopUpMenu, RaisesClickOfTheEntryThatIsChosenEachTime) {
  for (const int entry : {1, 0, 1}) {
    form.Find<Menu>("mnu_Context").PopUp();
    Choose(entry);
    EXPECT_FALSE(menu.isVisible());
  }
  EXPECT_EQ(events, (Events{"mnu_End", "mnu_Start", "mnu_End"}));
}

TEST_F(APopUpMenu, RaisesNothingWhereItIsLeft) {
  form.Find<Menu>("mnu_Context").PopUp();
  QTest::keyClick(&menu, Qt::Key_Escape);
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(events, Events{});
}

}  // namespace
}  // namespace kelvane::testing
