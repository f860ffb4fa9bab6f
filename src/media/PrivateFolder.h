#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>

#include "media/Descriptor.h"

namespace kelvane {

// A folder of one run of the program. It holds symbolic links that give files other names, the list
// of a join that can't be written to the program's folder, and working files.
//
// Its name is "kelvane-", the user's id, "-" and six characters. Only its user can open it. It is
// locked until the program ends, so a folder that isn't locked was left behind. It is removed when
// the program ends. Not thread-safe: all folders are to be used on one thread.
class PrivateFolder {
 public:
  // Returns the program's one folder in `parent`. The folder is made when a link or a file first
  // needs it. The object lives until the program ends.
  static PrivateFolder& In(const std::string& parent);

  // Removes this user's folders in `parent` whose programs have ended: the symbolic links, the list
  // of a join and the working files in them, then each folder if nothing else is in it. Follows no
  // link in `parent`, and ignores errors.
  static void ClearLeftBehind(const std::string& parent);

  explicit PrivateFolder(std::string parent) : parent_(std::move(parent)) {}
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;
  ~PrivateFolder();

  // Returns the path of a link to the absolute path `target`. Of the names that `name` returns for
  // 1, 2 and so on, the link gets the first free one; "work-" at the beginning of a name becomes
  // "work_". The same target gets the same name each time; two paths to one file get two links.
  // Makes the folder and the link again if they have vanished. Throws std::system_error if one
  // can't be made.
  std::string LinkTo(const std::string& target, const std::function<std::string(int number)>& name);

  // Returns the path for a join's list, "files.txt" in the folder, and makes the folder if it isn't
  // there. The file that the caller writes is removed with the folder. Throws std::system_error if
  // the folder can't be made.
  std::string ListFile();

  // Does what ListFile does for a working file, whose name is "work-" and `name`.
  std::string WorkFile(const std::string& name);

 private:
  void Make();
  std::string FreeName(const std::function<std::string(int number)>& name) const;
  std::string File(const std::string& name);

  std::string parent_;
  // Empty until the folder is made.
  std::string path_;
  // The open folder, which holds the lock.
  Descriptor folder_;
  // The process that made the folder. A forked process has a copy of this object and isn't its
  // owner.
  pid_t owner_ = 0;
  std::map<std::string, std::string> names_;  // of the links, by target
  std::set<std::string> takenNames_;
  std::set<std::string> files_;
};

}  // namespace kelvane
