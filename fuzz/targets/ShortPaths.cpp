// A file with any name gets a short path that is safe on a command line and leads to the same file.
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "Input.h"
#include "Target.h"
#include "media/CommandLines.h"
#include "media/Module1.h"

namespace kelvane::fuzz {
namespace {

namespace fs = std::filesystem;

std::string ShortPath(const std::string& path) {
  static const QTemporaryDir links(QStringLiteral("/tmp/fuzz-links-XXXXXX"));
  const ShowError fail = [](const std::string& text, const std::string& /*title*/) {
    throw Disagreement("a message: " + text);
  };
  return GetShortFileName(path, fail, links.path().toStdString());
}

bool IsUtf8(const std::string& path) { return QString::fromUtf8(path).toStdString() == path; }

bool IsSafe(const std::string& path) {
  constexpr std::size_t kLongestPath = 254;
  return path.size() <= kLongestPath && IsUtf8(path) &&
         std::none_of(path.begin(), path.end(), [](char c) {
           return (c >= 0 && c <= 0x20) || c == 0x7F || c == '"' || c == '%';
         });
}

// The last point of the name and the one to ten letters and digits after it; empty if the name
// doesn't end so, or begins with that point.
std::string Extension(const std::string& path) {
  static const QRegularExpression kPattern(QStringLiteral("(?s)[^/](\\.[0-9A-Za-z]{1,10})\\z"));
  return kPattern.match(QString::fromLatin1(path)).captured(1).toStdString();
}

void Check(const std::string& path) {
  const std::string shortPath = ShortPath(path);
  const std::string what = Readable(shortPath) + " for " + Readable(path);
  Agree(!shortPath.empty() && IsSafe(shortPath), "not safe: " + what);
  Agree(fs::equivalent(shortPath, path), "names another file: " + what);
  AgreeOn("short path again for " + Readable(path), ShortPath(path), shortPath);
  AgreeOn("through a text box", ToNarrow(FromNarrow(shortPath)), shortPath);
  const std::vector<std::string> arguments = SplitCommandLine("tool -i " + shortPath + " out");
  Agree(arguments.size() == 4 && arguments[2] == shortPath, "no single argument: " + what);
  AgreeOn("whether it is its own short path: " + what, path == shortPath, IsSafe(path));
  if (path == shortPath) return;
  constexpr qsizetype kMostCharacters = 40;
  const std::string name = fs::path(shortPath).filename();
  Agree(QString::fromStdString(name).toUcs4().size() <= kMostCharacters, "too long: " + what);
  Agree(name.ends_with(Extension(path)), "another extension: " + what);
}

void Run(std::string_view bytes) {
  constexpr std::size_t kMostFiles = 4;
  static const QTemporaryDir files(QStringLiteral("/tmp/fuzz-files-XXXXXX"));
  std::vector<std::string> paths;
  for (Input input(bytes); !input.AtEnd() && paths.size() < kMostFiles;) {
    const std::size_t length = input.Byte();
    std::string name(input.Take(length));
    std::replace(name.begin(), name.end(), '\0', '0');
    std::replace(name.begin(), name.end(), '/', '_');
    const std::string path = files.path().toStdString() + '/' + name;
    if (std::ofstream(path).is_open()) paths.push_back(path);
  }
  std::map<std::string, std::string> pathOf;  // by its short path
  for (const std::string& path : paths) {
    Check(path);
    AgreeOn("file of a short path", pathOf.emplace(ShortPath(path), path).first->second, path);
  }
  for (const std::string& path : paths) fs::remove(path);
  for (const std::string& path : paths) {
    AgreeOn("short path of a missing file", ShortPath(path), std::string());
  }
}

}  // namespace

const Target kShortPaths = {"ShortPaths", Run};

}  // namespace kelvane::fuzz
