// The options' sliders. Places in a track are in twips. Step Size alone is held inside its track,
// and that whichever thumb or track the mouse is on.
#include <array>

#include "sections/Form3.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// How a thumb's place reads.
struct Reading {
  double divisor;
  int leastDigits;
};
constexpr std::array<Reading, 7> kReadings = {
    {{250, 2}, {250, 2}, {250, 2}, {79, 3}, {250, 2}, {250, 2}, {250, 2}}};

constexpr double kMostStepSize = 30;
constexpr double kLeastZoom = 1;
constexpr double kMostZoom = 100;

}  // namespace

void Form3::Label1_MouseDown(const MouseEvent& event) {
  SliderGrabX = ToInteger16(event.X).value_or(SliderGrabX);
}

void Form3::Label1_MouseMove(const MouseEvent& event) {
  for (Label* label : Label2) label->setForeColor(kLight);
  for (Label* thumb : Label1) thumb->setBackColor(kCanvasGrey);
  for (Label* caption : Label3) caption->setForeColor(kLight);
  Label1(event.Index).setBackColor(kWhite);
  Label3(event.Index).setForeColor(kWhite);
  if (event.Button == kLeftButton) DragThumb(event);
  HoldStepSizeAtItsStart();
}

void Form3::DragThumb(const MouseEvent& event) {
  if (StepSizeIsBeyondItsTrack()) PutStepSizeAtItsEnd();
  Label& thumb = Label1(event.Index);
  thumb.setLeft(thumb.Left() + event.X - SliderGrabX);
  for (const Label* each : Label1) Shape2(each->Index()).Outline(*each, 1);
  ShowOption(event.Index);
  Label2(OptionName(event.Index)).setForeColor(kWhite);
  if (event.Index != Zoom) return;
  Label& zoom = Label2(OptionReadOut(Zoom));
  const double value = LeadingNumber(zoom.Caption());
  if (value > kMostZoom) {
    zoom.setCaption(u"100"_s);
  } else if (value < kLeastZoom) {
    zoom.setCaption(u"001"_s);
  }
}

void Form3::ShowOption(int slider) {
  const Reading& reading = kReadings.at(static_cast<std::size_t>(slider));
  Label2(OptionReadOut(slider))
      .setCaption(FormatDigits(Label1(slider).Left() / reading.divisor, reading.leastDigits));
}

void Form3::Label1_MouseUp(const MouseEvent& /*event*/) { HoldStepSizeAtItsEnd(); }

void Form3::Label2_Change(int Index) {
  if (Index != OptionReadOut(StepSize)) return;
  Label& stepSize = Label2(Index);
  if (LeadingNumber(stepSize.Caption()) > kMostStepSize) {
    stepSize.setCaption(u"30"_s);
  }
}

void Form3::Picture2_MouseMove(const MouseEvent& event) {
  Shape1.setVisible(true);
  for (Label* thumb : Label1) thumb->setBackColor(kCanvasGrey);
  Shape1.Outline(Picture2(event.Index), 1);
  Shape2(event.Index).Outline(Label1(event.Index), 1);
  HoldStepSizeAtItsEnd();
  HoldStepSizeAtItsStart();
}

bool Form3::StepSizeIsBeyondItsTrack() const {
  return Label1(StepSize).Left() + Label1(StepSize).Width() > Picture2(StepSize).ScaleWidth();
}

void Form3::PutStepSizeAtItsEnd() {
  Label1(StepSize).setLeft(Picture2(StepSize).ScaleWidth() - Label1(StepSize).Width());
}

void Form3::HoldStepSizeAtItsEnd() {
  if (!StepSizeIsBeyondItsTrack()) return;
  PutStepSizeAtItsEnd();
  Label2(OptionReadOut(StepSize)).setCaption(u"30"_s);
}

// A thumb's width away from the track's start.
void Form3::HoldStepSizeAtItsStart() {
  Label& thumb = Label1(StepSize);
  if (thumb.Left() - thumb.Width() >= 0) return;
  thumb.setLeft(thumb.Width());
  Label2(OptionReadOut(StepSize)).setCaption(u"1"_s);
}

}  // namespace kelvane
