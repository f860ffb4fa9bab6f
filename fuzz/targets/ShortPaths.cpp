// Files of any name get paths that can stand bare on a command line and name the same files.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "Input.h"
#include "Target.h"
#include "media/CommandLines.h"
#include "media/Module1.h"
#include "shared/TextHelpers.h"

namespace kelvane::fuzz {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFiles = 4;
constexpr std::size_t kLongestPath = 254;
constexpr std::size_t kLongestName = 255;

// Gone when the program ends.
class Folder {
 public:
  explicit Folder(const char* pattern) {
    std::string name = pattern;
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = name;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::string ShortPath(const std::string& path) {
  static const Folder links("/tmp/fuzz-links-XXXXXX");
  const ShowError fail = [](const std::string& text, const std::string& /*title*/) {
    throw Disagreement("a message: " + text);
  };
  return GetShortFileName(path, fail, links.path());
}

// Whether the path comes whole through a text box of Qt.
bool IsText(const std::string& path) { return QString::fromUtf8(path).toStdString() == path; }

bool IsBare(const std::string& path) {
  return path.size() <= kLongestPath && std::none_of(path.begin(), path.end(), [](char c) {
           return (c >= 0 && c <= 0x20) || c == 0x7F || c == '"' || c == '%';
         });
}

// Behind the last point of the name, unless that is its first character; up to ten plain letters
// and digits.
std::string Extension(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  const std::size_t point = name.rfind('.');
  if (point == std::string::npos || point == 0) return {};
  const std::string extension = name.substr(point);
  const bool plain = std::all_of(extension.begin() + 1, extension.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  });
  return plain && extension.size() >= 2 && extension.size() <= 11 ? extension : std::string();
}

bool SameFile(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

// A file in the folder, or in one of its own if the name has a slash; empty where the system has no
// such name.
std::string MakeFile(const std::string& folder, std::string name) {
  std::replace(name.begin(), name.end(), '\0', '0');
  const std::size_t slash = name.find('/');
  std::replace(name.begin() + static_cast<std::ptrdiff_t>(std::min(slash + 1, name.size())),
               name.end(), '/', '_');
  fs::path path = folder;
  if (slash != std::string::npos && slash > 0 && slash <= kLongestName) {
    path /= "in " + name.substr(0, std::min<std::size_t>(slash, 200));
    fs::create_directory(path);
    name.erase(0, slash + 1);
  }
  std::erase(name, '/');
  if (name.empty() || name == "." || name == ".." || name.size() > kLongestName) return {};
  path /= name;
  std::ofstream(path) << name;
  return path;
}

void Check(const std::string& path) {
  const std::string shortPath = ShortPath(path);
  const std::string what = Readable(shortPath) + " for " + Readable(path);
  Agree(!shortPath.empty() && IsBare(shortPath) && IsText(shortPath), "can't stand bare: " + what);
  Agree(SameFile(shortPath, path), "names another file: " + what);
  AgreeOn("short path again for " + Readable(path), ShortPath(path), shortPath);
  AgreeOn("through a text box", ToNarrow(FromNarrow(shortPath)), shortPath);
  AgreeOn("arguments of a line with " + what,
          SplitCommandLine("tool -i " + shortPath + " out").size(), 4U);
  AgreeOn("argument", SplitCommandLine("tool -i " + shortPath + " out")[2], shortPath);
  Agree((path == shortPath) == (IsBare(path) && IsText(path)), "its own short path: " + what);
  if (path == shortPath) return;
  AgreeOn("extension of " + what, shortPath.substr(std::min(shortPath.find('.'), shortPath.size())),
          Extension(path));
}

void Run(std::string_view bytes) {
  static const Folder files("/tmp/fuzz-files-XXXXXX");
  Input input(bytes);
  std::map<std::string, std::string> pathOf;  // by its short path
  std::vector<std::string> paths;
  while (!input.AtEnd() && paths.size() < kMostFiles) {
    const std::size_t length = input.Byte();
    const std::string path = MakeFile(files.path(), std::string(input.Take(length)));
    if (!path.empty() && fs::exists(path)) paths.push_back(path);
  }
  for (const std::string& path : paths) {
    Check(path);
    const auto& [taken, isNew] = pathOf.emplace(ShortPath(path), path);
    AgreeOn("file of a short path", taken->second, path);
  }
  for (const auto& entry : fs::directory_iterator(files.path())) fs::remove_all(entry.path());
  for (const std::string& path : paths)
    AgreeOn("short path of nothing", ShortPath(path), std::string());
}

}  // namespace

const Target kShortPaths = {"ShortPaths", Run};

}  // namespace kelvane::fuzz
