#include "joiner/JoinTexts.h"

#include <QFileInfo>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "media/OutputRemark.h"
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

namespace {

// Returns the path that the tool reads in a section's line of the list. An apostrophe ends the
// quotes or begins them again. Outside of the quotes a blank ends the path, and a backslash makes
// the next character part of it. The apostrophe with which the line ends is read like the others.
QString ListedPath(const QString& section) {
  QString path;
  bool quoted = true;
  bool escaped = false;
  for (const QChar c : Trim(section) + u'\'') {
    const bool plain = quoted || escaped;
    if (c == u'\r' || c == u'\n' || (!plain && (c == u' ' || c == u'\t'))) break;
    if (c == u'\'' && !escaped) {
      quoted = !quoted;
    } else if (c == u'\\' && !plain) {
      escaped = true;
    } else {
      path += c;
      escaped = false;
    }
  }
  return path;
}

// Returns whether the join gets as far as the new file: the tool opens the first section before the
// new file and, if that fails, leaves the new file alone.
bool ReachesNewFile(const QStringList& sections) {
  const QString first = ListedPath(sections.value(0));
  return first.contains(u'/') && QFileInfo::exists(first);
}

}  // namespace

QString JoinRemark(const QString& path, const QStringList& sections) {
  const std::string narrow = ToNarrow(path);
  if (!ReachesNewFile(sections)) return FromNarrow(OutputRemark(narrow, {}));
  const std::string file = OutputFile(narrow);
  const auto isTheNewFile = [&file](const QString& section) {
    std::error_code ignored;
    // Two paths may lead to one file.
    return std::filesystem::equivalent(file, ToNarrow(Trim(section)), ignored);
  };
  const auto section = std::find_if(sections.begin(), sections.end(), isTheNewFile);
  if (section == sections.end()) return FromNarrow(OutputRemark(narrow, kFileIsReplaced));
  const std::string number = std::to_string(section - sections.begin() + 1);
  return FromNarrow(OutputRemark(
      narrow, "This is section " + number + " of the list: the join would destroy it."));
}

QString SavedListRemark(const QString& path) {
  return FromNarrow(WriteRemark(ToNarrow(path), kFileIsReplaced));
}

}  // namespace kelvane
