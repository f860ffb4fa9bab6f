// What stands after the start, and the light on the commands.
#include <QAction>
#include <QDesktopServices>
#include <QLineEdit>
#include <QSlider>
#include <QUrl>
#include <algorithm>

#include "platform/Menu.h"
#include "shared/Colours.h"
#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class StartUp : public MainWindowTest {};

TEST_F(StartUp, TheWindowIs11265TwipsHighAndAsWideAsDrawn) {
  EXPECT_EQ(form_->Height(), 11265);
  EXPECT_EQ(form_->Width(), 19335);
  EXPECT_EQ(form_->size(), QSize(1289, 751));
}

TEST(StartUpBeforeTheScreen, TheLayoutRuleRunsAtTheLoadAndNotOnlyAtTheShow) {
  ForgetSharedValues();
  Form1 form;
  EXPECT_EQ(form.Find<Control>(QStringLiteral("Shape6")).Left(), 8);
  form.Load();
  EXPECT_EQ(form.Find<Control>(QStringLiteral("Shape6")).Left(), 2);
  EXPECT_FALSE(form.isVisible());
  form.Unload();
}

TEST(StartUpBeforeTheScreen, WhatAnEarlierLifeLeftInTheSharedValuesIsReset) {
  ForgetSharedValues();
  MainWindowMinimised = true;
  ProbeDimensionsDone = true;
  Form1 form;
  form.Load();
  EXPECT_FALSE(MainWindowMinimised);
  EXPECT_FALSE(ProbeDimensionsDone);
  form.Unload();
}

TEST(StartUpBeforeTheScreen, TheTimersAreTurnedOffAndTheBalanceIsPutInTheMiddle) {
  ForgetSharedValues();
  Form1 form;
  auto& first = form.Find<Timer>(QStringLiteral("Timer1"));
  auto& second = form.Find<Timer>(QStringLiteral("Timer2"));
  auto& balance = form.Find<Slider>(QStringLiteral("Slider3"));
  first.setEnabled(true);
  second.setEnabled(true);
  balance.setValue(55);
  ASSERT_EQ(balance.Value(), 55);
  form.Load();
  EXPECT_FALSE(first.Enabled());
  EXPECT_FALSE(second.Enabled());
  EXPECT_EQ(balance.Value(), 0);
  form.Unload();
}

TEST_F(StartUp, TheProgressBarIsGreyOnSlate) {
  auto& pbar = Get<ProgressBar>("pbar");
  EXPECT_EQ(pbar.Min(), 0);
  EXPECT_EQ(pbar.Max(), 100);
  EXPECT_EQ(pbar.Value(), 0);
  pbar.setValue(50);
  const QImage picture = pbar.grab().toImage();
  const int middle = picture.height() / 2;
  EXPECT_EQ(Hex(picture.pixel(3, middle)), "0x808080");
  EXPECT_EQ(Hex(picture.pixel(picture.width() - 4, middle)), "0x3d464c");
}

TEST_F(StartUp, TheTextBoxesCanBeReadAndNotWrittenAndHaveNoBorder) {
  for (const char* name : {"Text1(0)", "Text1(1)"}) {
    const auto* line = Get<Control>(name).findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr) << name;
    EXPECT_TRUE(line->isReadOnly()) << name;
    EXPECT_FALSE(line->hasFrame()) << name;
    EXPECT_EQ(Hex(line->palette().color(QPalette::Base).rgb()), "0x232323") << name;
    EXPECT_EQ(Hex(line->palette().color(QPalette::Text).rgb()), "0xc0c0c0") << name;
  }
}

class Light : public MainWindowTest {
 protected:
  // Which commands are lit, others than those at rest.
  std::string Lit() const {
    std::string lit;
    for (int index = 0; index <= ResetMarkers; ++index) {
      const std::string colour = Hex(Get<Label>("Label14", index).BackColor());
      if (colour == "0x808080") lit += std::to_string(index);
      if (colour != "0x808080" && colour != "0x232323") lit += "?" + colour;
    }
    return lit;
  }
  void LightCommand(int index) const { MovePointerOver(Get<Label>("Label14", index)); }
  QWidget& Window() const {
    return *form_->findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly);
  }
};

TEST_F(Light, NoCommandIsLitAtTheStart) { EXPECT_EQ(Lit(), ""); }

