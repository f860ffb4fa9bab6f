#include "stabiliser/Stabiliser.h"

#include <utility>

#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

Stabiliser::Stabiliser(const QIcon& icon) : Form3(icon) {
  setObjectName(u"Stabiliser"_s);
  for (int option = StepSize; option <= UnSharpLY; ++option) {
    const auto at = static_cast<std::size_t>(option);
    designedReadOuts_.at(at) = Label2(OptionReadOut(option)).Caption();
    designedThumbs_.at(at) = Label1(option).Left();
  }
  scale_ = TimeScale(static_cast<int>(LeadingNumber(Label16(2).Caption())));
  cdialog.Filter = kVideoFilter;
  cdialog.OverwritePrompt = true;
  WireCommands();
  WireTimeLine();
}

void Stabiliser::WireCommands() {
  MakeCommand(Label6(0), &Stabiliser::SelectVideo);
  MakeCommand(Label10(Play), &Stabiliser::PlayVideo);
  MakeCommand(Label10(Pause), &Stabiliser::PauseVideo);
  MakeCommand(Label10(Stop), &Stabiliser::StopVideo);
  MakeCommand(Label10(Rewind), &Stabiliser::RewindVideo);
  MakeCommand(Label12(Apply), &Stabiliser::ApplyOptions);
  MakeCommand(Label12(TestSettings), &Stabiliser::TestOptions);
  MakeCommand(Label12(ResetSettings), &Stabiliser::ResetOptions);
  MakeCommand(Label12(LoadOther), &Stabiliser::LoadOtherVideo);
  MakeCommand(Label14(ExtractRegion), &Stabiliser::ExtractSection);
  MakeCommand(Label14(ViewRegion), &Stabiliser::ViewSection);
  // In the order on the screen.
  OrderFocus({&Label6(0), &Picture4(StartNeedle), &Picture4(EndNeedle), &Label7(TowardsStart),
              &Label7(TowardsEnd), &Label14(ViewRegion), &Label14(ExtractRegion),
              &Label12(LoadOther), &Label12(TestSettings), &Label12(Apply), &Label12(ResetSettings),
              &Label10(Play), &Label10(Pause), &Label10(Stop), &Label10(Rewind)});
  for (const char* panel :
       {"Picture8", "Picture7(0)", "Picture7(1)", "Picture7(2)", "Picture7(3)"}) {
    Find<PictureBox>(QLatin1String(panel)).MouseMove = [this](const MouseEvent& /*event*/) {
      ClearHighlights();
    };
  }
  TakesDrops = [this] { return cancelLabel_ == nullptr; };
  FilesDropped = [this](const QStringList& paths) { SelectDropped(paths.front()); };
  for (TextBox* box : {&Text1, &Text5}) {
    box->EditFinished = [this](int /*Index*/) { TakeTypedPaths(); };
  }
}

void Stabiliser::MakeCommand(Label& caption, void (Stabiliser::*action)()) {
  commands_.push_back(&caption);
  caption.setRole(SpokenRole::kCommand);
  caption.setTakesKeyboard();
  caption.setDisabledColor(kGrey);
  caption.MouseMove = [this, &caption](const MouseEvent& /*event*/) {
    ClearHighlights();
    HighlightOf(caption).setBackColor(kGrey);
  };
  caption.MouseDown = [this, &caption](const MouseEvent& /*event*/) {
    pressed_ = &caption;
    pressedToCancel_ = cancelLabel_ == &caption;
  };
  // The second release of a double-click is no click.
  caption.MouseUp = [this, &caption, action](const MouseEvent& /*event*/) {
    if (std::exchange(pressed_, nullptr) != &caption) return;
    if (cancelLabel_ == &caption) {
      Cancel();
    } else if (!pressedToCancel_ && caption.isEnabled() && TakeTypedSource(&caption) &&
               TakeTypedOther(&caption)) {
      (this->*action)();
    }
  };
}

Label& Stabiliser::Label12(int index) const { return Find<Label>(u"Label12(%1)"_s.arg(index)); }

// The background of Label6(0) is another label, Label6(1).
Label& Stabiliser::HighlightOf(Label& caption) const {
  return &caption == &Label6(0) ? Label6(1) : caption;
}

void Stabiliser::ClearHighlights() {
  for (Label* command : commands_) HighlightOf(*command).setBackColor(kDark);
}

void Stabiliser::Form_MouseMove(const MouseEvent& event) {
  Form3::Form_MouseMove(event);
  ClearHighlights();
}

void Stabiliser::Form_Load() {
  Form3::Form_Load();
  wmp.setFitsBox();
  if (!closeOnSignal_) closeOnSignal_ = std::make_unique<CloseOnSignal>(*this);
  ClearHighlights();
}

// closeOnSignal_ stays: without it, another signal would leave the tool and its file behind.
void Stabiliser::Form_Unload() {
  Cancel();
  wmp.setURL({});
}

void Stabiliser::PlayVideo() { wmp.controls.play(); }
void Stabiliser::PauseVideo() { wmp.controls.pause(); }
void Stabiliser::StopVideo() { wmp.controls.stop(); }
void Stabiliser::RewindVideo() { wmp.controls.setCurrentPosition(0); }

}  // namespace kelvane
