// The options' sliders. Positions in a track are in twips. Only the thumb of Step Size is
// brought back into its track, by events of any thumb or track.
#include <array>

#include "sections/Form3.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// Converts the position of an option's thumb to its read-out.
struct OptionScale {
  double divisor;  // twips to the unit
  int minDigits;
};
constexpr std::array<OptionScale, 7> kOptionScales = {
    {{250, 2}, {250, 2}, {250, 2}, {79, 3}, {250, 2}, {250, 2}, {250, 2}}};

constexpr double kMaxStepSize = 30;
constexpr double kMinZoom = 1;
constexpr double kMaxZoom = 100;

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
  ClampStepSizeToStart();
}

void Form3::DragThumb(const MouseEvent& event) {
  if (StepSizeExceedsTrack()) MoveStepSizeToEnd();
  Label& thumb = Label1(event.Index);
  thumb.setLeft(thumb.Left() + event.X - SliderGrabX);
  for (const Label* each : Label1) Shape2(each->Index()).Outline(*each, 1);
  ShowOption(event.Index);
  Label2(OptionName(event.Index)).setForeColor(kWhite);
  if (event.Index != Zoom) return;
  Label& zoom = Label2(OptionReadOut(Zoom));
  const double value = LeadingNumber(zoom.Caption());
  if (value > kMaxZoom) {
    zoom.setCaption(u"100"_s);
  } else if (value < kMinZoom) {
    zoom.setCaption(u"001"_s);
  }
}

void Form3::ShowOption(int slider) {
  const OptionScale& scale = kOptionScales.at(static_cast<std::size_t>(slider));
  Label2(OptionReadOut(slider))
      .setCaption(FormatDigits(Label1(slider).Left() / scale.divisor, scale.minDigits));
}

void Form3::Label1_MouseUp(const MouseEvent& /*event*/) { ClampStepSizeToEnd(); }

void Form3::Label2_Change(int Index) {
  if (Index != OptionReadOut(StepSize)) return;
  Label& stepSize = Label2(Index);
  if (LeadingNumber(stepSize.Caption()) > kMaxStepSize) {
    stepSize.setCaption(u"30"_s);
  }
}

void Form3::Picture2_MouseMove(const MouseEvent& event) {
  Shape1.setVisible(true);
  for (Label* thumb : Label1) thumb->setBackColor(kCanvasGrey);
  Shape1.Outline(Picture2(event.Index), 1);
  Shape2(event.Index).Outline(Label1(event.Index), 1);
  ClampStepSizeToEnd();
  ClampStepSizeToStart();
}

bool Form3::StepSizeExceedsTrack() const {
  return Label1(StepSize).Left() + Label1(StepSize).Width() > Picture2(StepSize).ScaleWidth();
}

void Form3::MoveStepSizeToEnd() {
  Label1(StepSize).setLeft(Picture2(StepSize).ScaleWidth() - Label1(StepSize).Width());
}

void Form3::ClampStepSizeToEnd() {
  if (!StepSizeExceedsTrack()) return;
  MoveStepSizeToEnd();
  Label2(OptionReadOut(StepSize)).setCaption(u"30"_s);
}

// Keeps the thumb at least its own width from the track's start.
void Form3::ClampStepSizeToStart() {
  Label& thumb = Label1(StepSize);
  if (thumb.Left() - thumb.Width() >= 0) return;
  thumb.setLeft(thumb.Width());
  Label2(OptionReadOut(StepSize)).setCaption(u"1"_s);
}

}  // namespace kelvane
