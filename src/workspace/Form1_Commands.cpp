// The commands: seven flat labels, a row of buttons that is never shown, and the menus.
#include <QDesktopServices>
#include <exception>

#include "media/CommandLines.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "platform/MsgBox.h"
#include "shared/Product.h"
#include "shared/SharedValues.h"
#include "shared/TextHelpers.h"
#include "workspace/CropRemark.h"
#include "workspace/Form1.h"
#include "workspace/Module2.h"

namespace kelvane {

using namespace Qt::StringLiterals;

// Runs the command, whichever mouse button was released.
void Form1::Label14_MouseUp(const MouseEvent& event) {
  if (event.Index == ResetMarkers) {
    ResetBars();
  } else {
    RunCommand(event.Index);
  }
}

void Form1::Command1_Click(int Index) {
  if (Index == StartFreshButton) {
    AskToStartFresh();
  } else {
    RunCommand(Index);
  }
}

// Runs a command that the flat labels and the hidden buttons share.
void Form1::RunCommand(int command) {
  switch (command) {
    case LoadVideo:
      mnu_openVideo_Click();
      break;
    case RunVideo:
      if (Text1(1).Text().isEmpty()) break;
      wmp.setURL(Text1(1).Text());
      wmp.controls.play();
      break;
    case PauseVideo:
      if (!Text1(1).Text().isEmpty()) TogglePause();
      break;
    case StopVideo:
      if (!Text1(1).Text().isEmpty()) wmp.controls.stop();
      break;
    case PreviewCroppedVideo:
      BuildCropFilter();
      PreviewCrop();
      break;
    case CropVideo:
      StartCrop();
      break;
  }
}

// The caption of the hidden Pause button is the pause state; no other command changes it.
void Form1::TogglePause() {
  CommandButton& state = Command1(PauseVideo);
  if (state.Caption() == "Pause"_L1) {
    state.setCaption(u"Paused"_s);
    wmp.controls.pause();
  } else if (state.Caption() == "Paused"_L1) {
    state.setCaption(u"Pause"_s);
    wmp.controls.play();
  }
}

void Form1::BuildCropFilter() {
  CropFilter = FromNarrow(CropFilterText(CropWidth, CropHeight, CropLeft, CropTop));
}

void Form1::PreviewCrop() {
  try {
    const std::shared_ptr<DOSOutputs> runner = NewRunner();
    runner->setCommandLine(PreviewCommandLine(ToolsFolder(App::Path()), ToNarrow(Text1(1).Text()),
                                              ToNarrow(CropFilter)));
    runner->ExecuteCommand();
  } catch (const std::exception&) {
    MsgBox(u"An Error Occurred trying to create Video preview."_s);
  }
}

// Asks for the new file and opens the job's window, whose timer starts the job.
void Form1::StartCrop() {
  if (!Text1(1).Text().isEmpty()) wmp.controls.pause();
  CDialog.DialogTitle = u"Save Cropped Video As"_s;
  CDialog.FileName.clear();
  CDialog.Filter = u"MP4 Files (*.mp4)|*.mp4|AVI Files (*.avi)|*.avi|All Files (*.*)|*.*"_s;
  CDialog.FilterIndex = 1;
  CDialog.InitDir.clear();
  CDialog.Remark = CropRemark;
  CDialog.ShowSave();
  if (CDialog.FileName.isEmpty()) return;
  OutputPath = CDialog.FileName;
  BuildCropFilter();
  form2_.Load(*this).Show(this);
}

void Form1::AskToStartFresh() {
  switch (MsgBox(u"Are you sure that you want to start over again ?"_s, kYesNoCancel | kExclamation,
                 u"Start Fresh"_s)) {
    case MsgBoxResult::kYes:
      ResetEverything(*this);
      break;
    case MsgBoxResult::kNo:
      MsgBox(u"no change"_s);
      break;
    default:
      MsgBox(u"cancel"_s);
      break;
  }
}

void Form1::mnu_Extract_Click() { form3_.Load(windowIcon()).Show(); }
void Form1::mnu_JoinMultiple_Click() { form4_.Load(windowIcon()).Show(); }

void Form1::mnu_Updates_Click() { QDesktopServices::openUrl(UpdatesPage()); }
void Form1::mnu_PayPalwebsite_Click() { QDesktopServices::openUrl(DonationPage()); }

}  // namespace kelvane
