#include "joiner/JoinTexts.h"

#include <QStringList>

#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String kLineBreak("\r\n");

}  // namespace

QString FolderOf(const QString& path) { return path.left(path.lastIndexOf(u'/') + 1); }

QString IntermediateName(int number) { return u"intermediate%1.ts"_s.arg(FormatDigits(number, 2)); }

QString ListFileLine(const QString& item) { return u"file '"_s + Trim(item) + u'\'' + kLineBreak; }

QString SavedListLine(const QString& item) { return item + kLineBreak; }

QString ConcatListText(int sections) {
  QStringList names;
  for (int number = 0; number < sections; ++number) names << IntermediateName(number);
  return u"concat:"_s + names.join(u'|');
}

}  // namespace kelvane
