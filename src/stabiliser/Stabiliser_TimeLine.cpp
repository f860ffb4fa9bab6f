// The time line of the chosen video, and the needles; moving one shows the frame at its time.
#include <QApplication>
#include <algorithm>
#include <cmath>

#include "sections/Module5.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"
#include "stabiliser/Stabiliser.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int kNeedleMiddle = 2;
constexpr int kRestOfNeedle = 3;  // pixels of a needle from the one at its time to its right edge

}  // namespace

void Stabiliser::WireTimeLine() {
  const auto scroll = [this](const WheelEvent& event) { ScrollTimeLine(event.Notches); };
  const BarValue seconds{
      [this](double position) { return scale_.TimeAt(position + kNeedleMiddle); },
      [this](double time) { return scale_.PositionOf(time) - kNeedleMiddle; }, -kNeedleMiddle};
  for (PictureBox* needle : Picture4) {
    needle->setSpokenValue(seconds);
    needle->setTakesKeyboard();
    needle->MouseMove = [this](const MouseEvent& event) { DragNeedle(event); };
    needle->MouseWheel = scroll;
    needle->KeyDown = [this](const KeyEvent& event) { return StepNeedle(event); };
    // Scrolls to a needle that gets the focus by a key. It doesn't when the window is activated,
    // or when the focus comes from a caption that has just been disabled.
    connect(qApp, &QApplication::focusChanged, needle, [this, needle](QWidget* old, QWidget* now) {
      const bool moved = old != nullptr && old->window() == this && old->isEnabled();
      if (now == needle && moved && QApplication::mouseButtons() == Qt::NoButton) ScrollTo(*needle);
    });
  }
  // The handlers take positions on the strip, so those of the frame's events are converted.
  PictureBox& frame = Picture3(TimeLineFrame);
  const auto onStrip = [this](MouseEvent event) {
    event.X -= Picture3(TimeLineStrip).Left();
    return event;
  };
  frame.MouseMove = [this, onStrip](const MouseEvent& event) {
    Picture3_MouseMove(onStrip(event));
  };
  frame.MouseUp = [this, onStrip](const MouseEvent& event) { Picture3_MouseUp(onStrip(event)); };
  for (PictureBox* box : Picture3) box->MouseWheel = scroll;
  Picture5.MouseWheel = scroll;
  for (Label* arrow : Label7) arrow->MouseWheel = scroll;
  Find<Menu>("mnu_Start").Click = [this] { MarkHere(StartNeedle); };
  Find<Menu>("mnu_End").Click = [this] { MarkHere(EndNeedle); };
}

QString Stabiliser::TimeTextAt(float X) const { return scale_.Text(scale_.TimeAt(X)); }

void Stabiliser::ShowTimeLine() {
  PictureBox& strip = Picture3(TimeLineStrip);
  const double duration = source_->facts.duration;
  const int wholeSeconds = std::max(static_cast<int>(duration), 1);
  scale_ =
      TimeScale(duration, static_cast<int>(Picture3(TimeLineFrame).ScaleWidth()) - kRestOfNeedle);
  Label16(0).setCaption(u"Video Duration hh:mm:ss: "_s +
                        TimeText(std::floor(duration), Precision::kSeconds));
  Label16(2).setCaption(QString::number(wholeSeconds));
  // The strip is wider than the video, so that the end needle can be seen and dragged at the end.
  strip.setWidth(static_cast<float>(scale_.Width() + kRestOfNeedle));
  strip.setLeft(0);
  Line7.setX2(static_cast<float>(scale_.Width()));
  DrawTimes();
  MoveNeedle(StartNeedle, 0);
  MoveNeedle(EndNeedle, scale_.Length());
}

void Stabiliser::DrawTimes() {
  constexpr int kLabelWidth = 64;      // with the space to the next one
  constexpr float kPrintedWidth = 56;  // with tenths
  constexpr float kLabelTop = 7;
  constexpr QRgb kOlive = 0x808000;
  PictureBox& strip = Picture3(TimeLineStrip);
  ClearTimeLine(strip);
  const float W = strip.ScaleWidth();
  const float H = strip.ScaleHeight();
  const TimeScale::Ticks ticks = scale_.TicksFor(kLabelWidth);
  const double step = ticks.spacing / ticks.parts;
  const Precision precision = ticks.spacing < 1 ? Precision::kTenths : Precision::kSeconds;
  for (int i = 0; std::lround(scale_.PositionOf(i * step)) <= scale_.Width(); ++i) {
    const auto x = static_cast<float>(scale_.PositionOf(i * step));
    const bool major = i % ticks.parts == 0;
    const float tick = major ? 6 : 2;
    if (major && x + kPrintedWidth <= W) strip.PrintAt(x, kLabelTop, TimeText(i * step, precision));
    strip.DrawLine(x, 0, x, tick, major ? kLight : kOlive);
    strip.DrawLine(x, H - tick, x, H, kOlive);
  }
}

