// The join: one file by stream copy, or a transport stream for each section. Nothing is asked of
// the tools but that their text ends, and nothing that they leave behind is cleaned up.
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>

#include "joiner/Form4.h"
#include "joiner/JoinTexts.h"
#include "media/CommandLines.h"
#include "media/Module1.h"
#include "media/ProbeReadings.h"
#include "platform/App.h"
#include "platform/MsgBox.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// The windows live meanwhile; even a second join may begin.
void WaitOneSecond() {
  constexpr std::chrono::seconds kWait{1};
  constexpr std::chrono::milliseconds kPause{5};
  const auto end = std::chrono::steady_clock::now() + kWait;
  do {
    DoEvents();
    std::this_thread::sleep_until(std::min(std::chrono::steady_clock::now() + kPause, end));
  } while (std::chrono::steady_clock::now() < end);
}

}  // namespace

// A join or a section that comes in during the wait has a runner of its own.
void Form4::DoTheJoin() {
  DOSOutputs objDOS;
  ConnectRunner(objDOS);
  if (Option1(TranscodeAllSections).Value()) {
    TranscodeSections(objDOS);
  } else {
    JoinSections(objDOS);
  }
  Label3(ProcessLine).setCaption(u"Process: Video Created."_s);
  MsgBox(u"Your Videos have been joined successfully."_s, kOKCancel | kExclamation, kProductName);
}

// A cancelled dialog stops nothing: the tool is run without a name for its output.
void Form4::JoinSections(DOSOutputs& objDOS) {
  CDialog.DialogTitle = u"Save Video As"_s;
  CDialog.FileName.clear();
  CDialog.Filter = u"MP4 File (*.mp4)|*.mp4"_s;
  CDialog.ShowSave();
  const QString OutputFile = Trim(CDialog.FileName);

  DoEvents();
  Label3(ProcessLine).setCaption(u"Process: Joining Your Videos..."_s);
  const std::string tools = ToolsFolder(App::Path());
  const std::string ListFile = WriteListFile(tools);
  WaitOneSecond();
  if (Option1(NoTranscode).Value()) {
    Run(objDOS, JoinCommandLine(tools, ListFile, ToNarrow(OutputFile)));
  }
}

// The list stands beside the tools. Where it can't be written whole there, as on a full disk or by
// the user of a program that is installed for everybody, it has a private place.
std::string Form4::WriteListFile(const std::string& tools) const {
  std::string beside = tools + "/files.txt";
  if (WriteListTo(FromNarrow(beside)) || QFileInfo(FromNarrow(beside)).isDir()) return beside;
  std::string elsewhere = PrivateListFile();
  return !elsewhere.empty() && WriteListTo(FromNarrow(elsewhere)) ? elsewhere : beside;
}

// Removed sections have their lines as well. What can't be removed is left as it is, and of a list
// that can't be written whole nothing is left.
bool Form4::WriteListTo(const QString& path) const {
  std::string lines;
  for (int i = 0; i < List1.ListCount(); ++i) lines += ToNarrow(ListFileLine(List1.List(i)));
  const auto size = static_cast<qint64>(lines.size());
  QFile file(path);
  file.remove();  // a link goes itself, not what it leads to
  if (!file.open(QIODevice::NewOnly | QIODevice::Unbuffered)) return false;
  const bool written = file.write(lines.data(), size) == size;
  file.close();
  if (written && file.error() == QFileDevice::NoError) return true;
  file.remove();
  return false;
}

// From now on no section comes in any more. The mode ends with the transport streams.
void Form4::TranscodeSections(DOSOutputs& objDOS) {
  TranscodeLock = true;
  const std::string tools = ToolsFolder(App::Path());
  for (int i = 0; i < List1.ListCount(); ++i) {
    Label3(ProcessLine).setCaption(u"Process: Transcoding Video "_s + FormatDigits(i, 2));
    // Nothing is served before the next one.
    Label3(ProcessLine).repaint();
    const QString SectionPath = Trim(List1.List(i));
    const QString SectionFolder = FolderOf(SectionPath);
    if (SectionFolder.isEmpty()) continue;
    Run(objDOS, TransportStreamCommandLine(tools, ToNarrow(SectionPath),
                                           ToNarrow(SectionFolder + IntermediateName(i + 1))));
  }
  // Composed and dropped: nothing takes it up.
  static_cast<void>(ConcatListText(List1.ListCount()));
}

void Form4::ConnectRunner(DOSOutputs& objDOS) {
  // The tools print the word and its value one after the other; a handler that looks at one block
  // alone must find them together.
  objDOS.CutBlocks(EndOfLine);
  objDOS.ReceiveOutputs =
      IgnoringExceptions([this](const std::string& block) { objDOS_ReceiveOutputs(block); });
}

// The command goes on after a run that fails as after any other.
void Form4::Run(DOSOutputs& objDOS, const std::string& commandLine) {
  try {
    objDOS.setCommandLine(commandLine);
    objDOS.ExecuteCommand();
  } catch (const std::exception&) {
  }
}

}  // namespace kelvane
