// The sizes of forms.
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

TEST(FormSize, IncludesTheMenuBarWhichLiesAboveTheContentArea) {
  TestForm form(Controls{}, Menus{{.name = "mnu_open", .caption = "Open"}});
  auto* menus = form.findChild<QMenuBar*>();
  const int height = menus->height();
  ASSERT_GT(height, 0);
  EXPECT_EQ(menus->geometry(), QRect(0, 0, 300, height));
  EXPECT_EQ(form.ScaleHeight(), 200);
  EXPECT_EQ(form.Height(), static_cast<float>(200 + height) * 15);
  form.setHeight(6000);
  form.Open();
  EXPECT_EQ(form.Height(), 6000);
  EXPECT_EQ(form.ScaleHeight(), static_cast<float>(400 - height));
  form.setHeight(15);
  EXPECT_EQ(form.ScaleHeight(), 0) << "not 0 in a window that is lower than its menu bar";
  EXPECT_EQ(TestForm().findChild<QMenuBar*>(), nullptr) << "a form without menus has a menu bar";
}

TEST(FormSize, ReadsBackAsAssignedAndIsRoundedToPixelsOnTheScreen) {
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

TEST(FormSize, RefusesWhatIsNegativeOrNotFinite) {
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

TEST(FormSize, HasNoLimitInASizableForm) {
  const TestForm form;
  EXPECT_EQ(form.minimumSize(), QSize(0, 0));
  EXPECT_GE(form.maximumWidth(), 32767);
  EXPECT_EQ(form.windowType(), Qt::Window);
}

TEST(FixedDialog, HasASizeThatTheProgramCanChangeAndTheUserCannot) {
  TestForm form(FixedForm());
  form.Open();
  for (const int height : {160, 200}) {
    form.setHeight(static_cast<float>(height * 15));
    EXPECT_EQ(form.windowHandle()->minimumSize(), QSize(300, height));
    EXPECT_EQ(form.windowHandle()->maximumSize(), QSize(300, height));
    EXPECT_EQ(form.ScaleHeight(), height);
  }
  const Qt::WindowFlags flags = form.windowFlags();
  EXPECT_TRUE(flags.testFlag(Qt::WindowTitleHint) && flags.testFlag(Qt::WindowCloseButtonHint));
  EXPECT_FALSE(flags & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
}

TEST(FormSize, IsNoLargerThanTheScreenWhileTheFormIsMaximisedOrFullScreen) {
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

class FormResize : public ::testing::Test {
 protected:
  FormResize() {
    form.OnResize = [this] {
      events.push_back(std::to_string(form.width()) + "x" + std::to_string(form.height()));
    };
  }

  TestForm form;
  Events events;
};

TEST_F(FormResize, IsRaisedBeforeTheAssignmentReturnsAndOnlyIfTheSizeInPixelsChanges) {
  form.setWidth(9000);
  EXPECT_EQ(events, Events{}) << "raised before the form is loaded";
  form.OnLoad = [this] {
    form.setHeight(3015);
    EXPECT_EQ(events, Events{"600x201"}) << "not raised in Form_Load";
  };
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

TEST_F(FormResize, IsRaisedWithTheNewSizeWhenTheUserResizes) {
  form.Open();
  form.setWidth(16667);
  events.clear();
  form.windowHandle()->resize(500, 400);
  ASSERT_TRUE(WaitFor([&] { return !events.empty(); }));
  EXPECT_EQ(events, Events{"500x400"});
  EXPECT_EQ(form.Width(), 7500);
  EXPECT_EQ(form.Height(), 6000);
  EXPECT_EQ(form.ScaleWidth(), 500);
  EXPECT_EQ(form.ScaleHeight(), 400);
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
  form.windowHandle()->resize(100, 400);
  EXPECT_TRUE(WaitFor([&] { return form.height() == 400; }));
  EXPECT_TRUE(WaitFor([&] { return form.windowHandle()->width() == 1111; }))
      << "the form kept a size that the user chose";
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

}  // namespace
}  // namespace kelvane::testing
