#pragma once

#include <string>

// What becomes of the file of a typed path, as sentences for the user. Text is bytes in the
// locale's encoding; paths are absolute. The functions only look at the file system.
namespace kelvane {

inline const std::string kFileIsReplaced = "This file exists: it will be replaced.";

// Returns the file that a tool makes of `path` at the end of its command line: what a blank or a
// tab leaves of it, without double quotes.
std::string OutputFile(const std::string& path);

// Whether a tool makes a list of pieces of video under this name. Looks at no file.
bool IsListOfPieces(const std::string& path);

// Returns that no file can be made in the folder of `path`; empty if one can.
std::string FolderRemark(const std::string& path);

// Returns what becomes of a file at `path` that is opened for writing; empty if it is just made.
// That is `replaced` if the file exists and can be written to; an empty one says that the file is
// kept.
std::string WriteRemark(const std::string& path, const std::string& replaced);

// The same for a tool that is given `path` at the end of its command line, with what the command
// line makes of the path. What costs the user most comes first.
std::string OutputRemark(const std::string& path, const std::string& replaced);

}  // namespace kelvane
