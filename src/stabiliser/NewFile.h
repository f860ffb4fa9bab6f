#pragma once

#include <string>

namespace kelvane {

// A new file. A tool writes it under a temporary name in its folder, and Keep renames it. A file
// that isn't kept is removed with the object, or when the program ends. Not thread-safe.
class NewFile {
 public:
  // `path` is absolute and has an extension of 1 to 10 ASCII letters or digits, which the temporary
  // name has too. Throws std::system_error if the folder takes no file of that name, and another
  // std::runtime_error if it has no short path.
  explicit NewFile(const std::string& path);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile();

  // The temporary name as a path that can go unquoted.
  const std::string& ToolPath() const { return toolPath_; }
  // Gives the file its own name, in place of a file that had it when this object was made. Throws
  // std::system_error if that fails, and if the name was free then and has been taken since.
  void Keep();

 private:
  std::string path_;
  bool replaces_;
  std::string temporary_;
  std::string toolPath_;
};

}  // namespace kelvane
