// The player's read-outs, and the two hidden sliders for its sound.
#include "shared/TextHelpers.h"
#include "workspace/Form1.h"

namespace kelvane {

using namespace Qt::StringLiterals;

void Form1::Timer3_Timer() {
  const double duration = wmp.currentMediaDuration().value_or(0);
  const QString position = wmp.controls.currentPositionString();
  Label13.setCaption(position.isEmpty() ? u"00:00"_s : position);
  Label12.setCaption(FormatTimeOfDay(duration));
}

void Form1::Slider2_Change() {
  wmp.settings.setVolume(Slider2.Value());
  Label8.setCaption(u"Audio Volume %1%"_s.arg(Slider2.Value()));
}

// The minus signs are as designed.
void Form1::Slider3_Change() {
  wmp.settings.setBalance(Slider3.Value());
  const QString value = QString::number(Slider3.Value());
  const QString part = value.startsWith(u'-') ? u"100% Left : %1% Right"_s.arg(value)
                                              : u"-%1% Left : 100% Right"_s.arg(value);
  Label9.setCaption(u"Audio Balance "_s + part);
}

}  // namespace kelvane
