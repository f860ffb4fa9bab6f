#include "platform/Fonts.h"

#include <QFontMetricsF>

namespace kelvane {

QFont FittingFont(const QFont& font, const QString& text, int width) {
  constexpr int kNatural = 100;
  constexpr int kTightest = 85;
  QFont fitting = font;
  for (int stretch = kNatural - 1;
       stretch >= kTightest && QFontMetricsF(fitting).horizontalAdvance(text) > width; --stretch) {
    fitting.setStretch(stretch);
  }
  return fitting;
}

}  // namespace kelvane
