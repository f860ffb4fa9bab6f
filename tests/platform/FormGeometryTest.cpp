// The sizes of windows.
#include <gtest/gtest.h>

#include <QMenuBar>
#include <QScreen>
#include <QWindow>
#include <utility>

#include "platform/App.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

const Menus kMenus{{.name = "mnu_open", .caption = "Open"}};

TEST(FormSize, OfADesignIsThatOfTheContentArea) {
  const TestForm pixels;
  EXPECT_EQ(pixels.Width(), 4500);
  EXPECT_EQ(pixels.Height(), 3000);
  EXPECT_EQ(pixels.ScaleWidth(), 300);
  EXPECT_EQ(pixels.ScaleHeight(), 200);
  EXPECT_EQ(pixels.size(), QSize(300, 200));
  const TestForm twips(TwipForm());
  EXPECT_EQ(twips.Width(), 4500);
  EXPECT_EQ(twips.ScaleWidth(), 4500);
  EXPECT_EQ(twips.ScaleHeight(), 3000);
}

TEST(FormSize, IncludesTheMenuBarWhichTheContentAreaDoesNot) {
  TestForm form(Controls{}, kMenus);
  const int bar = form.findChild<QMenuBar*>()->height();
  ASSERT_GT(bar, 0);
  EXPECT_EQ(form.ScaleHeight(), 200);
  EXPECT_EQ(form.Height(), static_cast<float>(200 + bar) * 15);
  form.setHeight(6000);
  EXPECT_EQ(form.ScaleHeight(), static_cast<float>(400 - bar));
  form.Open();
  EXPECT_EQ(form.Height(), 6000);
  EXPECT_EQ(form.ScaleHeight(), static_cast<float>(400 - bar));
  form.setHeight(15);
  EXPECT_EQ(form.ScaleHeight(), 0) << "not negative";
}

TEST(FormSize, ReadsBackAsAssignedAndIsTheNearestWholePixelOnTheScreen) {
  TestForm form;
  for (int shown = 0; shown < 2; ++shown) {
    for (const auto& [assigned, pixels] :
         {std::pair{16665.0F, 1111}, {6500.0F, 433}, {6502.0F, 433}, {11265.5F, 751}}) {
      form.setWidth(assigned);
      form.setHeight(assigned);
      EXPECT_EQ(form.Width(), assigned);
      EXPECT_EQ(form.Height(), assigned);
      EXPECT_EQ(form.size(), QSize(pixels, pixels));
      EXPECT_EQ(form.ScaleWidth(), static_cast<float>(pixels));
    }
    form.Open();
  }
}

TEST(FormSize, IsTheScreensOnceTheUserHasChangedIt) {
  TestForm form;
  form.Open();
  form.setWidth(16667);
  form.windowHandle()->resize(500, 400);
  ASSERT_TRUE(WaitFor([&] { return form.width() == 500; }));
  EXPECT_EQ(form.Width(), 7500);
  EXPECT_EQ(form.Height(), 6000);
  EXPECT_EQ(form.ScaleWidth(), 500);
  EXPECT_EQ(form.ScaleHeight(), 400);
}

TEST(FormSize, RefusesWhatIsNegativeOrUndefined) {
  TestForm form;
  form.setWidth(6000);
  form.setHeight(5000);
  for (const float refused : {-1.0F, -16665.0F, kNotANumber, kInfinite, -kInfinite}) {
    form.setWidth(refused);
    form.setHeight(refused);
    EXPECT_EQ(form.Width(), 6000) << refused;
    EXPECT_EQ(form.Height(), 5000) << refused;
    EXPECT_EQ(form.size(), QSize(400, 333)) << refused;
  }
}

TEST(FormSize, MayBeHuge) {
  TestForm form;
  for (const float huge : {1e9F, 1e30F, kGreatest}) {
    form.setWidth(huge);
    EXPECT_EQ(form.Width(), huge);
    EXPECT_GE(form.width(), 32767);
    EXPECT_EQ(form.height(), 200);
  }
}

TEST(FormSize, OfTheContentAreaIsWholeTwipsForEveryPixel) {
  TestForm form(TwipForm());
  for (int pixels = 1; pixels < 2000; ++pixels) {
    form.setWidth(static_cast<float>(pixels * 15));
    ASSERT_EQ(form.ScaleWidth(), static_cast<float>(pixels * 15));
  }
}

TEST(FormSize, OfASizableFormHasNoLimit) {
  const TestForm form;
  EXPECT_EQ(form.minimumSize(), QSize(0, 0));
  EXPECT_GE(form.maximumWidth(), 32767);
  EXPECT_EQ(form.windowType(), Qt::Window);
}

TEST(FormSize, OfAFixedDialogIsTheProgramsToChooseAndNotTheUsers) {
  TestForm form(FixedForm());
  EXPECT_EQ(form.minimumSize(), QSize(300, 200));
  EXPECT_EQ(form.maximumSize(), QSize(300, 200));
  form.Open();
  form.setHeight(2400);
  EXPECT_EQ(form.size(), QSize(300, 160));
  EXPECT_EQ(form.windowHandle()->minimumSize(), QSize(300, 160));
  EXPECT_EQ(form.windowHandle()->maximumSize(), QSize(300, 160));
  EXPECT_EQ(form.ScaleHeight(), 160);
}

