#include "media/OutputRemark.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "media/CommandLines.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

bool CanBeUsed(const fs::path& file, int mode) { return ::access(file.c_str(), mode) == 0; }

// Returns what a tool takes for the extension: all that follows the last point, even in ".mp4",
// which has no extension for the standard library.
std::string ExtensionOf(const std::string& file) {
  const std::string name = fs::path(file).filename();
  const std::size_t point = name.rfind('.');
  return point == std::string::npos ? "" : name.substr(point + 1);
}

std::string LossRemark(const std::string& path, const std::vector<std::string>& arguments) {
  const std::string& file = arguments.front();
  if (file == path) return {};
  const bool blankEnds = arguments.size() > 1 || path.find('"') == std::string::npos;
  const std::string remark =
      (blankEnds ? "The blank ends the name: " : "The quotes vanish: ") + file + '.';
  return arguments.size() > 1 ? remark + " The rest is taken for further files." : remark;
}

std::string RemarkOn(const std::string& path, const std::string& replaced, bool canBeReplaced) {
  std::error_code ignored;
  if (!fs::exists(path, ignored)) return FolderRemark(path);
  const bool isReplaced = !replaced.empty() && !fs::is_directory(path, ignored) && canBeReplaced;
  return isReplaced ? replaced : "This file exists: it will be kept, and nothing written.";
}

void Append(std::string& remark, const std::string& sentence) {
  if (!remark.empty() && !sentence.empty()) remark += ' ';
  remark += sentence;
}

}  // namespace

std::string OutputFile(const std::string& path) {
  const std::vector<std::string> arguments = SplitCommandLine(path);
  return arguments.empty() ? std::string() : arguments.front();
}

std::string FolderRemark(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path() / "";
  return CanBeUsed(folder, W_OK | X_OK) ? "" : "No file can be written in this folder.";
}

bool IsPlaylist(const std::string& path) {
  std::string extension = ExtensionOf(path);
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return extension == "m3u8" || extension == "mpd";
}

std::string WriteRemark(const std::string& path, const std::string& replaced) {
  return RemarkOn(path, replaced, CanBeUsed(path, W_OK));
}

std::string OutputRemark(const std::string& path, const std::string& replaced) {
  const std::vector<std::string> arguments = SplitCommandLine(path);
  if (arguments.empty()) return {};
  const std::string& file = arguments.front();
  const bool hasFormat = !ExtensionOf(file).empty();
  // A tool renames a finished playlist to its name, so the folder must be writable, not the file.
  const bool canBeReplaced = IsPlaylist(file) ? FolderRemark(file).empty() : CanBeUsed(file, W_OK);
  const std::string written = RemarkOn(file, hasFormat ? replaced : std::string(), canBeReplaced);
  const bool costsTheFile = !written.empty() && written == replaced;
  std::string remark = costsTheFile ? written : std::string();
  Append(remark, LossRemark(path, arguments));
  if (!costsTheFile) Append(remark, written);
  if (!hasFormat) Append(remark, "Without an extension the tool knows no format.");
  return remark;
}

}  // namespace kelvane
