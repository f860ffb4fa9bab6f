#include "platform/NameFilters.h"

namespace kelvane {

// The toolkit takes the pattern from the last parentheses, and is told not to show these.
QStringList NameFilters(const QString& filter) {
  if (filter.isEmpty()) return {};
  const QStringList parts = filter.split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype description = 0; description < parts.size(); description += 2) {
    QString pattern = parts[description + 1 < parts.size() ? description + 1 : description];
    if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
    filters << QStringLiteral("%1 (%2)").arg(parts[description], pattern);
  }
  return filters;
}

}  // namespace kelvane
