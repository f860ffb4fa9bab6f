#pragma once

#include <QApplication>
#include <QString>
#include <array>
#include <memory>
#include <string>

namespace kelvane {

// The application object. It is made once, before everything else, on the thread that becomes the
// user-interface thread. It ignores the command line. Qt's own texts are in the user's language.
class App {
 public:
  // `programName` is the name of the program's desktop file. `title` is the title of message boxes
  // that have none of their own, and the name by which the sound system knows the player.
  explicit App(const char* programName, const QString& title = {});
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  // Runs the event loop until the last form is unloaded; returns at once if none is loaded. Returns
  // the program's exit status.
  int Run();

  // The program's own folder, without a trailing separator, in UTF-8. It holds the
  // media tools.
  static const std::string& Path() { return path_; }
  // Sets another folder in which the tools are sought, for a test that brings its own tools.
  static void setPath(const std::string& path) { path_ = path; }

  static const QString& Title() { return title_; }

 private:
  inline static std::string path_;
  inline static QString title_;

  std::string name_;
  std::array<char*, 2> arguments_;
  int argumentCount_ = 1;
  std::unique_ptr<QApplication> application_;
};

// Processes the pending events of all windows. Apart from this function, only event loops do so.
void DoEvents();

}  // namespace kelvane
