// The screen's pointer, and the keyboard.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/PictureBox.h"
#include "platform/Screen.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

TEST(TheScreen, KnowsThePointerThatItWasGiven) {
  EXPECT_EQ(Screen::Pointer(), MousePointer::kDefault);
  for (const MousePointer pointer :
       {MousePointer::kSizeWestEast, MousePointer::kArrow, MousePointer::kHourglass,
        MousePointer::kSizeNorthSouth, MousePointer::kDefault}) {
    Screen::setMousePointer(pointer);
    EXPECT_EQ(Screen::Pointer(), pointer);
  }
}

TEST(TheScreensPointer, IsNotThatOfAControl) {
  TestForm form({{.name = "Box",
                  .controlClass = ControlClass::kPictureBox,
                  .place = {0, 0, 300, 300},
                  .pointer = MousePointer::kSizeWestEast}});
  EXPECT_EQ(Screen::Pointer(), MousePointer::kDefault);
}

TEST(AControl, TakesTheKeyboardWhenItIsGivenIt) {
  TestForm form(
      {{.name = "One", .controlClass = ControlClass::kPictureBox, .place = {0, 0, 300, 300}},
       {.name = "Two", .controlClass = ControlClass::kPictureBox, .place = {300, 0, 300, 300}}});
  form.Open();
  ASSERT_TRUE(PumpUntil([&] { return form.isActiveWindow(); }));
  for (const char* name : {"One", "Two"}) {
    form.Find<PictureBox>(QLatin1String(name)).SetFocus();
    EXPECT_EQ(QApplication::focusWidget(), &form.Find<PictureBox>(QLatin1String(name)));
  }
}

}  // namespace
}  // namespace kelvane::testing
