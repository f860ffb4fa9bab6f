// The hidden item of the menu that opens the section window.
#include <QWindow>

#include "platform/Menu.h"
#include "platform/PictureBox.h"
#include "sections/Form3.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class ExtractMenu : public MainWindowTest {
 protected:
  void Choose() const { Get<Menu>("mnu_Extract").Click(); }
  static std::vector<Form3*> SectionWindows() { return Loaded<Form3>(); }
};

TEST_F(ExtractMenu, StaysHidden) {
  EXPECT_FALSE(Get<Menu>("mnu_Extract").Visible());
  Choose();
  EXPECT_FALSE(Get<Menu>("mnu_Extract").Visible());
}

TEST_F(ExtractMenu, LoadsNothingBeforeItIsChosen) { EXPECT_TRUE(SectionWindows().empty()); }

TEST_F(ExtractMenu, OpensTheSectionWindowWithoutOwnerAndNotModal) {
  Choose();
  ASSERT_EQ(SectionWindows().size(), 1U);
  const Form3& sections = *SectionWindows().front();
  ASSERT_TRUE(sections.isVisible());
  EXPECT_FALSE(sections.isModal());
  EXPECT_EQ(sections.windowHandle()->transientParent(), nullptr);
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(ExtractMenu, GivesItTheMainWindowsIcon) {
  QPixmap picture(16, 16);
  picture.fill(Qt::red);
  form_->setWindowIcon(QIcon(picture));
  Choose();
  EXPECT_EQ(SectionWindows().front()->windowIcon().pixmap(16).toImage().pixelColor(8, 8),
            QColor(Qt::red));
}

TEST_F(ExtractMenu, ChosenAgainKeepsTheWindowAsItIs) {
  Choose();
  Form3* const sections = SectionWindows().front();
  auto& needle = sections->Find<PictureBox>("Picture4(0)");
  needle.setLeft(500);
  sections->hide();
  Choose();
  ASSERT_EQ(SectionWindows(), std::vector<Form3*>{sections});
  EXPECT_TRUE(sections->isVisible());
  EXPECT_EQ(needle.Left(), 500);
}

TEST_F(ExtractMenu, ChosenAfterTheWindowWasClosedOpensAFreshOne) {
  Choose();
  SectionWindows().front()->Find<PictureBox>("Picture4(0)").setLeft(500);
  SectionWindows().front()->close();
  PumpOnce();
  EXPECT_TRUE(SectionWindows().empty());
  Choose();
  ASSERT_EQ(SectionWindows().size(), 1U);
  EXPECT_EQ(SectionWindows().front()->Find<PictureBox>("Picture4(0)").Left(), 8);
}

TEST_F(ExtractMenu, ClosingTheMainWindowLeavesTheSectionWindow) {
  Choose();
  form_->close();
  ASSERT_EQ(SectionWindows().size(), 1U);
  EXPECT_TRUE(SectionWindows().front()->isVisible());
  SectionWindows().front()->Unload();
}

}  // namespace
}  // namespace kelvane::testing
