#pragma once

#include <QIcon>
#include <cstdint>
#include <functional>
#include <string>

#include "media/DOSOutputs.h"
#include "platform/CommonDialog.h"
#include "platform/ControlArray.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/ListBox.h"
#include "platform/ListView.h"
#include "platform/OptionButton.h"
#include "platform/PictureBox.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/TextBox.h"
#include "shared/Product.h"

namespace kelvane {

class LongJob;

// The boxes of the time chart, Picture1.
enum ChartBox : int { ChartFrame = 0, ChartViewport = 1, Chart = 2 };

// The scale of the chart and of its ruler.
constexpr int kSecondsPerPixel = 10;

// The commands, Label1.
enum JoinerCommand : int { AddVideoSection = 0, JoinAllSections = 1, SaveVideoFileList = 2 };

// The captions of Label3 that change.
enum JoinerReadOut : int {
  TotalDurationSeconds = 3,
  TotalRuntime = 4,
  ProcessLine = 6,
  TotalSections = 7,
  VideoDetails = 8
};

// How to join, Option1.
enum JoinMode : int { NoTranscode = 0, TranscodeAllSections = 1 };

// "Video Joiner": a list of videos with its time chart, joined by the media tools.
//
// Section p, counted from 0, has line p of List1 (its path), row p + 1 of ListView1 and, each with
// index p + 2, its strip Picture2 on the chart, its details Label2 and its rule Line1. No entry is
// ever deleted: a removed section has a grey strip, and kDeletedSection for its path. A file whose
// probe prints no duration has only a path, and from then on the numbers don't match.
class Form4 : public Form {
  Q_OBJECT
 public:
  explicit Form4(QIcon icon = ProductIcon());

  // Takes what any tool of this window prints, block by block while the tool runs, and an empty
  // block at its end.
  void objDOS_ReceiveOutputs(const std::string& CommandOutputs);

 protected:
  void Form_Load() override;
  void Form_Resize() override;

 private:
  void WireEvents();

  // Start-up and layout.
  void InitGUI();
  void DrawRuler();
  void HScroll1_Change();

  // Adding and removing a section.
  void GetVideoData();
  void AddVideoObject(std::int32_t StripWidth);
  void mnu_RemoveSection_Click();

  // The commands.
  void Label1_MouseUp(const MouseEvent& event);
  void AddSection();
  void ListIntermediates();
  void SaveList();

  // The join.
  void DoTheJoin();
  void JoinSections(DOSOutputs& objDOS);
  // Writes the list for the tool and returns its path, even if the list couldn't be written.
  std::string WriteListFile(const std::string& tools) const;
  // Writes the list in place of the file at `path`. Returns false, and leaves no list there, if it
  // can't be written whole; a file that can't be removed stays.
  bool WriteListTo(const QString& path) const;
  void TranscodeSections(DOSOutputs& objDOS);

  // Running the tools, for a join and for a new section.
  void ConnectRunner(DOSOutputs& objDOS);
  // Takes the job's progress from what the tool prints. `job` must outlive the runs of `objDOS`.
  void ShowProgress(DOSOutputs& objDOS, LongJob& job);
  // Runs the line that `commandLine` returns. Ignores exceptions, also those of `commandLine`.
  static void Run(DOSOutputs& objDOS, const std::function<std::string()>& commandLine);

  // Hover, tool tips and the context menu.
  void Label1_MouseMove(const MouseEvent& event);
  void Picture3_MouseMove(const MouseEvent& event);
  void Option1_MouseMove(const MouseEvent& event);
  void Picture1_MouseMove(const MouseEvent& event);
  void Picture2_MouseMove(const MouseEvent& event);
  void Picture2_MouseUp(const MouseEvent& event);
  void ListView1_MouseUp(const MouseEvent& event);
  void Picture5_MouseMove(const MouseEvent& event);
  void PopUpMenu() const;

  QIcon icon_;
  CommonDialog CDialog{*this};

  // The file last chosen. If it doesn't exist, the title and the short path stay as they were.
  QString SelectedFile;
  QString FileTitle;
  QString FileShortPath;

  std::int64_t TotalSeconds = 0;  // of all sections probed, removed ones as well
  std::int32_t SectionSeconds =
      0;  // of the last section; once that is added, its strip's width in pixels
  std::int32_t StripSpan = 0;  // the width of all strips in pixels; nothing uses it
  std::int16_t MenuStrip = 0;  // the strip last right-clicked
  bool TranscodeLock = false;  // no section can be added any more
  ListView::ListItem LastListItem;
  int LastColumn = 0;  // the number of the table's last column; never read

  ControlArray<Label> Label1{*this, "Label1"};
  ControlArray<Label> Label2{*this, "Label2"};
  ControlArray<Label> Label3{*this, "Label3"};
  ControlArray<Line> Line1{*this, "Line1"};
  ControlArray<OptionButton> Option1{*this, "Option1"};
  ControlArray<PictureBox> Picture1{*this, "Picture1"};
  ControlArray<PictureBox> Picture2{*this, "Picture2"};
  PictureBox& Picture3 = Find<PictureBox>("Picture3");
  PictureBox& Picture5 = Find<PictureBox>("Picture5");
  Shape& Shape1 = Find<Shape>("Shape1");
  Shape& Shape2 = Find<Shape>("Shape2");
  Shape& Shape3 = Find<Shape>("Shape3");
  Shape& Shape7 = Find<Shape>("Shape7");
  Shape& Shape8 = Find<Shape>("Shape8");
  Line& Line2 = Find<Line>("Line2");
  Line& Line3 = Find<Line>("Line3");
  ListBox& List1 = Find<ListBox>("List1");
  ListBox& List2 = Find<ListBox>("List2");
  ListView& ListView1 = Find<ListView>("ListView1");
  TextBox& Text1 = Find<TextBox>("Text1");
  HScrollBar& HScroll1 = Find<HScrollBar>("HScroll1");
  VScrollBar& VScroll1 = Find<VScrollBar>("VScroll1");
};

}  // namespace kelvane
