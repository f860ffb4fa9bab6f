// Two hidden menu items open the section window and the joiner.
#include <QWindow>

#include "joiner/Form4.h"
#include "platform/Menu.h"
#include "sections/Form3.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

template <class Window>
class MenuItemForAWindow : public MainWindowTest {
 protected:
  void Choose() const {
    Get<Menu>(std::is_same_v<Window, Form4> ? "mnu_JoinMultiple" : "mnu_Extract").Click();
  }
  static Window* Opened() { return Loaded<Window>().empty() ? nullptr : Loaded<Window>().front(); }
};

using Windows = ::testing::Types<Form3, Form4>;
class WindowNames {
 public:
  template <class Window>
  static std::string GetName(int /*index*/) {
    return std::is_same_v<Window, Form4> ? "Joiner" : "SectionWindow";
  }
};
TYPED_TEST_SUITE(MenuItemForAWindow, Windows, WindowNames);

TYPED_TEST(MenuItemForAWindow, OpensTheWindowWithoutOwnerAndWithTheMainWindowsIcon) {
  QPixmap picture(16, 16);
  picture.fill(Qt::red);
  this->form_->setWindowIcon(QIcon(picture));
  EXPECT_EQ(this->Opened(), nullptr);
  this->Choose();
  ASSERT_NE(this->Opened(), nullptr);
  EXPECT_EQ(this->template Loaded<Form>().size(), 2U)
      << "not just the main window and the opened one";
  TypeParam& window = *this->Opened();
  EXPECT_TRUE(window.isVisible());
  EXPECT_FALSE(window.isModal());
  EXPECT_EQ(window.windowHandle()->transientParent(), nullptr);
  EXPECT_EQ(window.windowIcon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
  EXPECT_TRUE(this->tools_.Runs().empty());
}

TYPED_TEST(MenuItemForAWindow, ShowsTheOpenWindowAgain) {
  this->Choose();
  TypeParam* const window = this->Opened();
  window->hide();
  this->Choose();
  EXPECT_EQ(this->template Loaded<TypeParam>(), std::vector<TypeParam*>{window});
  EXPECT_TRUE(window->isVisible());
}

TYPED_TEST(MenuItemForAWindow, OpensANewWindowOnceTheOldOneWasClosed) {
  this->Choose();
  const QPointer<TypeParam> window = this->Opened();
  window->close();
  ServePendingEvents();
  EXPECT_TRUE(window.isNull());
  this->Choose();
  ASSERT_NE(this->Opened(), nullptr);
  EXPECT_TRUE(this->Opened()->isVisible());
}

TYPED_TEST(MenuItemForAWindow, OpensAWindowThatOutlivesTheMainWindow) {
  this->Choose();
  this->form_->close();
  ASSERT_NE(this->Opened(), nullptr);
  EXPECT_TRUE(this->Opened()->isVisible());
  this->Opened()->Unload();
}

}  // namespace
}  // namespace kelvane::testing
