#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Form.h"
#include "support/Pictures.h"

// What the tests of this room stand on: a form whose events are open to the test, and a record of
// what happened.
namespace kelvane::testing {

using Controls = std::vector<ControlDesign>;
using Menus = std::vector<MenuDesign>;

// 300 by 200 pixels, in pixels.
constexpr FormDesign kPixelForm{.name = "Form",
                                .caption = "A form",
                                .clientWidth = 4500,
                                .clientHeight = 3000,
                                .backColor = 0x102030,
                                .labelColor = 0xF0E0D0,
                                .scale = ScaleMode::kPixels};

class TestForm : public Form {
 public:
  explicit TestForm(const Controls& controls = {}, const Menus& menus = {});
  explicit TestForm(const FormDesign& design, const Controls& controls = {},
                    const Menus& menus = {});

  std::function<void()> OnLoad;
  std::function<void()> OnResize;
  std::function<void(const MouseEvent&)> OnMouseMove;
  std::function<void()> OnQueryUnload;
  std::function<void()> OnUnload;

  // Loads it, shows it and waits until it is on the screen.
  void Open();

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_MouseMove(const MouseEvent& event) override;
  void Form_QueryUnload() override;
  void Form_Unload() override;
};

// The same form in twips.
FormDesign TwipForm();
FormDesign FixedForm();

// What happened, in order.
using Events = std::vector<std::string>;

// "Down 3: button 1 shift 0 at 4,5"
std::string Describe(const char* what, const MouseEvent& event);

// Writes a control's mouse events down in `events`.
void Record(Control& control, Events& events);

// Where the picture has the colour, empty if nowhere. The test fails if the place isn't full of it.
QRect InkOf(const QImage& picture, QRgb color);

}  // namespace kelvane::testing
