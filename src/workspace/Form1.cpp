#include "workspace/Form1.h"

#include <initializer_list>

#include "platform/Menu.h"
#include "workspace/Form1_Design.h"

namespace kelvane {
namespace {

constexpr int kPageStep = 10;
constexpr int kMaxVolume = 100;
constexpr int kMaxBalance = 100;

}  // namespace

Form1::Form1() : Form(kForm1, kForm1Controls, kForm1Menus) {
  setWindowIcon(ProductIcon());
  for (ScrollBar* bar : std::initializer_list<ScrollBar*>{&HScroll1, &VScroll1}) {
    bar->setMax(0);
    bar->setLargeChange(kPageStep);
  }
  Slider2.SetRange(0, kMaxVolume);
  Slider3.SetRange(-kMaxBalance, kMaxBalance);
  Timer3.setEnabled(true);
  WireEvents();
}

void Form1::WireEvents() {
  for (Label* label : Label1) label->Change = [this](int Index) { Label1_Change(Index); };
  for (Label* label : Label14) {
    label->MouseMove = [this](const MouseEvent& event) { Label14_MouseMove(event); };
    label->MouseUp = [this](const MouseEvent& event) { Label14_MouseUp(event); };
    label->setTakesKeyboard();
  }
  OrderFocus({&Label14(LoadVideo), &Label14(RunVideo), &Label14(PauseVideo), &Label14(StopVideo),
              &Label14(PreviewCroppedVideo), &Label14(CropVideo), &Label14(ResetMarkers)});
  for (PictureBox* box : Picture1) {
    box->MouseMove = [this](const MouseEvent& event) { Picture1_MouseMove(event); };
    box->Resize = [this](int Index) { Picture1_Resize(Index); };
  }
  for (PictureBox* bar : Picture2) {
    bar->MouseDown = [this](const MouseEvent& event) { Picture2_MouseDown(event); };
    bar->MouseMove = [this](const MouseEvent& event) { Picture2_MouseMove(event); };
    bar->MouseUp = [this](const MouseEvent& event) { Picture2_MouseUp(event); };
  }
  for (TextBox* box : Text1) box->Change = [this](int Index) { Text1_Change(Index); };
  for (CommandButton* button : Command1) {
    button->Click = [this](int Index) { Command1_Click(Index); };
  }
  HScroll1.Change = [this] { HScroll1_Change(); };
  HScroll1.Scroll = [this] { HScroll1_Change(); };
  VScroll1.Change = [this] { VScroll1_Change(); };
  VScroll1.Scroll = [this] { VScroll1_Change(); };
  Slider2.Change = [this] { Slider2_Change(); };
  Slider2.Scroll = [this] { Slider2_Change(); };
  Slider3.Change = [this] { Slider3_Change(); };
  Slider3.Scroll = [this] { Slider3_Change(); };
  Timer1.Tick = [this] { Timer1_Timer(); };
  Timer2.Tick = [this] { Timer2_Timer(); };
  Timer3.Tick = [this] { Timer3_Timer(); };
  FilesDropped = [this](const QStringList& paths) {
    CDialog.RunWithFile(paths.front(), [this] { mnu_openVideo_Click(); });
  };
  Find<Menu>("mnu_openVideo").Click = [this] { mnu_openVideo_Click(); };
  Find<Menu>("mnu_Extract").Click = [this] { mnu_Extract_Click(); };
  Find<Menu>("mnu_JoinMultiple").Click = [this] { mnu_JoinMultiple_Click(); };
  Find<Menu>("mnu_Updates").Click = [this] { mnu_Updates_Click(); };
  Find<Menu>("mnu_PayPalwebsite").Click = [this] { mnu_PayPalwebsite_Click(); };
}

}  // namespace kelvane
