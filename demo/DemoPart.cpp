#include "demo/DemoPart.h"

#include <cstdio>
#include <stdexcept>

#include "desktop/driver/Picture.h"

namespace kelvane::desktop {
namespace {

// Without the bare ground round what is to be seen.
QImage Trimmed(const QImage& picture) {
  const QRgb ground = picture.pixel(0, 0);
  QRect part = picture.rect();
  while (!part.isEmpty() && AllOf(picture, {part.topLeft(), QSize(part.width(), 1)}, ground)) {
    part.setTop(part.top() + 1);
  }
  while (!part.isEmpty() && AllOf(picture, {part.bottomLeft(), QSize(part.width(), 1)}, ground)) {
    part.setBottom(part.bottom() - 1);
  }
  while (!part.isEmpty() && AllOf(picture, {part.topLeft(), QSize(1, part.height())}, ground)) {
    part.setLeft(part.left() + 1);
  }
  while (!part.isEmpty() && AllOf(picture, {part.topRight(), QSize(1, part.height())}, ground)) {
    part.setRight(part.right() - 1);
  }
  return picture.copy(part);
}

}  // namespace

void DemoPart::Keep(const char* name, const char* what) {
  const QString file = output_.filePath(QLatin1String(name) + QStringLiteral(".png"));
  Need(Trimmed(screen_.Picture()).save(file), "the picture can't be written");
  Say(QStringLiteral("%1: %2").arg(file, QLatin1String(what)));
}

void DemoPart::Need(bool holds, const char* complaint) {
  if (holds) return;
  screen_.Picture().save(output_.filePath(QStringLiteral("failed.png")));
  throw std::runtime_error(complaint);
}

void DemoPart::Say(const QString& text) {
  std::printf("demo: %s\n", qUtf8Printable(text));
  std::fflush(stdout);
}

}  // namespace kelvane::desktop
