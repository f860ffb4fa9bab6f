#pragma once

#include <map>
#include <string>

#include "media/Descriptor.h"

namespace kelvane {

// A folder of this program run's own in which files get short names, by symbolic links, and the
// list of a join has its place where it can have no other.
//
// It is named "kelvane-", the user's number, "-" and six characters, is open to its user alone, and
// is locked for as long as the program lives, so that a folder that isn't locked is known to be
// left behind. It is removed at the program's end.
class PrivateFolder {
 public:
  // The one folder of this program in `parent`. Made when a link or the list first needs it, not
  // before.
  static PrivateFolder& In(const std::string& parent);

  // Removes those folders of this user in `parent` whose programs have ended: the symbolic links in
  // them, a list of a join, and then the folders themselves where nothing else is in them. Follows
  // no link.
  static void ClearLeftBehind(const std::string& parent);

  explicit PrivateFolder(std::string parent) : parent_(std::move(parent)) {}
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;
  ~PrivateFolder();

  // The path of a link to the file of that absolute path: a number, and `extension` behind it. The
  // same file gets the same name each time. Folder and link are made anew where they have vanished.
  // Throws std::system_error where they can't be made.
  std::string LinkTo(const std::string& target, const std::string& extension);

  // The path for a join's list, "files.txt" in the folder, which is made where it isn't there. What
  // the caller writes there goes with the folder. Throws std::system_error where the folder can't
  // be made.
  std::string ListFile();

 private:
  void Make();

  std::string parent_;
  // Empty until the folder is made.
  std::string path_;
  // The folder itself, which bears the lock.
  Descriptor folder_;
  // The process that the folder belongs to: a copy of this object in a forked one isn't its owner.
  pid_t owner_ = 0;
  std::map<std::string, std::string> names_;
  bool hasListFile_ = false;
};

}  // namespace kelvane
