// Windows that come and go.
#include "platform/Menu.h"
#include "soak/Soak.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class WindowsSoak : public MainWindowTest {
 protected:
  template <class Window>
  Window* Shown() const {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* const window = qobject_cast<Window*>(widget);
      if (window != nullptr && window->isVisible()) return window;
    }
    return nullptr;
  }
  // The user closes the window.
  template <class Window>
  void Close() const {
    Window* const window = Shown<Window>();
    ASSERT_NE(window, nullptr);
    window->close();
    PumpOnce();
    EXPECT_EQ(Shown<Window>(), nullptr);
  }
};

TEST_F(WindowsSoak, TenThousandLoadsAndUnloads) {
  FormInstance<Form2> job;
  const auto round = [&](int) {
    form_->close();
    form_ = std::make_unique<Form1>();
    form_->Load();
    form_->Show();
    Get<Menu>("mnu_Extract").Click();
    Close<Form3>();
    Get<Menu>("mnu_JoinMultiple").Click();
    Close<Form4>();
    job.Load(*form_).Show(form_.get());
    Close<Form2>();
  };
  ExpectFlat({.warmUp = 250, .rounds = 2250, .round = round});
}

}  // namespace
}  // namespace kelvane::testing