TEST_F(Light, EachCommandIsLitByMovingOntoItAndNoOther) {
  for (int index = 0; index <= ResetMarkers; ++index) {
    LightCommand(index);
    EXPECT_EQ(Lit(), std::to_string(index));
  }
}

TEST_F(Light, AMoveOverTheWindowPutsItOut) {
  LightCommand(3);
  MovePointerOver(Window());
  EXPECT_EQ(Lit(), "");
}

TEST_F(Light, AMoveOverAnyBoxOfTheWorkspacePutsItOut) {
  for (int box = FrameBox; box <= HolderBox; ++box) {
    LightCommand(5);
    ASSERT_EQ(Lit(), "5");
    MovePointerOver(Get<PictureBox>("Picture1", box));
    EXPECT_EQ(Lit(), "") << "Picture1(" << box << ")";
  }
}

TEST_F(Light, AMoveOverAnyOtherControlLeavesItLit) {
  const std::vector<std::string> puttingOut = {"Picture1(0)", "Picture1(1)", "Picture1(2)",
                                               "Picture1(3)"};
  int tried = 0;
  for (Control* control : form_->findChildren<Control*>()) {
    const std::string name = control->objectName().toStdString();
    const bool isCommand = name.rfind("Label14", 0) == 0;
    if (name.empty() || isCommand ||
        std::find(puttingOut.begin(), puttingOut.end(), name) != puttingOut.end()) {
      continue;
    }
    LightCommand(2);
    MovePointerOver(*control);
    EXPECT_EQ(Lit(), "2") << name;
    ++tried;
  }
  EXPECT_EQ(tried, 66 - 7 - 4);
}

TEST_F(Light, PressingReleasingAndLeavingTheWindowLeaveItLit) {
  LightCommand(6);
  Click(Get<Label>("Label14", 6));
  EXPECT_EQ(Lit(), "6");
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&Get<Label>("Label14", 6), &leave);
  QApplication::sendEvent(form_.get(), &leave);
  EXPECT_EQ(Lit(), "6");
}

TEST_F(Light, MovingWithAButtonHeldLightsAndPutsOutAsWell) {
  std::vector<QWidget*> puttingOut = {&Window()};
  for (int box = FrameBox; box <= HolderBox; ++box) {
    puttingOut.push_back(&Get<PictureBox>("Picture1", box));
  }
  for (const Qt::MouseButtons held :
       {Qt::MouseButtons(Qt::LeftButton), Qt::MouseButtons(Qt::RightButton),
        Qt::LeftButton | Qt::RightButton}) {
    for (QWidget* ground : puttingOut) {
      MovePointerOver(Get<Label>("Label14", 1), held);
      EXPECT_EQ(Lit(), "1");
      MovePointerOver(*ground, held);
      EXPECT_EQ(Lit(), "") << ground->objectName().toStdString() << ", buttons " << held;
    }
  }
}

class WebPages : public MainWindowTest {};

// The addresses that the system was asked to open.
class UrlRecorder : public QObject {
  Q_OBJECT
 public:
  UrlRecorder() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Open"); }
  UrlRecorder(const UrlRecorder&) = delete;
  UrlRecorder& operator=(const UrlRecorder&) = delete;
  ~UrlRecorder() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

  std::vector<std::string> opened;

 public slots:
  void Open(const QUrl& url) { opened.push_back(url.toString().toStdString()); }
};

TEST_F(WebPages, EachMenuItemWithAnActionDoesItAndTheOthersDoNothing) {
  UrlRecorder recorder;
  for (const char* item :
       {"Check Site For Updates", "Donate Via PayPal Website", "Crop and Save", "Remove Video",
        "Extract and Stabilise", "Join Multiple Videos Together"}) {
    recorder.opened.emplace_back(item);
    for (QAction* action : form_->findChildren<QAction*>()) {
      if (action->text() == QLatin1String(item)) action->trigger();
    }
  }
  EXPECT_EQ(recorder.opened,
            (std::vector<std::string>{"Check Site For Updates", "https://kelvane.example/updates",
                                      "Donate Via PayPal Website", "https://kelvane.example/donate",
                                      "Crop and Save", "Remove Video", "Extract and Stabilise",
                                      "Join Multiple Videos Together"}));
  EXPECT_TRUE(tools_.Runs().empty());
}

}  // namespace
}  // namespace kelvane::testing

#include "StartUpTest.moc"