void Stabiliser::MoveNeedle(Needle needle, double time) {
  constexpr float kHairlineOffset = 0.5;
  double& mark = marks_.at(needle);
  if (mark != time) sample_.clear();
  mark = time;
  PictureBox& box = Picture4(needle);
  box.setLeft(static_cast<float>(scale_.PositionOf(time)) - kNeedleMiddle);
  const float hairlineX = box.Left() + box.Width() / 2 - kHairlineOffset;
  Line3(needle).setX1(hairlineX);
  Line3(needle).setX2(hairlineX);
  Label8(needle == StartNeedle ? SectionStart : SectionEnd).setCaption(scale_.Text(time));
  Label8(SectionSpan)
      .setCaption(scale_.Text(std::max(marks_[EndNeedle] - marks_[StartNeedle], 0.0)));
  DrawSpanLine();
  Line8.BringToFront();
}

void Stabiliser::DragNeedle(const MouseEvent& event) {
  if (event.Button != kLeftButton) return;
  const auto needle = static_cast<Needle>(event.Index);
  PictureBox& box = Picture4(needle);
  box.setToolTipText(NeedleTip(needle));
  const float position = box.Left() + event.X - static_cast<float>(NeedleGrabX) + kNeedleMiddle;
  SetMark(needle, scale_.TimeAt(position));
}

void Stabiliser::MarkHere(Needle needle) { SetMark(needle, scale_.TimeAt(TimeLineMouseX)); }

bool Stabiliser::StepNeedle(const KeyEvent& event) {
  constexpr double kLargeStep = 10;  // seconds, with Shift
  constexpr int kShift = 1;
  if (!source_ || (event.Key != Qt::Key_Left && event.Key != Qt::Key_Right)) return false;
  const double step = (event.Shift & kShift) != 0 ? kLargeStep : 1;
  const auto needle = static_cast<Needle>(event.Index);
  const double time = marks_.at(needle) + (event.Key == Qt::Key_Left ? -step : step);
  SetMark(needle, scale_.TimeAt(scale_.PositionOf(time)));
  ScrollTo(Picture4(needle));
  return true;
}

void Stabiliser::SetMark(Needle needle, double time) {
  MoveNeedle(needle, time);
  ShowFrameAt(time);
}

void Stabiliser::ScrollTimeLine(double notches) {
  constexpr double kPixelsPerNotch = 100;
  MoveStrip(
      static_cast<float>(std::round(Picture3(TimeLineStrip).Left() + notches * kPixelsPerNotch)));
}

void Stabiliser::ScrollTo(const PictureBox& needle) {
  const float first = -needle.Left();
  const float last = Picture3(TimeLineFrame).ScaleWidth() - needle.Left() - needle.Width();
  MoveStrip(std::clamp(Picture3(TimeLineStrip).Left(), first, last));
}

void Stabiliser::MoveStrip(float left) {
  PictureBox& strip = Picture3(TimeLineStrip);
  const float last = std::min(Picture3(TimeLineFrame).ScaleWidth() - strip.Width(), 0.0F);
  strip.setLeft(std::clamp(left, last, 0.0F));
}

// The end of the video has no frame of its own, so its last one is shown.
void Stabiliser::ShowFrameAt(double time) {
  constexpr double kUsualRate = 25;
  if (!source_) return;
  const VideoFacts& facts = source_->facts;
  const double frame = 1 / (facts.rate > 0 ? facts.rate : kUsualRate);
  if (wmp.URL() != source_->path) wmp.OpenPaused(source_->path);
  wmp.controls.pause();
  wmp.controls.setCurrentPosition(std::clamp(time, 0.0, std::max(facts.duration - frame, 0.0)));
}

}  // namespace kelvane
