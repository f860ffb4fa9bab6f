#include "media/Module1.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "media/PrivateFolder.h"

namespace kelvane {
namespace {

constexpr std::size_t kLongestShortPath = 254;

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

bool IsPlainLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Returns the length of the valid UTF-8 sequence at the start of `text`, which isn't empty; 0 if
// there is none.
std::size_t Utf8SequenceLength(std::string_view text) {
  // The rows leave out overlong forms, surrogates and numbers beyond the last code point.
  struct Utf8Range {
    unsigned char firstFrom, firstTo, secondFrom, secondTo;
    std::size_t length;
  };
  static constexpr std::array<Utf8Range, 9> kUtf8Ranges{{{0x00, 0x7F, 0x00, 0x00, 1},
                                                         {0xC2, 0xDF, 0x80, 0xBF, 2},
                                                         {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                                         {0xE1, 0xEC, 0x80, 0xBF, 3},
                                                         {0xED, 0xED, 0x80, 0x9F, 3},
                                                         {0xEE, 0xEF, 0x80, 0xBF, 3},
                                                         {0xF0, 0xF0, 0x90, 0xBF, 4},
                                                         {0xF1, 0xF3, 0x80, 0xBF, 4},
                                                         {0xF4, 0xF4, 0x80, 0x8F, 4}}};
  const unsigned char first = Byte(text.front());
  const auto* const range =
      std::find_if(kUtf8Ranges.begin(), kUtf8Ranges.end(), [first](const Utf8Range& candidate) {
        return first >= candidate.firstFrom && first <= candidate.firstTo;
      });
  if (range == kUtf8Ranges.end() || text.size() < range->length) return 0;
  const std::string_view rest = text.substr(1, range->length - 1);
  if (rest.empty()) return 1;
  if (Byte(rest.front()) < range->secondFrom || Byte(rest.front()) > range->secondTo) return 0;
  const bool continues = std::all_of(rest.begin(), rest.end(),
                                     [](char c) { return Byte(c) >= 0x80 && Byte(c) <= 0xBF; });
  return continues ? range->length : 0;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = Utf8SequenceLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

// Returns whether `c`, a byte of UTF-8 text, would cut a command line, get lost in a text box or be
// taken for part of a pattern by a tool, as a percent sign is in the names of image sequences.
bool IsUnsafe(char c) {
  constexpr char kDelete = 0x7F;
  return Byte(c) <= Byte(' ') || c == kDelete || c == '"' || c == '%';
}

// Returns whether a tool gets the path as one argument that means this file.
bool CanGoUnquoted(const std::string& path) {
  return path.size() <= kLongestShortPath && IsUtf8(path) &&
         std::none_of(path.begin(), path.end(), IsUnsafe);
}

// Returns the extension if that is a dot and 1 to 10 ASCII letters or digits, an empty text
// otherwise. Tools recognise formats by the extension.
std::string PlainExtension(const std::string& path) {
  constexpr std::size_t kLongest = 10;
  const std::string extension = std::filesystem::path(path).extension();
  const bool plain = extension.size() > 1 && extension.size() <= kLongest + 1 &&
                     std::all_of(extension.begin() + 1, extension.end(), IsPlainLetterOrDigit);
  return plain ? extension : std::string();
}

// Returns a name for the link to `path` that can go unquoted: the last name of the path, with "_"
// for each character that can't, and for each byte that isn't UTF-8. A `number` from 2 on is put
// before the extension. A name that is too long is cut before the number and the extension.
std::string LinkName(const std::string& path, int number) {
  constexpr std::size_t kMostCharacters = 40;
  std::filesystem::path file = path;
  if (!file.has_filename()) file = file.parent_path();
  const std::string extension = PlainExtension(file);
  const std::string ending = (number < 2 ? "" : '_' + std::to_string(number)) + extension;
  const std::string whole = file.filename();
  std::string_view rest = std::string_view(whole).substr(0, whole.size() - extension.size());
  std::string name;
  for (auto characters = ending.size(); !rest.empty() && characters < kMostCharacters;
       ++characters) {
    const std::size_t length = Utf8SequenceLength(rest);
    name += length == 0 || IsUnsafe(rest.front()) ? "_" : rest.substr(0, length);
    rest.remove_prefix(std::max<std::size_t>(length, 1));
  }
  name += ending;
  // "." and ".." are folders.
  if (name.find_first_not_of('.') == std::string::npos) name.back() = '_';
  return name;
}

// Returns the value of an environment variable if it is an absolute path, an empty text otherwise.
std::string FolderIn(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value == '/' ? value : std::string();
}

std::string ErrorText(int number, const std::string& description) {
  return "An error occurred while obtaining the file path.\n\nThe error number was:\t" +
         std::to_string(number) + "\nThe error description:\t" + description;
}

}  // namespace

std::string GetShortFileName(const std::string& Path, const ShowError& showError,
                             const std::string& linksParent) {
  try {
    struct stat status {};
    const bool hasNul = Path.find('\0') != std::string::npos;
    if (hasNul || ::stat(Path.c_str(), &status) != 0) return {};
    std::string path = std::filesystem::absolute(Path);
    if (CanGoUnquoted(path)) return path;
    return PrivateFolder::In(linksParent).LinkTo(path, [&path](int number) {
      return LinkName(path, number);
    });
  } catch (const std::system_error& error) {
    if (showError) showError(ErrorText(error.code().value(), error.code().message()), "Error");
  } catch (const std::exception& error) {
    if (showError) showError(ErrorText(ENOMEM, error.what()), "Error");
  }
  return {};
}

std::string ToolsFolder(const std::string& appPath) {
  const std::string shortPath = GetShortFileName(appPath, {});
  return shortPath.empty() ? appPath : shortPath;
}

std::string PrivateListFile(const std::string& linksParent) {
  try {
    return PrivateFolder::In(linksParent).ListFile();
  } catch (const std::exception&) {
    return {};
  }
}

void ClearShortPathsLeftBehind(const std::string& linksParent) {
  PrivateFolder::ClearLeftBehind(linksParent);
}

std::vector<std::string> WorkFileParents() {
  constexpr const char* kSpecialInFilters = "\\':,;[]";
  std::vector<std::string> parents = {"/var/tmp"};
  std::string cache = FolderIn("XDG_CACHE_HOME");
  const std::string home = FolderIn("HOME");
  if (cache.empty() && !home.empty()) cache = home + "/.cache";
  if (!cache.empty() && CanGoUnquoted(cache) &&
      cache.find_first_of(kSpecialInFilters) == std::string::npos) {
    parents.push_back(cache);
  }
  return parents;
}

std::string PrivateWorkFile(const std::string& name, const std::vector<std::string>& parents) {
  for (const std::string& parent : parents) {
    try {
      ::mkdir(parent.c_str(), S_IRWXU);
      return PrivateFolder::In(parent).WorkFile(name);
    } catch (const std::exception&) {
      continue;
    }
  }
  return {};
}

void ClearWorkFilesLeftBehind(const std::vector<std::string>& parents) {
  for (const std::string& parent : parents) PrivateFolder::ClearLeftBehind(parent);
}

}  // namespace kelvane
