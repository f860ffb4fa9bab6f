#pragma once

#include <QString>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "support/Gate.h"

namespace kelvane::testing {

// A folder with scripts instead of the tools. It is the program's folder for as long as this object
// lives. A tool records its arguments and runs the shell commands that were set for it, if any.
class RecordingTools {
 public:
  RecordingTools();
  RecordingTools(const RecordingTools&) = delete;
  RecordingTools& operator=(const RecordingTools&) = delete;
  ~RecordingTools();

  // The folder's path has no blank.
  QString Path() const { return folder_.path(); }
  std::string PathOf(const char* name) const;
  // Makes a file, for instance a video, and returns its path.
  QString MakeFile(const QString& name) const;

  // Each sets the shell commands that a tool runs from now on.
  void StreamProbeDoes(const QString& commands) const { Write("size.commands", commands); }
  void DurationProbeDoes(const QString& commands) const { Write("duration.commands", commands); }
  void FfplayDoes(const QString& commands) const { Write("ffplay.commands", commands); }
  void FfmpegDoes(const QString& commands) const { Write("ffmpeg.commands", commands); }

  // Deletes the tool.
  void Remove(const QString& tool) const;

  // Each run so far: the tool's name and its arguments, with " | " between them.
  std::vector<std::string> Runs() const;

 private:
  void Make(const QString& tool) const;
  void Write(const QString& name, const QString& text) const;

  QTemporaryDir folder_;
  std::string formerPath_;
};

// Shell commands that print a text in one write.
QString PrintCommands(const QString& text);
// A text of 256 bytes, a whole block, with `end` at its end and dots before it.
QString BlockEndingIn(const QString& end);

// Shell commands that wait at the gate.
QString WaitCommands(const Gate& gate);

}  // namespace kelvane::testing
