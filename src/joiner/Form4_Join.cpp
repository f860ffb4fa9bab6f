// The join: one file by stream copy, or a transport stream for each section. A tool's outcome isn't
// examined, and what it leaves behind isn't cleaned up.
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>

#include "joiner/Form4.h"
#include "joiner/JoinTexts.h"
#include "media/CommandLines.h"
#include "media/Module1.h"
#include "media/ProbeReadings.h"
#include "platform/App.h"
#include "platform/LongJob.h"
#include "platform/MsgBox.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// The windows respond meanwhile; even a second join may begin.
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

// The runner is local: a join or a new section that begins during the wait has one of its own.
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

// If the dialog is cancelled, the tool still runs, without a name for its output.
void Form4::JoinSections(DOSOutputs& objDOS) {
  CDialog.DialogTitle = u"Save Video As"_s;
  CDialog.FileName.clear();
  CDialog.Filter = u"MP4 File (*.mp4)|*.mp4"_s;
  QStringList sections;
  for (int i = 0; i < List1.ListCount(); ++i) sections << List1.List(i);
  CDialog.Remark = [sections](const QString& path) { return JoinRemark(path, sections); };
  CDialog.ShowSave();
  const QString OutputFile = Trim(CDialog.FileName);

  DoEvents();
  Label3(ProcessLine).setCaption(u"Process: Joining Your Videos..."_s);
  const std::string tools = ToolsFolder(App::Path());
  const std::string ListFile = WriteListFile(tools);
  WaitOneSecond();
  if (Option1(NoTranscode).Value()) {
    LongJob job("Joining videos");
    ShowProgress(objDOS, job);
    Run(objDOS, [&] { return JoinCommandLine(tools, ListFile, ToNarrow(OutputFile)); });
  }
}

// The list is written beside the tools. If it can't be written whole there (on a full disk, or if
// the program is installed for everybody), it is written to the private folder, unless a folder
// beside the tools has the list's name.
std::string Form4::WriteListFile(const std::string& tools) const {
  std::string beside = tools + "/files.txt";
  if (WriteListTo(FromNarrow(beside)) || QFileInfo(FromNarrow(beside)).isDir()) return beside;
  std::string elsewhere = PrivateListFile();
  return !elsewhere.empty() && WriteListTo(FromNarrow(elsewhere)) ? elsewhere : beside;
}

// Removed sections have lines as well.
bool Form4::WriteListTo(const QString& path) const {
  QByteArray lines;
  for (int i = 0; i < List1.ListCount(); ++i) lines.append(ToNarrow(ListFileLine(List1.List(i))));
  QFile file(path);
  file.remove();  // removes a link, not its target
  if (!file.open(QIODevice::NewOnly | QIODevice::Unbuffered)) return false;
  const bool written = file.write(lines) == lines.size();
  file.close();
  if (written && file.error() == QFileDevice::NoError) return true;
  file.remove();
  return false;
}

// From now on no section can be added. The transport streams aren't joined.
void Form4::TranscodeSections(DOSOutputs& objDOS) {
  TranscodeLock = true;
  const std::string tools = ToolsFolder(App::Path());
  LongJob job("Transcoding videos");
  for (int i = 0; i < List1.ListCount(); ++i) {
    Label3(ProcessLine).setCaption(u"Process: Transcoding Video "_s + FormatDigits(i, 2));
    // Nothing else paints the caption while the tools run.
    Label3(ProcessLine).repaint();
    job.SetProgress(static_cast<double>(i) / List1.ListCount());
    const QString SectionPath = Trim(List1.List(i));
    const QString SectionFolder = FolderOf(SectionPath);
    if (SectionFolder.isEmpty()) continue;
    Run(objDOS, [&] {
      return TransportStreamCommandLine(tools, ToNarrow(SectionPath),
                                        ToNarrow(SectionFolder + IntermediateName(i + 1)));
    });
  }
  // The text is composed, but nothing uses it.
  static_cast<void>(ConcatListText(List1.ListCount()));
}

void Form4::ConnectRunner(DOSOutputs& objDOS) {
  // The tools write "Duration:" and its value separately; the handler, which looks at one block
  // alone, must find both in one block.
  objDOS.CutBlocks(EndOfLine);
  objDOS.ReceiveOutputs =
      IgnoringExceptions([this](const std::string& block) { objDOS_ReceiveOutputs(block); });
}

void Form4::ShowProgress(DOSOutputs& objDOS, LongJob& job) {
  objDOS.ReceiveOutputs =
      IgnoringExceptions([&job, total = static_cast<double>(TotalSeconds),
                          receive = std::move(objDOS.ReceiveOutputs)](const std::string& block) {
        if (const auto seconds = ReadProgress(block); seconds && total > 0) {
          job.SetProgress(*seconds / total);
        }
        receive(block);
      });
}

// Ignores exceptions: the command goes on after a run that fails.
void Form4::Run(DOSOutputs& objDOS, const std::function<std::string()>& commandLine) {
  try {
    objDOS.setCommandLine(commandLine());
    objDOS.ExecuteCommand();
  } catch (const std::exception&) {
  }
}

}  // namespace kelvane
