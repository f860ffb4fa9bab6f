#include "desktop/driver/Picture.h"

#include <QPixmap>

#include "platform/Container.h"
#include "platform/Label.h"

namespace kelvane::desktop {

QImage CaptionPicture(const QString& caption, QSize size, QRgb background, Justify justify) {
  constexpr int kFontPixels = 11;
  QFont font(QStringLiteral("Arial"));
  font.setPixelSize(kFontPixels);

  Container behind(nullptr, ScaleMode::kPixels);
  behind.setBackColor(background);
  behind.setFont(font);
  behind.resize(size);
  Label label(&behind, QStringLiteral("Caption"));
  label.setForeColor(kText);
  label.setAlignment(justify == Justify::kCentre ? Qt::AlignHCenter : Qt::AlignLeft);
  label.setWidth(static_cast<float>(size.width()));
  label.setHeight(static_cast<float>(size.height()));
  label.setCaption(caption);
  return behind.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

bool AllOf(const QImage& picture, const QRect& part, QRgb color) {
  return CountOf(picture, part, color) == part.width() * part.height();
}

int CountOf(const QImage& picture, const QRect& part, QRgb color) {
  int count = 0;
  const QRect inside = part & picture.rect();
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x) {
      if (picture.pixel(x, y) == color) ++count;
    }
  }
  return count;
}

QRect Extent(const QImage& picture, const QRect& part, QRgb color) {
  QRect extent;
  const QRect inside = part & picture.rect();
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x) {
      if (picture.pixel(x, y) == color) extent |= QRect(x, y, 1, 1);
    }
  }
  return extent;
}

}  // namespace kelvane::desktop
