#pragma once

#include <string>

namespace kelvane {

// A new file. A tool writes it into the folder where it is to be, but under a temporary name, and
// Keep renames it. A file that isn't kept is removed with the object, or when the program ends. Not
// thread-safe.
class NewFile {
 public:
  // `path` is absolute and has an extension of 1 to 10 ASCII letters or digits, which the temporary
  // name has too. Throws std::system_error if the temporary file can't be made in the folder, or if
  // there is no file at `path` and none can be made, for example because a link that leads nowhere
  // has the name. Throws a plain std::runtime_error if the folder can't be given a short path.
  explicit NewFile(const std::string& path);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile();

  // The temporary name as a path that can go unquoted.
  const std::string& ToolPath() const { return toolPath_; }
  // Renames the file to its own name, in place of a file that had it when this object was made.
  // Throws std::system_error if that fails, or if the name was free then and has been taken since.
  void Keep();

 private:
  std::string path_;
  bool replaces_;
  std::string temporary_;
  std::string toolPath_;
};

}  // namespace kelvane
