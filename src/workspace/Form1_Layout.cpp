// Start-up and end, the layout, and the highlights of the commands. Lengths are in pixels, but the
// window's own size is in twips.
#include "shared/Colours.h"
#include "shared/SharedValues.h"
#include "workspace/Form1.h"
#include "workspace/Form1_Design.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr float kStartHeight = 11265;  // twips
constexpr int kStartVolume = 30;
constexpr float kBarThickness = 5;

}  // namespace

void Form1::Form_Load() {
  setHeight(kStartHeight);
  MainWindowMinimised = false;
  Picture1(CanvasBox).setVisible(false);
  Timer1.setEnabled(false);
  Timer2.setEnabled(false);
  Slider2.setValue(kStartVolume);
  Slider3.setValue(0);
  Label9.setCaption(u"Audio Balance 100% Left : 100% Right"_s);
  ProbeDimensionsDone = false;
  wmp.setLeft(0);
  wmp.setTop(0);
  Picture2(LeftBar).setWidth(kBarThickness);
  Picture2(TopBar).setHeight(kBarThickness);
  Picture2(RightBar).setWidth(kBarThickness);
  Picture2(BaseBar).setHeight(kBarThickness);
  ResetBars();
  pbar.SetColours(kGrey, kProgressBack);
}

void Form1::Form_QueryUnload() { wmp.controls.stop(); }

void Form1::Form_Unload() { wmp.controls.stop(); }

// The margins differ on purpose.
void Form1::Form_Resize() {
  if (Width() < kMinWidth) setWidth(kMinWidth);
  if (Height() < kMinHeight) setHeight(kMinHeight);
  if (State() == WindowState::kMinimised) {
    MainWindowMinimised = true;
    return;
  }
  MainWindowMinimised = false;

  const float SW = ScaleWidth();
  const float SH = ScaleHeight();
  PictureBox& frame = Picture1(FrameBox);
  frame.setLeft(20);
  frame.setWidth(SW - 40);
  frame.setHeight(SH - frame.Top() - 140);

  PictureBox& viewport = Picture1(ViewportBox);
  viewport.setLeft(0);
  viewport.setTop(0);
  viewport.setHeight(frame.Height() - HScroll1.Height());
  viewport.setWidth(frame.Width() - VScroll1.Width() - 4);

  VScroll1.setTop(0);
  VScroll1.setLeft(frame.Width() - VScroll1.Width() - 4);
  VScroll1.setHeight(frame.Height() - HScroll1.Height() - 3);

  HScroll1.setTop(frame.Height() - HScroll1.Height() - 4);
  HScroll1.setLeft(0);
  HScroll1.setWidth(frame.Width() - VScroll1.Width() - 4);

  Shape5.setTop(SH - Shape5.Height() - 20);
  Shape5.setLeft(frame.Left());
  Shape5.setWidth(frame.Width());
  Label6.setTop(Shape5.Top() - 7);
  for (Label* command : Label14) command->setTop(Label6.Top() + Label6.Height() + 15);
  Label10.setTop(Label14(0).Top());
  Label11.setTop(Label10.Top());
  Label12.setTop(Label10.Top());
  Label13.setTop(Label10.Top());

  Shape6.setLeft(2);
  Shape6.setTop(2);
  Shape6.setWidth(SW - 4);
  Shape6.setHeight(SH - 4);

  pbar.setWidth(SW - 35 - pbar.Left());
  Shape4.setWidth(pbar.Width() + 22);
  Shape3.setWidth(SW - 45);
}

void Form1::Label14_MouseMove(const MouseEvent& event) {
  ClearHighlights();
  Label14(event.Index).setBackColor(kGrey);
}

void Form1::Form_MouseMove(const MouseEvent& /*event*/) { ClearHighlights(); }

void Form1::Picture1_MouseMove(const MouseEvent& event) {
  ClearHighlights();
  if (event.Index == ViewportBox || event.Index == CanvasBox) ShowPosition(event);
}

void Form1::ClearHighlights() {
  for (Label* command : Label14) command->setBackColor(kDark);
}

}  // namespace kelvane
