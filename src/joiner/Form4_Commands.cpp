// The three commands.
#include <QFile>
#include <QFileInfo>

#include "joiner/Form4.h"
#include "joiner/JoinTexts.h"
#include "media/Module1.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

// Runs the command, whichever mouse button was released.
void Form4::Label1_MouseUp(const MouseEvent& event) {
  switch (event.Index) {
    case AddVideoSection:
      AddSection();
      break;
    case JoinAllSections:
      ListIntermediates();
      Label3(ProcessLine).setCaption(u"Process: Creating List Index"_s);
      DoTheJoin();
      break;
    case SaveVideoFileList:
      SaveList();
      break;
  }
}

void Form4::AddSection() {
  if (TranscodeLock) return;
  CDialog.DialogTitle = u"Add Video"_s;
  CDialog.FileName.clear();
  CDialog.Filter = u"*.*"_s;
  CDialog.ShowOpen();
  if (CDialog.FileName.isEmpty()) return;
  SelectedFile = Trim(CDialog.FileName);
  // If there is no such file, title and path stay those of the previous one, which is probed again.
  if (const QFileInfo file(SelectedFile); file.isFile()) {
    FileTitle = file.fileName();
    if (const std::string path = GetShortFileName(ToNarrow(SelectedFile), {}); !path.empty()) {
      FileShortPath = FromNarrow(path);
    }
  }
  List1.AddItem(Trim(CDialog.FileName));
  Label3(TotalSections).setCaption(u"Total Sections: "_s + FormatDigits(List1.ListCount(), 2));
  GetVideoData();
}

// Adds the intermediate files to List2, behind those of earlier joins. Unlike TranscodeSections,
// gives no numbers to removed sections.
void Form4::ListIntermediates() {
  int live = 0;
  for (int i = 0; i < List1.ListCount(); ++i) {
    const QString item = List1.List(i);
    if (item == kDeletedSection) continue;
    ++live;
    const QString folder = FolderOf(item);
    if (!folder.isEmpty()) List2.AddItem(folder + IntermediateName(live));
  }
}

void Form4::SaveList() {
  CDialog.DialogTitle = u"Save Video File List"_s;
  CDialog.FileName.clear();
  CDialog.Filter = u"Text File (*.txt)|*.txt"_s;
  CDialog.Remark = SavedListRemark;
  CDialog.ShowSave();
  if (CDialog.FileName.isEmpty()) return;
  QFile file(CDialog.FileName);
  if (!file.open(QIODevice::WriteOnly)) return;
  QByteArray lines;
  for (int i = 0; i < List1.ListCount(); ++i) lines.append(ToNarrow(SavedListLine(List1.List(i))));
  file.write(lines);
}

}  // namespace kelvane
