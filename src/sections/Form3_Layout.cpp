// Start-up, the frame, clearing the highlights, and choosing a video.
#include "media/Module1.h"
#include "platform/MsgBox.h"
#include "sections/Form3.h"
#include "sections/Module3.h"
#include "sections/Module5.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

void Form3::Form_Load() {
  constexpr float kWindowWidth = 14610;   // twips
  constexpr float kWindowHeight = 11955;  // twips
  constexpr std::int16_t kPageStep = 50;
  constexpr float kNeedleHeight = 15;
  constexpr float kNeedleTop = 20;
  setWindowIcon(icon_);
  setWidth(kWindowWidth);
  setHeight(kWindowHeight);
  Line7.setX1(0);
  Line7.setY1(SpanLineY());
  Line7.setY2(SpanLineY());
  Shape1.setVisible(false);
  HScroll1.setLargeChange(kPageStep);
  Picture6.setTop(2);
  Picture6.setHeight(Picture5.Height() - 6);
  for (PictureBox* needle : Picture4) {
    needle->setHeight(kNeedleHeight);
    needle->setTop(kNeedleTop);
  }
  for (const Label* thumb : Label1) Shape2(thumb->Index()).Outline(*thumb, 1);
  ResetTimeLinePosition(*this);
  DrawOptionScales(*this);
  for (ProgressBar* bar : pbar) bar->SetColours(kGrey, kProgressBack);
  if (const std::optional<float> seconds = SingleFromText(Label16(2).Caption())) {
    Picture3(TimeLineStrip).setWidth(*seconds);
    Line7.setX2(*seconds);
  }
  DrawTimeLabels(*this);
  DrawSpanLine();
}

void Form3::Form_Resize() {
  const float S = ScaleWidth();
  const float H = ScaleHeight();
  Line4.SetEnds(2, 4, 2, H - 4);
  Line5.SetEnds(2, H - 4, S - 4, H - 4);
  Line6.SetEnds(S - 4, 4, S - 4, H - 4);
}

// Of the fourteen names and read-outs in Label2 only the first seven lose their highlight.
void Form3::Form_MouseMove(const MouseEvent& /*event*/) {
  Shape1.setVisible(false);
  for (int i = StepSize; i <= UnSharpLY; ++i) {
    Label1(i).setBackColor(kCanvasGrey);
    Label3(i).setForeColor(kLight);
    Label2(i).setForeColor(kLight);
  }
  ClearArrowHighlights();
}

void Form3::Label6_MouseUp(const MouseEvent& event) {
  if (event.Index != 0) return;
  cdialog.DialogTitle = u"Extract Section From Video"_s;
  cdialog.FileName.clear();
  cdialog.Filter = kVideoFilter;
  cdialog.FilterIndex = 1;
  cdialog.ShowOpen();
  if (cdialog.FileName.isEmpty()) return;
  Text1.setText(Trim(cdialog.FileName));
  SectionSourceShortPath =
      FromNarrow(GetShortFileName(ToNarrow(cdialog.FileName), ShowErrorMessage));
}

}  // namespace kelvane
