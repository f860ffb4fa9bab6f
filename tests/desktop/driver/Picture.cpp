#include "desktop/driver/Picture.h"

#include <QFont>
#include <QPixmap>
#include <algorithm>
#include <cstdlib>

#include "platform/ContentArea.h"
#include "platform/Label.h"

namespace kelvane::desktop {
namespace {

using testing::Ink;

// The picture of a label of this size with that caption.
QImage CaptionPicture(const QString& caption, QSize size, QRgb background, Justify justify) {
  constexpr int kFontPixels = 11;
  QFont font("Arial");
  font.setPixelSize(kFontPixels);

  ContentArea behind(nullptr, ScaleMode::kPixels);
  behind.setBackColor(background);
  behind.setFont(font);
  behind.resize(size);
  Label label(behind, "Caption");
  label.setForeColor(kText);
  label.setAlignment(justify == Justify::kCentre ? Qt::AlignHCenter : Qt::AlignLeft);
  label.setWidth(static_cast<float>(size.width()));
  label.setHeight(static_cast<float>(size.height()));
  label.setCaption(caption);
  return behind.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace

bool ShowsCaption(const QImage& label, const QString& caption, QRgb background, Justify justify) {
  // Enough to notice a further character.
  constexpr int kMargin = 4;
  const QImage expected = CaptionPicture(caption, label.size(), background, justify);
  const int end = std::min(Ink(expected, background).right() + kMargin, label.width());
  const QRect compared(0, 0, end, label.height());
  return label.copy(compared) == expected.copy(compared);
}

bool ShowsText(const QImage& picture, const QString& text, QRgb background) {
  const QImage expected = CaptionPicture(text, picture.size(), background, Justify::kLeft);
  return picture.copy(Ink(picture, background)) == expected.copy(Ink(expected, background));
}

bool ShowsChequers(const QImage& picture) {
  constexpr int kRounding = 8;
  constexpr int kWhite = 255;
  if (picture.isNull()) return false;
  const int corner = qGray(picture.pixel(0, 0)) > kWhite / 2 ? 1 : 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int expected = (x + y + corner) % 2 * kWhite;
      if (std::abs(qGray(picture.pixel(x, y)) - expected) > kRounding) return false;
    }
  }
  return true;
}

}  // namespace kelvane::desktop
