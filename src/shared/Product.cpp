#include "shared/Product.h"

// Registers the icons of this static library. The macro must be used outside of any namespace.
static void InitIcons() { Q_INIT_RESOURCE(icons); }

namespace kelvane {

using namespace Qt::StringLiterals;

QIcon ProductIcon() {
  InitIcons();
  QIcon icon;
  for (const int size : {16, 32, 48, 128}) icon.addFile(u":/icons/kelvane-%1.png"_s.arg(size));
  return icon;
}

QUrl UpdatesPage() { return QUrl(QStringLiteral(KELVANE_HOME_PAGE "/updates")); }
QUrl DonationPage() { return QUrl(QStringLiteral(KELVANE_HOME_PAGE "/donate")); }

}  // namespace kelvane
