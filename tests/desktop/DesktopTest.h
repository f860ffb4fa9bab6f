#pragma once

#include <gtest/gtest.h>

#include <QHash>
#include <QString>

#include "desktop/driver/Program.h"
#include "desktop/driver/Screen.h"
#include "desktop/driver/Windows.h"
#include "support/Videos.h"

namespace kelvane::desktop {

// The display that all tests of this process share.
Screen& TheScreen();
// Its name, such as ":7".
QString TheDisplay();

// A test with a program of its own, which the test starts. A report of a sanitizer fails the test.
// A failed test saves a picture of the screen.
class DesktopTest : public ::testing::Test {
 protected:
  explicit DesktopTest(const QString& programName = "kelvane");
  // On another display than the shared one.
  DesktopTest(Screen& otherScreen, const QString& display, const QString& programName = "kelvane");
  void TearDown() override;

  // Starts the program and waits for the main window.
  void OpenWindow();
  // The same, and makes and loads a real video of this size, at the path `video` if that is set.
  void OpenWindowWithVideo(QSize size, int seconds);
  // Replaces the probe tool by a script that takes every file for a video of 640 by 360 pixels and
  // ten seconds.
  void ReplaceProbe();
  // Opens the window and loads a file that is no video. The probe tool must have been replaced.
  void OpenWindowWithFakeVideo();
  // Chooses `output` in the save dialog and waits for the job's window.
  void StartCrop(const QString& output);
  // Expects that the job ends without a message, and closes its window.
  void ExpectEndAndCloseJob();
  // Closes the main window and expects that the program then exits with 0.
  void CloseAndExpectEnd();

  // The process id of the program's only child that hasn't ended. 0 unless there is exactly one.
  pid_t Tool() const;

  // The content of a file, or "(not there)".
  static QByteArray ContentOf(const QString& path);
  // The files in the test's temporary folder by name. The value is the content; for a
  // link it begins with the path of the link's target.
  QHash<QString, QByteArray> Files() const;
  static void WriteFile(const QString& path, const QByteArray& content);

  Screen& screen;
  Program program;
  MainWindow window;
  JobWindow job;
  // The loaded video.
  QString video;
};

}  // namespace kelvane::desktop