TEST(FixedDialog, HasATitleAndACloseButtonAndNoneToMinimiseOrMaximise) {
  const TestForm form(FixedForm());
  EXPECT_TRUE(form.windowFlags().testFlag(Qt::WindowTitleHint));
  EXPECT_TRUE(form.windowFlags().testFlag(Qt::WindowCloseButtonHint));
  EXPECT_FALSE(form.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
  EXPECT_FALSE(form.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
  EXPECT_EQ(form.windowType(), Qt::Dialog);
  EXPECT_FALSE(form.isModal());
}

class FormResize : public ::testing::Test {
 protected:
  FormResize() {
    form.OnResize = [this] {
      events.push_back(u"%1x%2"_s.arg(static_cast<double>(form.ScaleWidth()))
                           .arg(static_cast<double>(form.ScaleHeight()))
                           .toStdString());
    };
  }

  TestForm form;
  Events events;
};

TEST_F(FormResize, IsRaisedBeforeTheAssignmentReturnsAndOnlyIfAPixelChanges) {
  form.setWidth(9000);
  EXPECT_EQ(events, Events{}) << "it isn't loaded yet";
  form.Load();
  for (int shown = 0; shown < 2; ++shown) {
    events.clear();
    form.setHeight(6000);
    EXPECT_EQ(events, Events{"600x400"});
    form.setWidth(9150);
    EXPECT_EQ(events, (Events{"600x400", "610x400"}));
    form.setWidth(9151);
    form.setHeight(6000);
    EXPECT_EQ(events.size(), 2U);
    form.setWidth(9000);
    form.setHeight(3000);
    form.Open();
  }
}

TEST_F(FormResize, IsRaisedByFormLoadItself) {
  form.OnLoad = [this] {
    events.emplace_back("load");
    form.setHeight(6000);
    events.emplace_back("loaded");
  };
  form.Load();
  EXPECT_EQ(events, (Events{"load", "300x400", "loaded"}));
}

TEST_F(FormResize, IsRaisedWhenTheUserResizes) {
  form.Open();
  events.clear();
  form.windowHandle()->resize(500, 400);
  ASSERT_TRUE(WaitFor([&] { return !events.empty(); }));
  EXPECT_EQ(events, Events{"500x400"});
}

TEST_F(FormResize, MayItselfChangeTheSizeOfTheForm) {
  form.OnResize = [this] {
    events.push_back(std::to_string(form.width()));
    if (form.Width() < 16665) form.setWidth(16665);
  };
  for (int shown = 0; shown < 2; ++shown) {
    form.Load();
    events.clear();
    form.setWidth(6000);
    EXPECT_EQ(events, (Events{"400", "1111"}));
    EXPECT_EQ(form.Width(), 16665);
    EXPECT_EQ(form.ScaleWidth(), 1111);
    form.Open();
  }
}

TEST_F(FormResize, SnapsBackWhatTheUserMadeTooSmall) {
  form.OnResize = [this] {
    if (form.Width() < 4500) form.setWidth(4500);
  };
  form.Open();
  form.windowHandle()->resize(100, 400);
  EXPECT_TRUE(WaitFor([&] { return form.height() == 400; }));
  EXPECT_TRUE(WaitFor([&] { return form.windowHandle()->width() == 300; }));
  EXPECT_EQ(form.Width(), 4500);
  EXPECT_EQ(form.ScaleWidth(), 300);
}

TEST_F(FormResize, IsRaisedWhenTheFormIsMinimisedAndWhenItIsRestored) {
  form.Open();
  std::vector<WindowState> states;
  form.OnResize = [&] { states.push_back(form.State()); };
  EXPECT_EQ(form.State(), WindowState::kNormal);
  form.showMinimized();
  ASSERT_TRUE(WaitFor([&] { return !states.empty(); }));
  form.showNormal();
  ASSERT_TRUE(WaitFor([&] { return states.size() >= 2; }));
  EXPECT_EQ(states, (std::vector{WindowState::kMinimised, WindowState::kNormal}));
}

TEST_F(FormResize, IsRaisedOnceWhenTheFormIsMaximisedAndOnceWhenItIsRestored) {
  form.Open();
  events.clear();
  form.showMaximized();
  ASSERT_TRUE(WaitFor([&] { return form.width() != 300; }));
  EXPECT_EQ(form.State(), WindowState::kMaximised);
  const std::string maximised = std::to_string(form.width()) + "x" + std::to_string(form.height());
  form.showNormal();
  ASSERT_TRUE(WaitFor([&] { return form.width() == 300; }));
  EXPECT_EQ(form.State(), WindowState::kNormal);
  EXPECT_EQ(events, (Events{maximised, "300x200"}));
}

TEST(FormSize, IsNoLargerThanTheScreenThatTheFormFills) {
  for (const Qt::WindowState filling : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
    TestForm form;
    form.OnResize = [&] {
      if (form.Width() < 30000) form.setWidth(30000);
    };
    form.Open();
    form.setWidth(30000);
    ASSERT_EQ(form.width(), 2000);
    const int screenWidth = form.screen()->size().width();
    ASSERT_LT(screenWidth, 2000);
    form.setWindowState(filling);
    EXPECT_TRUE(WaitFor([&] { return form.width() <= screenWidth; })) << filling;
    DoEvents();
    EXPECT_LE(form.width(), screenWidth) << filling;
    EXPECT_EQ(form.windowHandle()->size(), form.size()) << filling;
  }
}

}  // namespace
}  // namespace kelvane::testing
