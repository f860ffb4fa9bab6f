#pragma once

#include <string>

// Sentences for the user on what becomes of the file at a typed path. Text is UTF-8;
// paths are absolute. The functions only look at the file system.
namespace kelvane {

inline const std::string kFileIsReplaced = "This file exists: it will be replaced.";

// Returns the path of the file that a tool writes if its command line ends with `path`: the part of
// `path` before the first blank or tab outside double quotes, without the quotes.
std::string OutputFile(const std::string& path);

// Returns whether the extension, .m3u8 or .mpd, makes a tool write a playlist, and the video as
// further files. Looks at no file.
bool IsPlaylist(const std::string& path);

// Returns the sentence that no file can be made in the folder of `path`; empty if one can.
std::string FolderRemark(const std::string& path);

// Returns a sentence on what becomes of the file at `path` when it is opened for writing. If there
// is no such file, returns what FolderRemark does. If there is one, returns `replaced`, or that the
// file is kept if it can't be written to or `replaced` is empty.
std::string WriteRemark(const std::string& path, const std::string& replaced);

// Does what WriteRemark does for the OutputFile of `path`, except that an existing playlist can be
// replaced if its folder can be written to, and that nothing is replaced under a name without an
// extension. Adds remarks on what the command line makes of the path and on a missing extension.
// `replaced` comes first, since it costs the user most.
std::string OutputRemark(const std::string& path, const std::string& replaced);

}  // namespace kelvane
