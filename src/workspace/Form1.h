#pragma once

#include <memory>

#include "cropjob/Form2.h"
#include "cropjob/MainWindow.h"
#include "joiner/Form4.h"
#include "media/DOSOutputs.h"
#include "media/ProbeReadings.h"
#include "platform/CommandButton.h"
#include "platform/CommonDialog.h"
#include "platform/ControlArray.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/Slider.h"
#include "platform/TextBox.h"
#include "platform/Timer.h"
#include "platform/WindowsMediaPlayer.h"
#include "sections/Form3.h"

namespace kelvane {

// The boxes of the workspace, Picture1.
enum WorkspaceBox : int { FrameBox = 0, ViewportBox = 1, CanvasBox = 2, HolderBox = 3 };

// The marker bars, Picture2.
enum MarkerBar : int { LeftBar = 0, TopBar = 1, RightBar = 2, BaseBar = 3 };

// The captions of Label1 that are numbers. The caption before each is its name.
enum ReadOut : int {
  SourceWidth = 1,
  SourceHeight = 3,
  RegionLeft = 5,
  RegionTop = 7,
  RegionWidth = 9,
  RegionHeight = 11,
  RegionBase = 13,
  RegionRight = 15
};

// The commands, by index in Label14 and in the hidden row of buttons, Command1. Index 6 is
// ResetMarkers in Label14, but StartFreshButton in Command1.
enum Command : int {
  LoadVideo = 0,
  RunVideo = 1,
  PauseVideo = 2,
  StopVideo = 3,
  PreviewCroppedVideo = 4,
  CropVideo = 5,
  ResetMarkers = 6,
  StartFreshButton = 6
};

// The main window: the picture with its marker bars, the read-outs and the commands.
//
// There is no model behind the window: the source size is in the captions of Label1(1) and
// Label1(3), and the region in the places of the bars, from which each tick of Timer2 sets
// CropLeft, CropTop, CropWidth and CropHeight. The canvas is as large as the video, so a position
// on it is a pixel of the source.
class Form1 : public Form, public MainWindow {
  Q_OBJECT
 public:
  Form1();

  ProgressBar& JobProgress() override { return pbar; }
  void SetTitle(const QString& title) override { setCaption(title); }
  QString ShownVideo() const override { return Text1(1).Text(); }
  QIcon Icon() const override { return windowIcon(); }

  // Takes what any tool of this window prints, block by block while the tool runs, and an empty
  // block at its end.
  void objDOS_ReceiveOutputs(const std::string& CommandOutputs);

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_MouseMove(const MouseEvent& event) override;
  void Form_QueryUnload() override;
  void Form_Unload() override;

 private:
  friend void ResetEverything(Form1& form);  // Module2

  void WireEvents();

  // Highlighting one command or none.
  void Label14_MouseMove(const MouseEvent& event);
  void Picture1_MouseMove(const MouseEvent& event);
  void ClearHighlights();

  // Loading a video.
  void mnu_openVideo_Click();
  void Text1_Change(int Index);
  void GetVideoData();
  bool ShowSize(const std::string& block);
  std::shared_ptr<DOSOutputs> NewRunner();

  // The canvas takes the video's size, scrolls, and shows the pointer's position.
  void Label1_Change(int Index);
  void Picture1_Resize(int Index);
  void HScroll1_Change();
  void VScroll1_Change();
  void ShowPosition(const MouseEvent& event);

  // The bars follow the pointer.
  void Picture2_MouseDown(const MouseEvent& event);
  void Picture2_MouseMove(const MouseEvent& event);
  void Picture2_MouseUp(const MouseEvent& event);
  void Timer1_Timer();

  // The player's read-outs and its sound.
  void Timer3_Timer();
  void Slider2_Change();
  void Slider3_Change();

  // The region is measured from the bars.
  void Timer2_Timer();
  void ResetBars();

  // The commands.
  void Label14_MouseUp(const MouseEvent& event);
  void Command1_Click(int Index);
  void RunCommand(int command);
  void TogglePause();
  void BuildCropFilter();
  void PreviewCrop();
  void StartCrop();
  void AskToStartFresh();
  void mnu_Extract_Click();
  void mnu_JoinMultiple_Click();
  void mnu_Updates_Click();
  void mnu_PayPalwebsite_Click();

  std::shared_ptr<DOSOutputs> objDOS;
  DurationReading durationReading_;  // finds the first duration in Text2
  // The position of a press in its bar, in pixels.
  std::int16_t DragStartX = 0;
  std::int16_t DragStartY = 0;
  FormInstance<Form2> form2_;
  FormInstance<Form3> form3_;
  FormInstance<Form4> form4_;
  CommonDialog CDialog{*this};

  ControlArray<Label> Label1{*this, "Label1"};
  ControlArray<Label> Label14{*this, "Label14"};
  ControlArray<PictureBox> Picture1{*this, "Picture1"};
  ControlArray<PictureBox> Picture2{*this, "Picture2"};
  ControlArray<TextBox> Text1{*this, "Text1"};
  ControlArray<CommandButton> Command1{*this, "Command1"};
  Label& Label6 = Find<Label>("Label6");
  Label& Label8 = Find<Label>("Label8");
  Label& Label9 = Find<Label>("Label9");
  Label& Label10 = Find<Label>("Label10");
  Label& Label11 = Find<Label>("Label11");
  Label& Label12 = Find<Label>("Label12");
  Label& Label13 = Find<Label>("Label13");
  Shape& Shape3 = Find<Shape>("Shape3");
  Shape& Shape4 = Find<Shape>("Shape4");
  Shape& Shape5 = Find<Shape>("Shape5");
  Shape& Shape6 = Find<Shape>("Shape6");
  TextBox& Text2 = Find<TextBox>("Text2");
  ProgressBar& pbar = Find<ProgressBar>("pbar");
  Slider& Slider2 = Find<Slider>("Slider2");
  Slider& Slider3 = Find<Slider>("Slider3");
  HScrollBar& HScroll1 = Find<HScrollBar>("HScroll1");
  VScrollBar& VScroll1 = Find<VScrollBar>("VScroll1");
  WindowsMediaPlayer& wmp = Find<WindowsMediaPlayer>("wmp");
  Timer Timer1{*this, "Timer1", 1000};
  Timer Timer2{*this, "Timer2", 250};
  Timer Timer3{*this, "Timer3", 500};
};

}  // namespace kelvane
