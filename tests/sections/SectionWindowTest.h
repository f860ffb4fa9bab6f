#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "sections/Form3.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"
#include "support/RecordingTools.h"

namespace kelvane::testing {

// The section window as it opens, with recording tools that nothing should start.
class SectionWindowTest : public ::testing::Test {
 protected:
  SectionWindowTest() {
    SectionSourceShortPath.clear();
    form_->Load();
    form_->Show();
  }
  ~SectionWindowTest() override {
    EXPECT_EQ(tools_.Runs(), std::vector<std::string>{});
    SectionSourceShortPath.clear();
  }

  template <class Kind>
  Kind& Get(const char* name) const {
    return form_->Find<Kind>(QLatin1String(name));
  }
  template <class Kind>
  Kind& Get(const char* array, int index) const {
    return form_->Find<Kind>(QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index));
  }

  PictureBox& Strip() const { return Get<PictureBox>("Picture3", TimeLineStrip); }
  PictureBox& Frame() const { return Get<PictureBox>("Picture3", TimeLineFrame); }
  PictureBox& NeedleBox(Needle needle) const { return Get<PictureBox>("Picture4", needle); }
  PictureBox& Track(int slider) const { return Get<PictureBox>("Picture2", slider); }
  Label& Thumb(int slider) const { return Get<Label>("Label1", slider); }
  std::string Caption(const char* array, int index) const {
    return Get<Label>(array, index).Caption().toStdString();
  }
  // Of a slider's read-out, and of one of the needles'.
  std::string Value(int slider) const { return Caption("Label2", 2 * slider + 1); }
  std::string Time(SectionReadOut readOut) const { return Caption("Label8", readOut); }

  static MouseEvent At(const Control& control, int button, float x, float y = 0) {
    return {.Index = control.Index(), .Button = button, .Shift = 0, .X = x, .Y = y};
  }
  // Presses the control at X, and moves the mouse by that much with the button held.
  static void Drag(Control& control, float by, float pressedAt = 2) {
    control.MouseDown(At(control, kLeftButton, pressedAt));
    control.MouseMove(At(control, kLeftButton, pressedAt + by));
    if (control.MouseUp) control.MouseUp(At(control, kLeftButton, pressedAt));
  }
  // The same, so that its left edge comes to stand there.
  static void DragTo(Control& control, float left) { Drag(control, left - control.Left()); }
  static void MoveOver(Control& control, float x = 1) {
    control.MouseMove(At(control, kNoButton, x));
  }
  void MoveOverTheWindow() const {
    MovePointerOver(*form_->findChild<Container*>(QString(), Qt::FindDirectChildrenOnly));
  }

  // A widget as it would be drawn now.
  static QImage Picture(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
  }

  RecordingTools tools_;
  std::unique_ptr<Form3> form_ = std::make_unique<Form3>();
};

}  // namespace kelvane::testing
