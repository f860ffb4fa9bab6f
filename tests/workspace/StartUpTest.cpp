// These tests check the load of the main window, the highlight of its commands and its menus.
#include <QDesktopServices>
#include <QLineEdit>
#include <QUrl>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

TEST(MainWindowLoad, ResetsTheTimersTheBalanceAndTheSharedValues) {
  ForgetSharedValues();
  MainWindowMinimised = true;
  ProbeDimensionsDone = true;
  Form1 form;
  auto& balance = form.Find<Slider>("Slider3");
  balance.setValue(55);
  for (const char* timer : {"Timer1", "Timer2"}) form.Find<Timer>(timer).setEnabled(true);
  form.Load();
  EXPECT_FALSE(MainWindowMinimised);
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_EQ(balance.Value(), 0);
  for (const char* timer : {"Timer1", "Timer2"}) EXPECT_FALSE(form.Find<Timer>(timer).Enabled());
  form.Unload();
}

TEST(MainWindowLoad, LaysOutTheWindowBeforeItIsShown) {
  ForgetSharedValues();
  Form1 form;
  EXPECT_EQ(form.Find<Control>("Shape6").Left(), 8);
  form.Load();
  EXPECT_EQ(form.Find<Control>("Shape6").Left(), 2);
  EXPECT_FALSE(form.isVisible());
  form.Unload();
}

class MainWindowControls : public MainWindowTest {};

TEST_F(MainWindowControls, HaveAProgressBarInGreyOnSlate) {
  auto& pbar = Get<ProgressBar>("pbar");
  pbar.setValue(50);
  const QImage picture = pbar.grab().toImage();
  const int middle = picture.height() / 2;
  EXPECT_EQ(Hex(picture.pixel(3, middle)), "0x808080");
  EXPECT_EQ(Hex(picture.pixel(picture.width() - 4, middle)), "0x3d464c");
}

TEST_F(MainWindowControls, HaveReadOnlyTextBoxes) {
  for (const char* name : {"Text1(0)", "Text1(1)"}) {
    const auto* line = Get<Control>(name).findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr) << name;
    EXPECT_TRUE(line->isReadOnly()) << name;
    EXPECT_EQ(Hex(line->palette().color(QPalette::Base).rgb()), "0x232323") << name;
    EXPECT_EQ(Hex(line->palette().color(QPalette::Text).rgb()), "0xc0c0c0") << name;
  }
}

class CommandHighlight : public MainWindowTest {
 protected:
  // Returns the indices of the highlighted commands, and any colour that is neither the highlight
  // nor the normal one.
  std::string Highlighted() const {
    std::string highlighted;
    for (int index = 0; index <= ResetMarkers; ++index) {
      const std::string colour = Hex(Get<Label>("Label14", index).BackColor());
      if (colour == "0x808080") highlighted += std::to_string(index);
      if (colour != "0x808080" && colour != "0x232323") highlighted += "?" + colour;
    }
    return highlighted;
  }
  // Returns the widgets over which a move of the pointer clears the highlight.
  std::vector<QWidget*> Grounds() const {
    std::vector<QWidget*> grounds = {
        form_->findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly)};
    for (int box = FrameBox; box <= HolderBox; ++box) {
      grounds.push_back(&Get<PictureBox>("Picture1", box));
    }
    return grounds;
  }
};

TEST_F(CommandHighlight, IsSetByAMoveOverACommandForThatCommandAlone) {
  EXPECT_EQ(Highlighted(), "");
  for (int index = 0; index <= ResetMarkers; ++index) {
    MovePointerOver(Get<Label>("Label14", index));
    EXPECT_EQ(Highlighted(), std::to_string(index));
  }
}

TEST_F(CommandHighlight, IsClearedByAMoveOverTheWindowOrTheWorkspaceWithAnyButtonsHeld) {
  for (const Qt::MouseButtons held :
       {Qt::MouseButtons(), Qt::MouseButtons(Qt::LeftButton), Qt::LeftButton | Qt::RightButton}) {
    for (QWidget* ground : Grounds()) {
      MovePointerOver(Get<Label>("Label14", 1), held);
      EXPECT_EQ(Highlighted(), "1");
      MovePointerOver(*ground, held);
      EXPECT_EQ(Highlighted(), "") << ground->objectName().toStdString() << ", buttons " << held;
    }
  }
}

TEST_F(CommandHighlight, StaysWhenThePointerMovesOverAnyOtherControl) {
  const std::vector<QWidget*> grounds = Grounds();
  MovePointerOver(Get<Label>("Label14", 2));
  int tried = 0;
  for (Control* control : form_->findChildren<Control*>()) {
    if (control->objectName().startsWith("Label14")) continue;
    if (std::find(grounds.begin(), grounds.end(), control) != grounds.end()) continue;
    MovePointerOver(*control);
    EXPECT_EQ(Highlighted(), "2") << control->objectName().toStdString();
    ++tried;
  }
  EXPECT_EQ(tried, 66 - 7 - 4) << "all controls but the commands and the workspace's boxes";
}

TEST_F(CommandHighlight, StaysWhenTheCommandIsClickedAndThePointerLeavesTheWindow) {
  MovePointerOver(Get<Label>("Label14", ResetMarkers));
  Click(Get<Label>("Label14", ResetMarkers));
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&Get<Label>("Label14", ResetMarkers), &leave);
  QApplication::sendEvent(form_.get(), &leave);
  EXPECT_EQ(Highlighted(), std::to_string(ResetMarkers));
}

// Records the addresses that the desktop is asked to open.
class UrlRecorder : public QObject {
  Q_OBJECT
 public:
  UrlRecorder() { QDesktopServices::setUrlHandler("https", this, "Open"); }
  UrlRecorder(const UrlRecorder&) = delete;
  UrlRecorder& operator=(const UrlRecorder&) = delete;
  ~UrlRecorder() override { QDesktopServices::unsetUrlHandler("https"); }

  Texts opened;

 public slots:
  void Open(const QUrl& url) { opened.push_back(url.toString().toStdString()); }
};

class Menus : public MainWindowTest {};

TEST_F(Menus, OpenAWebPageFromTwoItemsOnly) {
  UrlRecorder recorder;
  for (const char* item :
       {"Check Site For Updates", "Donate Via PayPal Website", "Crop and Save", "Remove Video",
        "Extract and Stabilise", "Join Multiple Videos Together"}) {
    ChooseMenuItem(item);
  }
  EXPECT_EQ(recorder.opened, (Texts{KELVANE_HOME_PAGE "/updates", KELVANE_HOME_PAGE "/donate"}));
  EXPECT_TRUE(tools_.Runs().empty());
}

}  // namespace
}  // namespace kelvane::testing

#include "StartUpTest.moc"
