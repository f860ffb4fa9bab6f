#include "demo/DemoPart.h"

#include <cstdio>
#include <stdexcept>

#include "support/Pictures.h"

namespace kelvane::desktop {

void DemoPart::Keep(const char* name, const char* what) {
  const QString file = output_.filePath(QLatin1String(name) + QStringLiteral(".png"));
  const QImage picture = screen_.Picture();
  Need(picture.copy(testing::Ink(picture, picture.pixel(0, 0))).save(file),
       "the picture can't be written");
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
