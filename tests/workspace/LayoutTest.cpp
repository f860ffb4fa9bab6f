// What the main window shows, and how it is laid out when its size changes.
#include "shared/SharedValues.h"
#include "support/WindowText.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

TEST(MainWindowLayout, IsAsTheWindowTextSays) {
  ForgetSharedValues();
  Form1 form;
  ExpectWindowText(form, {{1201, 551}, {1289, 731}});
  EXPECT_FALSE(form.windowIcon().isNull());
  form.Unload();
}

class MainWindowSize : public MainWindowTest {};

TEST_F(MainWindowSize, IsNeverLessThanTheLeastWidth) {
  form_->setWidth(16664);
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->width(), 1111);
  form_->resize(300, form_->height());
  PumpOnce();
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->width(), 1111);
  EXPECT_EQ(Get<Control>("Shape6").Width(), 1111 - 4);
}

TEST_F(MainWindowSize, IsNeverLessThanTheLeastHeight) {
  form_->setHeight(6499);
  EXPECT_EQ(form_->Height(), 6500);
  EXPECT_EQ(form_->height(), 433);
  form_->resize(form_->width(), 100);
  PumpOnce();
  EXPECT_EQ(form_->Height(), 6500);
  EXPECT_EQ(form_->height(), 433);
  EXPECT_EQ(Get<Control>("Shape6").Height(), form_->ScaleHeight() - 4);
}

TEST_F(MainWindowSize, IsNeverLessThanTheLeastWidthAndHeight) {
  form_->resize(10, 10);
  PumpOnce();
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->Height(), 6500);
}

TEST_F(MainWindowSize, MayBeExactlyTheLeast) {
  form_->setWidth(16665);
  form_->setHeight(6500);
  EXPECT_EQ(form_->Width(), 16665);
  EXPECT_EQ(form_->Height(), 6500);
}

TEST_F(MainWindowSize, IsLaidOutAgainWhenRestoredButNotWhenMinimised) {
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

TEST_F(MainWindowSize, PutsCornersBackWhereTheyBelong) {
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

TEST_F(MainWindowSize, LeavesCanvasAndBarsWhereTheyAre) {
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
