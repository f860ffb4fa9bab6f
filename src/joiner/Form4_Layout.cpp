// Start-up, the time ruler, the layout and the chart's scrolling. All lengths are in pixels.
#include "joiner/Form4.h"
#include "lookandfeel/FlatListViewHeaders.h"
#include "lookandfeel/ListBoxScrollBar.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr float kChartWidth = 7000;
constexpr float kChartHeight = 1000;
constexpr float kRulerFontSize = 8;  // points

}  // namespace

void Form4::Form_Load() {
  TranscodeLock = false;
  setWindowIcon(icon_);
  InitGUI();
}

void Form4::InitGUI() {
  PictureBox& stripTemplate = Picture2(0);
  stripTemplate.setTop(1);
  stripTemplate.setLeft(1);
  stripTemplate.setWidth(1);
  stripTemplate.setVisible(false);

  const float ruleY = stripTemplate.Height() + stripTemplate.Top() + 1;
  Line1(0).SetEnds(0, ruleY, Picture1(Chart).ScaleWidth(), ruleY);
  Shape1.setVisible(false);

  HScroll1.setLargeChange(100);
  HScroll1.setSmallChange(2);
  HScroll1.setMin(0);
  HScroll1.setTabStop(false);

  for (const char* heading : {"Index", "Title", "Duration (seconds)"}) {
    LastColumn = ListView1.ColumnHeaders.Add(QLatin1String(heading));
  }

  Picture5.setLeft(0);
  Picture5.setTop(0);
  Picture5.setWidth(kChartWidth);
  DrawRuler();

  PictureBox& chart = Picture1(Chart);
  chart.setLeft(0);
  chart.setTop(Picture5.Top() + Picture5.Height());
  chart.setHeight(kChartHeight);
  chart.setWidth(Picture5.Width());

  ToggleFlatHeaders(ListView1);
  GiveHorizontalExtent(List1);
}

// A pixel is ten seconds. A tick whose position, or a label whose number of seconds, doesn't fit
// into 16 bits isn't drawn: the ticks reach the ruler's end, but the last label is that of 32,000
// seconds.
void Form4::DrawRuler() {
  const float base = Picture5.ScaleHeight() / 2 + 8;
  Picture5.DrawLine(0, base, Picture5.ScaleWidth(), base, kLight);
  Picture5.SetPrintFont(u"Arial"_s, kRulerFontSize);
  const std::int16_t last = ToInteger16(Picture5.ScaleWidth()).value_or(0);
  float printX = 0;
  for (int k = 0; k <= last; ++k) {
    if (const auto x = ToInteger16(k * 10)) Picture5.DrawLine(*x, 0, *x, 3, kLight);
    if (const auto x = ToInteger16(k * 50)) Picture5.DrawLine(*x, 0, *x, 6, kWhite);
    if (const auto x = ToInteger16(k * 100)) printX = *x;
    if (const auto seconds = ToInteger16(k * 1000)) {
      Picture5.PrintAt(printX, 6, FormatTimeText(*seconds));
    }
  }
}

// The right column keeps its width. The list of paths in it begins at half the window's height and
// ends above the command bar. The chart takes what is left.
void Form4::Form_Resize() {
  const float W = ScaleWidth();
  const float H = ScaleHeight();
  PictureBox& frame = Picture1(ChartFrame);
  PictureBox& viewport = Picture1(ChartViewport);

  Picture3.setTop(H - Picture3.Height() - 20);
  Picture3.setWidth(W - 20 - Picture3.Left());

  frame.setHeight(Picture3.Top() - 10 - frame.Top());

  List1.setTop(H / 2);
  List1.setHeight(Picture3.Top() - 5 - List1.Top());
  List1.setLeft(W - 20 - List1.Width());

  ListView1.setLeft(W - 20 - ListView1.Width());
  ListView1.setHeight(List1.Top() - ListView1.Top() - 10);

  frame.setWidth(ListView1.Left() - 10 - frame.Left());

  VScroll1.setTop(0);
  VScroll1.setHeight(frame.Height() - HScroll1.Height());
  VScroll1.setLeft(frame.ScaleWidth() - VScroll1.Width());

  HScroll1.setLeft(0);
  HScroll1.setTop(frame.ScaleHeight() - HScroll1.Height());
  HScroll1.setWidth(frame.ScaleWidth() - VScroll1.Width());

  viewport.setTop(0);
  viewport.setLeft(0);
  viewport.setWidth(VScroll1.Left() - 1);
  viewport.setHeight(HScroll1.Top() - 1);

  Shape2.setLeft(20);
  Shape2.setTop(30);
  Shape2.setHeight(H - 45);
  Shape2.setWidth(W - 30);

  Line2.SetEnds(ListView1.Left() - 5, Shape2.Top(), ListView1.Left() - 5, Picture3.Top() - 1);
  Line3.SetEnds(Shape2.Left(), Picture3.Top() - 1, Shape2.Left() + Shape2.Width(),
                Picture3.Top() - 1);

  Label3(ProcessLine).setLeft(Picture3.ScaleWidth() - Label3(ProcessLine).Width() - 10);
}

// The range is the width of the whole chart, so the chart can be scrolled out of view.
void Form4::HScroll1_Change() {
  PictureBox& chart = Picture1(Chart);
  if (const auto width = ToInteger16(chart.Width())) HScroll1.setMax(*width);
  chart.setLeft(static_cast<float>(-HScroll1.Value()));
  Picture5.setLeft(chart.Left());
}

}  // namespace kelvane
