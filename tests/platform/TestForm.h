#pragma once

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "platform/Form.h"
#include "support/Pictures.h"

// What the tests of the platform layer share: a form whose handlers a test can set, and a record of
// events.
namespace kelvane::testing {

using enum ControlClass;
using namespace Qt::StringLiterals;

using Controls = std::vector<ControlDesign>;
using Menus = std::vector<MenuDesign>;

// The row of one control in the table of a test's form. The place is in pixels.
class Design {
 public:
  Design(ControlClass controlClass, const char* name, const DesignPlace& pixels = {});
  operator ControlDesign() const { return row_; }  // NOLINT(google-explicit-constructor)

  Design& In(const char* container) { return Set(row_.container, container); }
  Design& Caption(const char* caption) { return Set(row_.caption, caption); }
  Design& Color(QRgb color) { return Set(row_.color, color); }
  Design& Fill(QRgb color) { return Set(row_.fillColor, color); }
  Design& BorderWidth(int pixels) { return Set(row_.borderWidth, pixels); }
  Design& Pointer(MousePointer pointer) { return Set(row_.pointer, pointer); }
  Design& Meaning(const char* meaning) { return Set(row_.meaning, meaning); }
  Design& Role(SpokenRole role) { return Set(row_.role, role); }
  Design& ReadOut(const char* label) { return Set(row_.readOut, label); }
  Design& Hidden() { return Set(row_.visible, false); }
  Design& Centred() { return Set(row_.centred, true); }
  Design& RightAligned() { return Set(row_.rightAligned, true); }
  Design& Bordered() { return Set(row_.bordered, true); }
  Design& Editable() { return Set(row_.editable, true); }
  Design& Twips() { return Set(row_.twips, true); }
  Design& SizesItself() { return Set(row_.sizesItself, true); }
  Design& Chosen() { return Set(row_.chosen, true); }

 private:
  template <class Field, class Value>
  Design& Set(Field& field, Value value) {
    field = value;
    return *this;
  }

  ControlDesign row_;
};

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();
constexpr float kGreatest = std::numeric_limits<float>::max();

// A form of 300 by 200 pixels whose scale unit is the pixel.
constexpr FormDesign kPixelForm{.name = "Form",
                                .caption = "A form",
                                .clientWidth = 4500,
                                .clientHeight = 3000,
                                .backColor = 0x102030,
                                .labelColor = 0xF0E0D0,
                                .scale = ScaleMode::kPixels};

class TestForm : public Form {
 public:
  explicit TestForm(const Controls& controls = {}, const Menus& menus = {})
      : TestForm(kPixelForm, controls, menus) {}
  explicit TestForm(const FormDesign& design, const Controls& controls = {},
                    const Menus& menus = {})
      : Form(design, controls, menus) {}

  std::function<void()> OnLoad = [] {};
  std::function<void()> OnResize = [] {};
  std::function<void(const MouseEvent&)> OnMouseMove = [](const MouseEvent&) {};
  std::function<void()> OnQueryUnload = [] {};
  std::function<void()> OnUnload = [] {};

  // Loads and shows the form and waits until it is exposed.
  void Open();

 protected:
  void Form_Load() override { OnLoad(); }
  void Form_Resize() override { OnResize(); }
  void Form_MouseMove(const MouseEvent& event) override { OnMouseMove(event); }
  void Form_QueryUnload() override { OnQueryUnload(); }
  void Form_Unload() override { OnUnload(); }
};

// Return kPixelForm, the first in twips, the second with the border of a fixed dialog.
FormDesign TwipForm();
FormDesign FixedForm();

// The events that were raised, in order.
using Events = std::vector<std::string>;

// Returns "Down 3 button 1 shift 2 at 4,5" for the event "Down" of the control with the index 3.
// The index is left out for a control in no array, and so are a button and a shift of 0.
std::string Describe(const char* what, const MouseEvent& event);

// Appends the mouse events that the control raises from now on to `events`.
void Record(Control& control, Events& events);

// Returns the rectangle around the pixels that have the colour; empty if none has. The test fails
// unless they fill the rectangle.
QRect InkOf(const QImage& picture, QRgb color);

}  // namespace kelvane::testing
