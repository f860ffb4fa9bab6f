// The region is measured from the marker bars at each tick, and never computed from anything else.
#include "shared/SharedValues.h"
#include "shared/TextHelpers.h"
#include "workspace/Form1.h"

namespace kelvane {

void Form1::Timer2_Timer() {
  Label1(RegionLeft).setCaption(FormatGrouped(Picture2(LeftBar).Left()));
  Label1(RegionTop).setCaption(FormatGrouped(Picture2(TopBar).Top()));
  const auto width = ToInteger32(Picture2(RightBar).Left() - Picture2(LeftBar).Left());
  const auto height = ToInteger32(Picture2(BaseBar).Top() - Picture2(TopBar).Top());
  Label1(RegionWidth).setCaption(FormatGrouped(width.value_or(0)));
  Label1(RegionHeight).setCaption(FormatGrouped(height.value_or(0)));
  Label1(RegionRight).setCaption(FormatGrouped(Picture2(RightBar).Left()));
  Label1(RegionBase).setCaption(FormatGrouped(Picture2(BaseBar).Top()));
  CropWidth = width.value_or(CropWidth);
  CropHeight = height.value_or(CropHeight);
  CropLeft = ToInteger32(Picture2(LeftBar).Left()).value_or(CropLeft);
  CropTop = ToInteger32(Picture2(TopBar).Top()).value_or(CropTop);
}

void Form1::ResetBars() {
  const PictureBox& canvas = Picture1(CanvasBox);
  PictureBox& left = Picture2(LeftBar);
  left.setLeft(0);
  left.setTop(0);
  left.setHeight(canvas.Height());
  PictureBox& top = Picture2(TopBar);
  top.setLeft(0);
  top.setTop(0);
  top.setWidth(canvas.Width());
  PictureBox& right = Picture2(RightBar);
  right.setTop(0);
  right.setHeight(canvas.Height());
  right.setLeft(canvas.Width() - right.Width());
  PictureBox& base = Picture2(BaseBar);
  base.setTop(canvas.Height() - base.Height());
  base.setLeft(0);
  base.setWidth(canvas.Width());
}

}  // namespace kelvane
