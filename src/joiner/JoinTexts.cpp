#include "joiner/JoinTexts.h"

#include <QStringList>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

constexpr QLatin1String kLineBreak("\r\n");

}  // namespace

QString FolderOf(const QString& path) { return path.left(path.lastIndexOf(QLatin1Char('/')) + 1); }

QString IntermediateName(int number) {
  return QStringLiteral("intermediate%1.ts").arg(FormatDigits(number, 2));
}

QString ListFileLine(const QString& item) {
  return QStringLiteral("file '") + Trim(item) + QLatin1Char('\'') + kLineBreak;
}

QString SavedListLine(const QString& item) { return item + kLineBreak; }

QString ConcatListText(int sections) {
  QStringList names;
  for (int number = 0; number < sections; ++number) names << IntermediateName(number);
  return QStringLiteral("concat:") + names.join(QLatin1Char('|'));
}

}  // namespace kelvane
