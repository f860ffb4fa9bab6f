#pragma once

#include <cstdint>

#include "platform/CommonDialog.h"
#include "platform/ControlArray.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/Menu.h"
#include "platform/PictureBox.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/TextBox.h"
#include "shared/Product.h"

namespace kelvane {

// The short path of the video last chosen in the section window; empty if none has been chosen or
// if the video has no short path. Belongs to the user-interface thread, as the window does.
extern QString SectionSourceShortPath;

// The time line, Picture3.
enum TimeLineBox : int { TimeLineFrame = 0, TimeLineStrip = 1 };

// The needles, Picture4, and their hairlines, Line3.
enum Needle : int { StartNeedle = 0, EndNeedle = 1 };

// The captions of Label8 that change.
enum SectionReadOut : int { SectionStart = 1, SectionEnd = 3, SectionSpan = 6 };

// The arrow buttons, Label7.
enum Arrow : int { TowardsStart = 0, TowardsEnd = 1 };

// The options: their tracks Picture2, thumbs Label1, outlines Shape2 and captions Label3.
enum OptionSlider : int {
  StepSize = 0,
  Shakiness = 1,
  Accuracy = 2,
  Zoom = 3,
  Smoothing = 4,
  UnSharpLX = 5,
  UnSharpLY = 6
};

// The indices in Label2 of an option's name and of its read-out.
constexpr int OptionName(int slider) { return 2 * slider; }
constexpr int OptionReadOut(int slider) { return 2 * slider + 1; }

inline const QString kVideoFilter =
    QStringLiteral("MP4 Files (*.mp4)|*.mp4|AVI Files (*.avi)|*.avi|All Files (*.*)|*.*");

// "Advanced 2-Pass Video Stabilization": marks a section of a video on a time line, with a pixel to
// the second, and sets the options of a stabilising filter.
//
// The window runs no tool and plays nothing. What the user sets is shown in the captions and used
// nowhere else. The panels for extraction, player and progress do nothing.
class Form3 : public Form {
  Q_OBJECT
 public:
  explicit Form3(const QIcon& icon = ProductIcon());

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_MouseMove(const MouseEvent& event) override;

  // The scale of the time line: returns the text of the time at the position `X`. In this class a
  // pixel is a second.
  virtual QString TimeTextAt(float X) const;
  // Returns the tool tip that a needle gets when it is dragged.
  static QString NeedleTip(int needle);

  friend void DrawOptionScales(Form3& form);       // Module3
  friend void ResetTimeLinePosition(Form3& form);  // Module5
  friend void DrawTimeLabels(Form3& form);         // Module5

  void WireEvents();

  // Choosing a video.
  void Label6_MouseUp(const MouseEvent& event);

  // The time line moves in its frame.
  void StepTimeLine(const MouseEvent& event);
  void Label7_MouseMove(const MouseEvent& event);
  void Picture5_MouseMove(const MouseEvent& event);
  void ClearArrowHighlights();
  void Picture6_MouseDown(const MouseEvent& event);
  void Picture6_MouseMove(const MouseEvent& event);

  // The needles follow the pointer, or go where the context menu was opened.
  void Picture3_MouseMove(const MouseEvent& event);
  void Picture3_MouseUp(const MouseEvent& event);
  void Picture4_MouseDown(const MouseEvent& event);
  void Picture4_MouseMove(const MouseEvent& event);
  void mnu_Start_Click();
  void mnu_End_Click();
  float SpanLineY() const;
  void ShowSpan();
  void DrawSpanLine();

  // The thumbs follow the pointer.
  void Label1_MouseDown(const MouseEvent& event);
  void Label1_MouseMove(const MouseEvent& event);
  void Label1_MouseUp(const MouseEvent& event);
  void Label2_Change(int Index);
  void Picture2_MouseMove(const MouseEvent& event);
  void DragThumb(const MouseEvent& event);
  void ShowOption(int slider);
  bool StepSizeExceedsTrack() const;
  void MoveStepSizeToEnd();
  void ClampStepSizeToStart();
  void ClampStepSizeToEnd();

  QIcon icon_;
  CommonDialog cdialog{*this};
  // The position of the last press in its control, as in a MouseEvent: in the hidden scroll bar's
  // thumb, in a needle, and in an option's thumb.
  std::int16_t ThumbGrabX = 0;
  std::int16_t NeedleGrabX = 0;
  std::int16_t SliderGrabX = 0;
  // The pointer's last position over the time line or its frame, in pixels from the left of that
  // box; in the stabiliser, always from the left of the time line.
  std::int32_t TimeLineMouseX = 0;

  ControlArray<Label> Label1{*this, "Label1"};
  ControlArray<Label> Label2{*this, "Label2"};
  ControlArray<Label> Label3{*this, "Label3"};
  ControlArray<Label> Label6{*this, "Label6"};
  ControlArray<Label> Label7{*this, "Label7"};
  ControlArray<Label> Label8{*this, "Label8"};
  ControlArray<Label> Label16{*this, "Label16"};
  ControlArray<PictureBox> Picture2{*this, "Picture2"};
  ControlArray<PictureBox> Picture3{*this, "Picture3"};
  ControlArray<PictureBox> Picture4{*this, "Picture4"};
  PictureBox& Picture5 = Find<PictureBox>("Picture5");
  PictureBox& Picture6 = Find<PictureBox>("Picture6");
  ControlArray<Line> Line3{*this, "Line3"};
  Line& Line4 = Find<Line>("Line4");
  Line& Line5 = Find<Line>("Line5");
  Line& Line6 = Find<Line>("Line6");
  Line& Line7 = Find<Line>("Line7");
  Line& Line8 = Find<Line>("Line8");
  Shape& Shape1 = Find<Shape>("Shape1");
  ControlArray<Shape> Shape2{*this, "Shape2"};
  TextBox& Text1 = Find<TextBox>("Text1");
  TextBox& Text3 = Find<TextBox>("Text3");
  TextBox& Text4 = Find<TextBox>("Text4");
  ControlArray<ProgressBar> pbar{*this, "pbar"};
  HScrollBar& HScroll1 = Find<HScrollBar>("HScroll1");
  Menu& mnu_ConntextMenu = Find<Menu>("mnu_ConntextMenu");
};

}  // namespace kelvane
