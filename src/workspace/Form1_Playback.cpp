// The player's read-outs, and the two sliders for its sound, which nothing shows.
#include "shared/TextHelpers.h"
#include "workspace/Form1.h"

namespace kelvane {

void Form1::Timer3_Timer() {
  const double duration = wmp.currentMediaDuration().value_or(0);
  const QString position = wmp.controls.currentPositionString();
  Label13.setCaption(position.isEmpty() ? QStringLiteral("00:00") : position);
  Label12.setCaption(FormatTimeOfDay(duration));
}

void Form1::Slider2_Change() {
  wmp.settings.setVolume(Slider2.Value());
  Label8.setCaption(QStringLiteral("Audio Volume %1%").arg(Slider2.Value()));
}

// The minus signs stand as drawn.
void Form1::Slider3_Change() {
  wmp.settings.setBalance(Slider3.Value());
  const QString value = QString::number(Slider3.Value());
  const QString part = value.startsWith(QLatin1Char('-'))
                           ? QStringLiteral("100% Left : %1% Right").arg(value)
                           : QStringLiteral("-%1% Left : 100% Right").arg(value);
  Label9.setCaption(QStringLiteral("Audio Balance ") + part);
}

}  // namespace kelvane
