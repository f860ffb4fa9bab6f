#include "platform/OptionButton.h"

#include <gtest/gtest.h>

#include <QRadioButton>
#include <QtTest/QTest>

#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class OptionButtonTest : public ::testing::Test {
 protected:
  OptionButtonTest() { form.Open(); }

  OptionButton& Option(const char* name) { return form.Find<OptionButton>(name); }
  std::string Chosen() {
    std::string chosen;
    for (const char* name : {"Option1(0)", "Option1(1)", "Option2(0)", "Option2(1)"}) {
      if (Option(name).Value()) chosen += name;
    }
    return chosen;
  }

  // The box comes before the options around it.
  TestForm form{{Design(kPictureBox, "Box", {0, 40, 200, 100}),
                 Design(kOptionButton, "Option2(0)", {0, 0, 100, 17}).Caption("Three").In("Box"),
                 Design(kOptionButton, "Option2(1)", {0, 20, 100, 17}).Caption("Four").In("Box"),
                 Design(kOptionButton, "Option1(0)", {0, 0, 100, 17}).Caption("One").Chosen(),
                 Design(kOptionButton, "Option1(1)", {0, 20, 100, 17}).Caption("Two")}};
  Pointer pointer{form};
};

TEST_F(OptionButtonTest, IsTheOnlyOneChosenInItsContainer) {
  EXPECT_EQ(Chosen(), "Option1(0)") << "by design";
  Option("Option1(1)").Choose();
  EXPECT_EQ(Chosen(), "Option1(1)");
  Option("Option2(0)").Choose();
  EXPECT_EQ(Chosen(), "Option1(1)Option2(0)");
  Option("Option1(0)").Choose();
  EXPECT_EQ(Chosen(), "Option1(0)Option2(0)");
}

TEST_F(OptionButtonTest, IsChosenByTheUsersClickAndKeys) {
  pointer.MoveTo(Option("Option1(1)"), QPoint(8, 8));
  for (int clicks = 0; clicks < 2; ++clicks) {
    pointer.Click();
    EXPECT_EQ(Chosen(), "Option1(1)");
  }
  auto* inside = Option("Option1(1)").findChild<QRadioButton*>();
  inside->setFocus();
  QTest::keyClick(inside, Qt::Key_Up);
  EXPECT_EQ(Chosen(), "Option1(0)");
}

TEST_F(OptionButtonTest, RaisesMouseMoveWithoutAButton) {
  Events events;
  Record(Option("Option1(1)"), events);
  pointer.MoveTo(Option("Option1(1)"), QPoint(10, 5));
  pointer.MoveTo(Option("Option1(1)"), QPoint(60, 6));
  EXPECT_EQ(events, (Events{"Move 1 at 10,5", "Move 1 at 60,6"}));
}

TEST_F(OptionButtonTest, HasItsCaptionInTheFormsColourUntilItIsGivenAnother) {
  OptionButton& option = Option("Option1(0)");
  EXPECT_EQ(option.Caption(), u"One"_s);
  EXPECT_EQ(option.ForeColor(), kPixelForm.labelColor);
  const auto caption = [this] { return Picture(form).copy(25, 0, 70, 17); };
  const QImage before = caption();
  EXPECT_LT(CountOf(before, kPixelForm.backColor), 70 * 17) << "there is a text";
  option.setForeColor(0x00FF00);
  EXPECT_EQ(option.ForeColor(), 0x00FF00U);
  EXPECT_NE(caption(), before);
  option.setForeColor(kPixelForm.labelColor);
  EXPECT_EQ(caption(), before);
}

}  // namespace
}  // namespace kelvane::testing
