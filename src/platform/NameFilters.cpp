#include "platform/NameFilters.h"

namespace kelvane {

using namespace Qt::StringLiterals;

// Qt takes the pattern from the last parentheses, which CommonDialog hides.
QStringList NameFilters(const QString& filter) {
  if (filter.isEmpty()) return {};
  const QStringList parts = filter.split(u'|');
  QStringList filters;
  for (qsizetype description = 0; description < parts.size(); description += 2) {
    QString pattern = parts[description + 1 < parts.size() ? description + 1 : description];
    if (pattern == "*.*"_L1) pattern = u"*"_s;
    filters << u"%1 (%2)"_s.arg(parts[description], pattern);
  }
  return filters;
}

}  // namespace kelvane
