// Loads a video: shows its path, and runs the probe tool for its size and duration.
#include <QStandardPaths>
#include <exception>

#include "media/CommandLines.h"
#include "media/Module1.h"
#include "platform/App.h"
#include "platform/MsgBox.h"
#include "shared/SharedValues.h"
#include "shared/TextHelpers.h"
#include "workspace/Form1.h"

namespace kelvane {

using namespace Qt::StringLiterals;

// What is set before the dialog stays set if the dialog is cancelled.
void Form1::mnu_openVideo_Click() {
  ProbeDimensionsDone = false;
  Timer2.setEnabled(true);
  CDialog.FileName.clear();
  CDialog.Filter = u"*.*"_s;
  CDialog.InitDir = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
  wmp.Prepare();
  CDialog.ShowOpen();
  if (CDialog.FileName.isEmpty()) return;
  Text1(1).setText(FromNarrow(GetShortFileName(ToNarrow(CDialog.FileName), ShowErrorMessage)));
  Picture1(CanvasBox).setVisible(true);
}

void Form1::Text1_Change(int Index) {
  if (Index != 1) return;
  VideoPath = Text1(1).Text();
  GetVideoData();
}

void Form1::GetVideoData() {
  try {
    // A load that runs nested in this one resets objDOS; this one keeps its own runner.
    const std::shared_ptr<DOSOutputs> runner = NewRunner();
    const std::string tools = ToolsFolder(App::Path());
    if (!ProbeDimensionsDone) {
      // ReadSize takes one size, and a file may have several, for example that of a cover picture.
      runner->CutBlocks(EndOfSize);
      runner->setCommandLine(SizeProbeCommandLine(tools, ToNarrow(VideoPath)));
      runner->ExecuteCommand();
      runner->CutBlocks({});
    }
    ProbeDimensionsDone = true;
    runner->setCommandLine(DurationProbeCommandLine(tools, ToNarrow(VideoPath)));
    runner->ExecuteCommand();
    objDOS.reset();
  } catch (const std::exception&) {
    MsgBox(u"An Error Occurred trying to get Video Dimensions."_s);
  }
}

std::shared_ptr<DOSOutputs> Form1::NewRunner() {
  objDOS = std::make_shared<DOSOutputs>();
  objDOS->ReceiveOutputs =
      IgnoringExceptions([this](const std::string& block) { objDOS_ReceiveOutputs(block); });
  return objDOS;
}

// Reads the output of every tool as if it were the probe's: first sizes, then text.
void Form1::objDOS_ReceiveOutputs(const std::string& CommandOutputs) {
  const QString block = FromNarrow(CommandOutputs);
  if (!ProbeDimensionsDone) {
    if (ShowSize(CommandOutputs)) return;
    ProbeDimensionsDone = true;
  }
  DoEvents();
  Text2.AppendText(block);
  if (const std::optional<std::string> duration = durationReading_.Append(CommandOutputs)) {
    VideoDuration = FromNarrow(*duration);
  }
}

// Shows the size that a block holds. Returns SizeReading::usedUp. If it is true, the block isn't
// read as text, and the next block is read as a size too. Otherwise this block and all later ones
// are read as text.
bool Form1::ShowSize(const std::string& block) {
  const SizeReading size = ReadSize(WidenLineBreaks(block));
  if (size.width) {
    Label1(SourceWidth).setCaption(FormatGroupedText(FromNarrow(*size.width)));
  }
  if (size.height) {
    Label1(SourceHeight).setCaption(FormatGroupedText(FromNarrow(*size.height)));
  }
  return size.usedUp;
}

}  // namespace kelvane
