// The canvas takes the size of the video, scrolls in the viewport, and shows the pointer's
// position.
#include "shared/TextHelpers.h"
#include "workspace/Form1.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// A scroll bar's Max is the canvas's size divided by the first number. A step of its value moves
// the canvas by the second or third number of pixels. The numbers don't agree.
constexpr float kPixelsPerRangeUnit = 15;
constexpr int kPixelsPerHorizontalStep = 6;
constexpr int kPixelsPerVerticalStep = 10;

void SetRange(ScrollBar& bar, float canvasSize) {
  if (const auto max = ToInteger16(canvasSize / kPixelsPerRangeUnit)) bar.setMax(*max);
}

}  // namespace

void Form1::Label1_Change(int Index) {
  PictureBox& holder = Picture1(HolderBox);
  if (Index == SourceWidth) {
    if (const auto width = SingleFromText(Label1(SourceWidth).Caption())) holder.setWidth(*width);
    wmp.setWidth(holder.Width());
    Picture1(CanvasBox).setWidth(holder.Width());
  } else if (Index == SourceHeight) {
    if (const auto height = SingleFromText(Label1(SourceHeight).Caption())) {
      holder.setHeight(*height);
    }
    wmp.setHeight(holder.Height());
    Picture1(CanvasBox).setHeight(holder.Height());
  }
}

void Form1::Picture1_Resize(int Index) {
  if (Index != CanvasBox) return;
  ResetBars();
  SetRange(HScroll1, Picture1(CanvasBox).Width());
  SetRange(VScroll1, Picture1(CanvasBox).Height());
}

// A position that doesn't fit into 16 bits leaves the canvas where it is.
void Form1::HScroll1_Change() {
  if (const auto left = ToInteger16(-HScroll1.Value() * kPixelsPerHorizontalStep)) {
    Picture1(CanvasBox).setLeft(*left);
  }
}

void Form1::VScroll1_Change() {
  if (const auto top = ToInteger16(-VScroll1.Value() * kPixelsPerVerticalStep)) {
    Picture1(CanvasBox).setTop(*top);
  }
}

// The tip adds the first four digits of the vertical scrolling to the position, and nothing of the
// horizontal. If the canvas isn't
// scrolled vertically, the tip stays as it was.
void Form1::ShowPosition(const MouseEvent& event) {
  constexpr qsizetype kAfterSign = 1;
  constexpr qsizetype kDigits = 4;
  const QString extra = FormatSingle(Picture1(CanvasBox).Top()).mid(kAfterSign, kDigits);
  const std::optional<float> scrolled = SingleFromText(extra);
  if (!scrolled) return;
  Picture1(event.Index)
      .setToolTipText(u"Horizontal Position: %1 pixels Vertical Position: %2 pixels"_s.arg(
          FormatSingle(event.X), FormatSingle(event.Y + *scrolled)));
}

}  // namespace kelvane
