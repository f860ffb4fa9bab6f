#include "media/PrivateFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace kelvane {
namespace {

constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr std::string_view kRandomPart = "XXXXXX";
constexpr const char* kListFile = "files.txt";
constexpr std::string_view kWorkFileBeginning = "work-";

std::string NameBeginning() { return "kelvane-" + std::to_string(::geteuid()) + "-"; }

bool IsFolderName(std::string_view name) {
  const std::string beginning = NameBeginning();
  return name.starts_with(beginning) && name.size() == beginning.size() + kRandomPart.size();
}

std::system_error SystemError(int number) { return {number, std::generic_category()}; }

std::vector<std::string> NamesIn(const Descriptor& folder) {
  std::vector<std::string> names;
  std::error_code error;
  const std::filesystem::path path = "/proc/self/fd/" + std::to_string(folder.number());
  for (std::filesystem::directory_iterator entry(path, error), end; entry != end;
       entry.increment(error)) {
    names.push_back(entry->path().filename());
  }
  return names;
}

// Removes the entry if it is of that type, such as S_IFLNK. Ignores errors.
void RemoveIf(mode_t type, const Descriptor& folder, const std::string& name) {
  struct stat status {};
  if (::fstatat(folder.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
      (status.st_mode & S_IFMT) == type) {
    ::unlinkat(folder.number(), name.c_str(), 0);
  }
}

// Returns whether `path` is the open folder and not a link to it.
bool IsPathOf(const std::string& path, const Descriptor& folder) {
  struct stat named {};
  struct stat opened {};
  return folder && ::lstat(path.c_str(), &named) == 0 && ::fstat(folder.number(), &opened) == 0 &&
         named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// Makes a folder, at `formerPath` if that is given and free, or in `parent`. Returns its path.
std::string MakeFolder(const std::string& parent, const std::string& formerPath) {
  if (!formerPath.empty() && ::mkdir(formerPath.c_str(), S_IRWXU) == 0) return formerPath;
  std::string path = parent + '/' + NameBeginning() + std::string(kRandomPart);
  if (::mkdtemp(path.data()) == nullptr) throw SystemError(errno);
  return path;
}

// Opens and locks a new folder. Returns no descriptor if another program's ClearLeftBehind was
// faster.
Descriptor OpenLocked(const std::string& path) {
  Descriptor folder(::open(path.c_str(), kOpenFolder));
  if (!folder && errno == ENOENT) return {};
  if (!folder || ::flock(folder.number(), LOCK_EX | LOCK_NB) != 0) {
    const int number = errno;
    if (number == EWOULDBLOCK) return {};
    ::rmdir(path.c_str());
    throw SystemError(number);
  }
  return IsPathOf(path, folder) ? std::move(folder) : Descriptor();
}

}  // namespace

PrivateFolder& PrivateFolder::In(const std::string& parent) {
  static std::map<std::string, PrivateFolder> folders;
  return folders.try_emplace(parent, parent).first->second;
}

PrivateFolder::~PrivateFolder() {
  if (owner_ != ::getpid() || !IsPathOf(path_, folder_)) return;
  for (const auto& [target, name] : names_) RemoveIf(S_IFLNK, folder_, name);
  for (const std::string& name : files_) RemoveIf(S_IFREG, folder_, name);
  ::rmdir(path_.c_str());
}

std::string PrivateFolder::LinkTo(const std::string& target,
                                  const std::function<std::string(int number)>& name) {
  if (!IsPathOf(path_, folder_)) Make();
  const auto known = names_.find(target);
  const std::string linkName = known == names_.end() ? FreeName(name) : known->second;
  std::string link = path_ + '/' + linkName;
  std::error_code isNoLink;
  if (std::filesystem::read_symlink(link, isNoLink) != target &&
      ::symlinkat(target.c_str(), folder_.number(), linkName.c_str()) != 0) {
    throw SystemError(errno);
  }
  names_.emplace(target, linkName);
  takenNames_.insert(linkName);
  return link;
}

std::string PrivateFolder::FreeName(const std::function<std::string(int number)>& name) const {
  for (int number = 1;; ++number) {
    std::string free = name(number);
    // A link must not stand where the folder's own files are written.
    if (free.starts_with(kWorkFileBeginning)) free.replace(0, kWorkFileBeginning.size(), "work_");
    if (free != kListFile && !takenNames_.contains(free)) return free;
  }
}

std::string PrivateFolder::ListFile() { return File(kListFile); }

std::string PrivateFolder::WorkFile(const std::string& name) {
  return File(std::string(kWorkFileBeginning) + name);
}

std::string PrivateFolder::File(const std::string& name) {
  if (!IsPathOf(path_, folder_)) Make();
  files_.insert(name);
  return path_ + '/' + name;
}

void PrivateFolder::Make() {
  constexpr int kMaxTries = 100;
  for (int attempt = 0; attempt < kMaxTries; ++attempt) {
    std::string path = MakeFolder(parent_, path_);
    if (Descriptor folder = OpenLocked(path)) {
      path_ = std::move(path);
      folder_ = std::move(folder);
      owner_ = ::getpid();
      return;
    }
  }
  throw SystemError(EWOULDBLOCK);
}

void PrivateFolder::ClearLeftBehind(const std::string& parent) {
  const Descriptor parentFolder(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!parentFolder) return;
  for (const std::string& name : NamesIn(parentFolder)) {
    if (!IsFolderName(name)) continue;
    const Descriptor folder(::openat(parentFolder.number(), name.c_str(), kOpenFolder));
    struct stat status {};
    if (!folder || ::fstat(folder.number(), &status) != 0 || status.st_uid != ::geteuid() ||
        ::flock(folder.number(), LOCK_EX | LOCK_NB) != 0) {
      continue;
    }
    for (const std::string& entry : NamesIn(folder)) {
      RemoveIf(S_IFLNK, folder, entry);
      if (entry == kListFile || entry.starts_with(kWorkFileBeginning)) {
        RemoveIf(S_IFREG, folder, entry);
      }
    }
    ::unlinkat(parentFolder.number(), name.c_str(), AT_REMOVEDIR);
  }
}

}  // namespace kelvane
