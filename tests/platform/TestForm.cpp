#include "platform/TestForm.h"

#include <gtest/gtest.h>

#include <QWindow>
#include <sstream>

#include "support/Events.h"
#include "support/Pictures.h"

namespace kelvane::testing {
Design::Design(ControlClass controlClass, const char* name, const DesignPlace& pixels)
    : row_{.name = name,
           .controlClass = controlClass,
           .place = {pixels.left * kTwipsPerPixel, pixels.top * kTwipsPerPixel,
                     pixels.width * kTwipsPerPixel, pixels.height * kTwipsPerPixel}} {}

void TestForm::Open() {
  Load();
  Show();
  ASSERT_TRUE(WaitFor([this] { return windowHandle()->isExposed(); }));
}

FormDesign TwipForm() {
  FormDesign design = kPixelForm;
  design.scale = ScaleMode::kTwips;
  return design;
}

FormDesign FixedForm() {
  FormDesign design = kPixelForm;
  design.border = BorderStyle::kFixedDialog;
  return design;
}

std::string Describe(const char* what, const MouseEvent& event) {
  std::ostringstream text;
  text << what;
  if (event.Index >= 0) text << ' ' << event.Index;
  if (event.Button != kNoButton) text << " button " << event.Button;
  if (event.Shift != 0) text << " shift " << event.Shift;
  text << " at " << event.X << ',' << event.Y;
  return text.str();
}

void Record(Control& control, Events& events) {
  control.MouseDown = [&](const MouseEvent& event) { events.push_back(Describe("Down", event)); };
  control.MouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Move", event)); };
  control.MouseUp = [&](const MouseEvent& event) { events.push_back(Describe("Up", event)); };
  control.DblClick = [&](const MouseEvent& event) { events.push_back(Describe("Double", event)); };
}

QRect InkOf(const QImage& picture, QRgb color) {
  const QRect ink = Extent(picture, picture.rect(), color);
  EXPECT_TRUE(AllOf(picture, ink, color));
  return ink;
}

}  // namespace kelvane::testing
