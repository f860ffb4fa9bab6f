// The screen's pointer, and the keyboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <optional>
#include <utility>

#include "platform/PictureBox.h"
#include "platform/Screen.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

TEST(ScreenPointer, IsTheOneThatWasSetOverEveryWindowAndNotThatOfAControl) {
  const TestForm form(
      {Design(kPictureBox, "Box", {0, 0, 20, 20}).Pointer(MousePointer::kSizeWestEast)});
  EXPECT_EQ(Screen::Pointer(), MousePointer::kDefault);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  // None leaves it to the controls.
  const std::pair<MousePointer, std::optional<Qt::CursorShape>> cases[]{
      {MousePointer::kSizeWestEast, Qt::SizeHorCursor},
      {MousePointer::kArrow, Qt::ArrowCursor},
      {MousePointer::kDefault, std::nullopt},
      {MousePointer::kHourglass, Qt::WaitCursor},
      {MousePointer::kSizeNorthSouth, Qt::SizeVerCursor},
      {MousePointer::kDefault, std::nullopt},
      {MousePointer::kDefault, std::nullopt}};
  for (const auto& [pointer, shape] : cases) {
    Screen::setMousePointer(pointer);
    EXPECT_EQ(Screen::Pointer(), pointer);
    const QCursor* cursor = QGuiApplication::overrideCursor();
    EXPECT_EQ(cursor == nullptr ? std::nullopt : std::optional(cursor->shape()), shape);
  }
}

TEST(SetFocus, GivesAControlTheKeyboard) {
  TestForm form(
      {Design(kPictureBox, "One", {0, 0, 20, 20}), Design(kPictureBox, "Two", {20, 0, 20, 20})});
  form.Open();
  ASSERT_TRUE(WaitFor([&] { return form.isActiveWindow(); }));
  for (const char* name : {"One", "Two"}) {
    form.Find<PictureBox>(name).SetFocus();
    EXPECT_EQ(QApplication::focusWidget(), &form.Find<PictureBox>(name));
  }
}

}  // namespace
}  // namespace kelvane::testing
