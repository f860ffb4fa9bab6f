#include "sections/Module5.h"

#include "sections/Form3.h"
#include "shared/Colours.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

void ResetTimeLinePosition(Form3& form) {
  form.Picture3(TimeLineStrip).setLeft(0);
  form.Picture3(TimeLineStrip).setTop(0);
}

void ClearTimeLine(PictureBox& strip) {
  constexpr float kPrintSize = 8;
  constexpr float kBaseLineUp = 15;  // from the lower edge
  strip.Cls();
  strip.SetPrintFont(u"Arial"_s, kPrintSize);
  strip.setForeColor(kLight);
  const float base = strip.ScaleHeight() - kBaseLineUp;
  strip.DrawLine(0, base, strip.ScaleWidth(), base, kGrey);
}

// Makes a pass for each pixel of the time line, not only for each tick that fits on it.
void DrawTimeLabels(Form3& form) {
  constexpr double kSpacings = 75;
  constexpr double kMinorToMajor = 8;
  constexpr float kLabelTop = 7;
  constexpr QRgb kOlive = 0x808000;
  PictureBox& strip = form.Picture3(TimeLineStrip);
  form.Text3.setText(FormatSingle(strip.Width()));
  ClearTimeLine(strip);
  const float W = strip.ScaleWidth();
  const float H = strip.ScaleHeight();
  const double TickStep = LeadingNumber(form.Text4.Text()) / kSpacings;
  for (int i = 0; static_cast<float>(i) <= W; ++i) {
    const auto x = static_cast<float>(i * TickStep);
    const auto m = static_cast<float>(i * (TickStep / kMinorToMajor));
    strip.PrintAt(x, kLabelTop, FormatTimeText(x));
    strip.DrawLine(x, 0, x, 6, kLight);
    strip.DrawLine(m, 0, m, 2, kOlive);
    strip.DrawLine(x, H - 5, x, H, kOlive);
    strip.DrawLine(m, H - 2, m, H, kOlive);
  }
}

}  // namespace kelvane
