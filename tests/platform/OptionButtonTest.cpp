#include "platform/OptionButton.h"

#include <gtest/gtest.h>

#include <QRadioButton>
#include <QtTest/QTest>

#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class AnOptionButton : public ::testing::Test {
 protected:
  AnOptionButton() { form.Open(); }

  OptionButton& Option(const char* name) { return form.Find<OptionButton>(name); }
  std::string Chosen() {
    std::string chosen;
    for (const char* name : {"Option1(0)", "Option1(1)", "Option2(0)", "Option2(1)"}) {
      if (Option(name).Value()) chosen += name;
    }
    return chosen;
  }
  void ClickOn(const char* name) {
    pointer.MoveTo(Option(name), QPoint(8, 8));
    pointer.Click();
  }

  TestForm form{{Design(kOptionButton, "Option1(0)", {0, 0, 100, 17}).Caption("One").Chosen(),
                 Design(kOptionButton, "Option1(1)", {0, 20, 100, 17}).Caption("Two"),
                 Design(kPictureBox, "Box", {0, 40, 200, 100}),
                 Design(kOptionButton, "Option2(0)", {0, 0, 100, 17}).Caption("Three").In("Box"),
                 Design(kOptionButton, "Option2(1)", {0, 20, 100, 17}).Caption("Four").In("Box")}};
  Pointer pointer{form};
};

TEST_F(AnOptionButton, IsChosenByDesignWhereTheDesignSaysSo) { EXPECT_EQ(Chosen(), "Option1(0)"); }

TEST_F(AnOptionButton, TakesThePlaceOfTheChosenOneInItsContainerAlone) {
  Option("Option1(1)").Choose();
  EXPECT_EQ(Chosen(), "Option1(1)");
  Option("Option2(0)").Choose();
  EXPECT_EQ(Chosen(), "Option1(1)Option2(0)");
  Option("Option1(1)").Choose();
  EXPECT_EQ(Chosen(), "Option1(1)Option2(0)");
}

TEST_F(AnOptionButton, AroundABoxIsOfAnotherGroupThanThoseInTheBox) {
  TestForm around({Design(kPictureBox, "Box"), Design(kOptionButton, "Inside").In("Box"),
                   Design(kOptionButton, "Outside")});
  auto& inside = around.Find<OptionButton>("Inside");
  inside.Choose();
  around.Find<OptionButton>("Outside").Choose();
  EXPECT_TRUE(inside.Value());
}

TEST_F(AnOptionButton, IsChosenByTheUsersClickAndKeys) {
  ClickOn("Option1(1)");
  EXPECT_EQ(Chosen(), "Option1(1)");
  ClickOn("Option1(1)");
  EXPECT_EQ(Chosen(), "Option1(1)") << "a second click doesn't put it out";
  auto* inside = Option("Option1(1)").findChild<QRadioButton*>();
  inside->setFocus();
  QTest::keyClick(inside, Qt::Key_Up);
  EXPECT_EQ(Chosen(), "Option1(0)");
}

TEST_F(AnOptionButton, HearsOfThePointersMovesWithoutAButton) {
  Events events;
  Option("Option1(1)").MouseMove = [&](const MouseEvent& event) {
    events.push_back(Describe("Move", event));
  };
  pointer.MoveTo(Option("Option1(1)"), QPoint(10, 5));
  pointer.MoveTo(Option("Option1(1)"), QPoint(60, 6));
  EXPECT_EQ(events,
            (Events{"Move 1: button 0 shift 0 at 10,5", "Move 1: button 0 shift 0 at 60,6"}));
}

TEST_F(AnOptionButton, HasItsCaptionInTheFormsColour) {
  EXPECT_EQ(Option("Option1(0)").Caption(), QString("One"));
  EXPECT_EQ(Option("Option1(0)").ForeColor(), 0xF0E0D0U);
  const auto caption = [this] { return Picture(form).copy(25, 0, 70, 17); };
  const QImage before = caption();
  EXPECT_LT(CountOf(before, 0x102030), 70 * 17) << "there is a text";
  Option("Option1(0)").setForeColor(0x00FF00);
  EXPECT_EQ(Option("Option1(0)").ForeColor(), 0x00FF00U);
  EXPECT_NE(caption(), before);
  Option("Option1(0)").setForeColor(0xF0E0D0);
  EXPECT_EQ(caption(), before);
}

}  // namespace
}  // namespace kelvane::testing
