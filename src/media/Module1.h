#pragma once

#include <functional>
#include <string>

// Paths that can stand bare on a command line. Text is bytes in the system's narrow encoding.
namespace kelvane {

// Shows a message box with an exclamation icon and an OK button.
using ShowError = std::function<void(const std::string& text, const std::string& title)>;

// The short path of an existing file or folder: one of 254 bytes at most, without blanks, quotes,
// percent signs and control characters and in good UTF-8, that names the same file. A path that
// already is so (made absolute) is its own short path. For any other a link is made under a short
// name, extension kept, in a private folder (mode 0700) in `linksParent` that goes when the program
// ends; the same file gets the same name each time.
//
// Returns an empty text, without a message, for a file that isn't there. Where the link can't be
// made, shows the reason with its number through `showError`, if there is one, and returns an empty
// text.
std::string GetShortFileName(const std::string& Path, const ShowError& showError,
                             const std::string& linksParent = "/tmp");

// The folder of the tools as it goes on a command line: `appPath` itself, or its short path where
// it can't stand bare. `appPath` where that fails.
std::string ToolsFolder(const std::string& appPath);

// The place of a join's list where the program's folder takes none: a path that can stand bare, in
// the private folder of the short paths. What is written there goes when the program ends. Empty
// where that folder can't be made.
std::string PrivateListFile(const std::string& linksParent = "/tmp");

// Removes the private folders of programs of this user that ended without removing them. To be
// called once at a start; touches no folder of a program that still runs.
void ClearShortPathsLeftBehind(const std::string& linksParent = "/tmp");

}  // namespace kelvane
