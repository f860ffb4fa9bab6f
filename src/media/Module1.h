#pragma once

#include <functional>
#include <string>
#include <vector>

// Paths that can go unquoted on a command line. Paths are bytes, as a rule UTF-8.
// `linksParent` is a folder whose own path can go unquoted. The functions aren't thread-safe: all
// are to be called on one thread.
namespace kelvane {

// A function that tells the user an error, such as ShowErrorMessage.
using ShowError = std::function<void(const std::string& text, const std::string& title)>;

// Returns the short path of an existing file or folder. This is the path itself, made absolute, if
// it can go unquoted: if it is valid UTF-8 of at most 254 bytes without blanks, double quotes,
// percent signs and control characters. For any other path it is that of a link in a private folder
// (mode 0700) in `linksParent`; the folder is removed when the program ends. The link is named
// after the path's last name, "My_holiday.mp4" for "My holiday.mp4": "_" replaces what can't go
// unquoted, at most 40 characters are left. If another of the program's links has the name, a
// number is added, "My_holiday_2.mp4". An extension of 1 to 10 ASCII letters or digits stays. The
// same path gets the same link each time; two paths to one file get two links.
//
// Returns an empty text, without a message, if there is no such file or it can't be reached. If the
// link can't be made, passes the reason and its number to `showError`, unless that is null, and
// returns an empty text.
std::string GetShortFileName(const std::string& Path, const ShowError& showError,
                             const std::string& linksParent = "/tmp");

// Returns the folder of the tools for a command line: the short path of `appPath`, or `appPath`
// itself if it has none. Ignores errors.
std::string ToolsFolder(const std::string& appPath);

// Returns a path, which can go unquoted, for a join's list that can't be written to the program's
// folder. It is in the private folder of the short paths. The list is removed when the program
// ends. Returns an empty text if the private folder can't be made.
std::string PrivateListFile(const std::string& linksParent = "/tmp");

// Removes the private folders in `linksParent` that this user's programs left behind. To be called
// when the program starts. Leaves alone the folders of running programs, and ignores errors.
void ClearShortPathsLeftBehind(const std::string& linksParent = "/tmp");

// Returns the folders that can have a private folder of working files, the preferred one first:
// "/var/tmp", and the user's cache folder ($XDG_CACHE_HOME or ~/.cache) if that folder's path can
// go unquoted on a command line and unescaped in a filter's text.
std::vector<std::string> WorkFileParents();

// Returns the path of a working file, in a private folder in the first of the `parents` in which
// one can be made; a missing parent is made if the folder that is to contain it exists. `name`
// consists of ASCII letters, digits, "-" and ".". The same name gets the same path each time. The
// caller writes the file and may remove it; otherwise it is removed when the program ends. Returns
// an empty text if the private folder can't be made in any of them.
std::string PrivateWorkFile(const std::string& name,
                            const std::vector<std::string>& parents = WorkFileParents());

// Does in each of the `parents` what ClearShortPathsLeftBehind does in `linksParent`.
void ClearWorkFilesLeftBehind(const std::vector<std::string>& parents = WorkFileParents());

}  // namespace kelvane
