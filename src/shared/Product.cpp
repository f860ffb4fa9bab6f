#include "shared/Product.h"

// Resources of a static library are taken in by name.
static void TakeInIcons() { Q_INIT_RESOURCE(icons); }

namespace kelvane {

using namespace Qt::StringLiterals;

QIcon ProductIcon() {
  TakeInIcons();
  QIcon icon;
  for (const int size : {16, 32, 48, 128}) icon.addFile(u":/icons/kelvane-%1.png"_s.arg(size));
  return icon;
}

}  // namespace kelvane
