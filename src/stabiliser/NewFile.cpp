#include "stabiliser/NewFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QRandomGenerator>
#include <QString>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <system_error>

#include "media/Module1.h"

namespace kelvane {
namespace {

// The temporary names in use. Files that still have one are removed when the program ends.
class TemporaryNames {
 public:
  ~TemporaryNames() {
    for (const std::string& name : names_) ::unlink(name.c_str());
  }
  void Add(const std::string& name) { names_.insert(name); }
  void Remove(const std::string& name) {
    ::unlink(name.c_str());
    names_.erase(name);
  }

 private:
  std::set<std::string> names_;
};

TemporaryNames& Temporaries() {
  static TemporaryNames names;
  return names;
}

std::system_error CannotWrite(const std::string& path, int number) {
  return {number, std::generic_category(), path + " can't be written"};
}

bool IsTaken(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

// False for a link that leads nowhere. Such a link is never replaced, since the dialog doesn't ask
// about it.
bool LeadsToAFile(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path, ignored);
}

std::string RandomName() {
  constexpr quint32 kNames = 2'176'782'336;  // 36 to the power of kLength
  constexpr int kBase = 36;
  constexpr int kLength = 6;
  const quint32 number = QRandomGenerator::system()->bounded(kNames);
  return ".kelvane-" +
         QString::number(number, kBase).rightJustified(kLength, QLatin1Char('0')).toStdString();
}

}  // namespace

NewFile::NewFile(const std::string& path) : path_(path), replaces_(LeadsToAFile(path)) {
  const std::filesystem::path file(path);
  const std::filesystem::path folder = file.parent_path();
  std::string reason;
  const std::filesystem::path shortFolder = GetShortFileName(
      folder, [&reason](const std::string& text, const std::string& /*title*/) { reason = text; });
  if (!reason.empty()) throw std::runtime_error(path + " can't be written: " + reason);
  if (shortFolder.empty()) throw CannotWrite(path, ENOENT);
  // A name that the file system refuses is refused now, not when the tool has done its work.
  if (!replaces_) {
    const int own = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR);
    if (own < 0) throw CannotWrite(path, errno);
    ::close(own);
    ::unlink(path.c_str());
  }
  std::string name;
  int descriptor = -1;
  do {
    constexpr mode_t kMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    name = RandomName() + file.extension().string();
    temporary_ = folder / name;
    descriptor = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
  } while (descriptor < 0 && errno == EEXIST);
  if (descriptor < 0) throw CannotWrite(path, errno);
  ::close(descriptor);
  Temporaries().Add(temporary_);
  toolPath_ = shortFolder / name;
}

NewFile::~NewFile() { Temporaries().Remove(temporary_); }

void NewFile::Keep() {
  const unsigned int flags = replaces_ ? 0 : RENAME_NOREPLACE;
  int result = ::renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, path_.c_str(), flags);
  // Some file systems don't know the flag.
  if (result != 0 && errno == EINVAL && !IsTaken(path_)) {
    result = std::rename(temporary_.c_str(), path_.c_str());
  }
  if (result != 0) throw CannotWrite(path_, errno);
}

}  // namespace kelvane
