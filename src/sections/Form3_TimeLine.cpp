// The time line, its arrows and its needles. A pixel is a second.
#include "platform/Screen.h"
#include "sections/Form3.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

// Pressing, releasing and double-clicking an arrow are a step each, so a click is two steps. The
// steps of the two directions differ on purpose.
void Form3::StepTimeLine(const MouseEvent& event) {
  constexpr float kStepBack = 200;
  constexpr float kStepForward = 20;
  PictureBox& strip = Picture3(TimeLineStrip);
  if (event.Index == TowardsStart) {
    strip.setLeft(strip.Left() + kStepBack);
    if (strip.Left() > 0) strip.setLeft(0);
  } else if (strip.Left() + strip.Width() >= Picture3(TimeLineFrame).Width()) {
    strip.setLeft(strip.Left() - kStepForward);
  }
  if (const auto width = ToInteger16(strip.Width())) HScroll1.setMax(*width);
}

void Form3::Label7_MouseMove(const MouseEvent& event) {
  constexpr float kHighlightSize = 10;
  ClearArrowHighlights();
  Label7(event.Index).setForeColor(kWhite);
  Label7(event.Index).setFontBold(true);
  Label7(event.Index).setFontSize(kHighlightSize);
}

void Form3::Picture5_MouseMove(const MouseEvent& /*event*/) { ClearArrowHighlights(); }

void Form3::ClearArrowHighlights() {
  constexpr float kNormalSize = 8;
  for (Label* arrow : Label7) {
    arrow->setForeColor(kLight);
    arrow->setFontBold(false);
    arrow->setFontSize(kNormalSize);
  }
}

void Form3::Picture6_MouseDown(const MouseEvent& event) {
  ThumbGrabX = ToInteger16(event.X).value_or(ThumbGrabX);
}

// The thumb moves the strip to one of three places; of several tests that hold, the last decides.
void Form3::Picture6_MouseMove(const MouseEvent& event) {
  if (event.Button != kLeftButton) return;
  Picture6.setLeft(Picture6.Left() + event.X - ThumbGrabX);
  const float W = Picture5.Width();
  PictureBox& strip = Picture3(TimeLineStrip);
  if (W / 4 <= Picture6.Left()) strip.setLeft(-W / 4);
  if (W / 2 <= Picture6.Left()) strip.setLeft(-W / 2);
  if (W / 4 >= Picture6.Left()) strip.setLeft(0);
}

QString Form3::TimeTextAt(float X) const { return FormatTimeText(X); }

void Form3::Picture3_MouseMove(const MouseEvent& event) {
  TimeLineMouseX = ToInteger32(event.X).value_or(TimeLineMouseX);
  Picture3(TimeLineStrip).setToolTipText(TimeTextAt(event.X));
}

void Form3::Picture3_MouseUp(const MouseEvent& event) {
  TimeLineMouseX = ToInteger32(event.X).value_or(TimeLineMouseX);
  if (event.Button == kRightButton) mnu_ConntextMenu.PopUp();
}

QString Form3::NeedleTip(int needle) {
  return needle == StartNeedle ? u" Move slider to the start of the section to be extracted "_s
                               : u" Move slider to the end of the section to be extracted "_s;
}

void Form3::Picture4_MouseDown(const MouseEvent& event) {
  NeedleGrabX = ToInteger16(event.X).value_or(NeedleGrabX);
}

void Form3::Picture4_MouseMove(const MouseEvent& event) {
  constexpr float kNeedleMiddle = 2;
  constexpr float kHairlineOffset = 0.5;
  PictureBox& needle = Picture4(event.Index);
  if (Screen::Pointer() == MousePointer::kSizeWestEast) needle.SetFocus();
  if (event.Button != kLeftButton) return;
  needle.setToolTipText(NeedleTip(event.Index));
  needle.setLeft(needle.Left() + event.X - NeedleGrabX);
  Label8(event.Index == StartNeedle ? SectionStart : SectionEnd)
      .setCaption(TimeTextAt(needle.Left() + kNeedleMiddle));
  const float hairlineX = needle.Left() + needle.Width() / 2 - kHairlineOffset;
  Line3(event.Index).setX1(hairlineX);
  Line3(event.Index).setX2(hairlineX);
  ShowSpan();
  DrawSpanLine();
  Line8.BringToFront();
}

// Uses the texts of the read-outs, which may be older than the positions of the needles.
void Form3::ShowSpan() {
  const std::optional<int> start = SecondsFromTimeText(Label8(SectionStart).Caption());
  const std::optional<int> end = SecondsFromTimeText(Label8(SectionEnd).Caption());
  if (start && end) Label8(SectionSpan).setCaption(FormatTimeText(*end - *start));
}

float Form3::SpanLineY() const {
  constexpr float kBelowMiddle = 10;
  return Picture3(TimeLineStrip).ScaleHeight() / 2 + kBelowMiddle;
}

void Form3::DrawSpanLine() {
  Line8.SetEnds(Picture4(StartNeedle).Left(), SpanLineY(), Picture4(EndNeedle).Left(), SpanLineY());
}

// The read-out changes only from "00:00:00". The needle's left edge moves to the pointer's last
// position, while a drag shows the time at the needle's middle.
void Form3::mnu_Start_Click() {
  Picture4(StartNeedle).setLeft(static_cast<float>(TimeLineMouseX));
  Label& readOut = Label8(SectionStart);
  if (readOut.Caption() == "00:00:00"_L1) {
    readOut.setCaption(TimeTextAt(static_cast<float>(TimeLineMouseX)));
  }
}

void Form3::mnu_End_Click() { Picture4(EndNeedle).setLeft(static_cast<float>(TimeLineMouseX)); }

}  // namespace kelvane
