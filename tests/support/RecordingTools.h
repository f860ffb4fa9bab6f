#pragma once

#include <QString>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "support/Gate.h"

namespace kelvane::testing {

// A folder with tools that write down how they were started, and the program's folder for as long
// as this lives. Each tool then runs the shell commands that it was given; none at first.
class RecordingTools {
 public:
  RecordingTools();
  RecordingTools(const RecordingTools&) = delete;
  RecordingTools& operator=(const RecordingTools&) = delete;
  ~RecordingTools();

  // Of the tools; without a blank.
  QString Path() const { return folder_.path(); }
  std::string PathOf(const char* name) const;
  // Makes a file, for instance a video, and returns its path.
  QString File(const QString& name) const;

  // From now on.
  void SizeProbeDoes(const QString& commands) const;
  void DurationProbeDoes(const QString& commands) const;
  void PreviewDoes(const QString& commands) const;
  void CropDoes(const QString& commands) const;
  void Remove(const QString& tool) const;

  // Each run so far: the tool's name and its arguments, with " | " between.
  std::vector<std::string> Runs() const;

 private:
  void Make(const QString& tool) const;
  void Write(const QString& name, const QString& text) const;

  QTemporaryDir folder_;
  std::string formerPath_;
};

// Shell commands that print a text in one block.
QString Print(const QString& text);
// A block of 256 bytes that ends as given.
QString BlockEndingIn(const QString& end);

// The shell commands that wait at the gate.
QString Wait(const Gate& gate);

}  // namespace kelvane::testing
