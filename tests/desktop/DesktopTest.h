#pragma once

#include <gtest/gtest.h>

#include <QHash>
#include <QString>
#include <functional>

#include "desktop/driver/Program.h"
#include "desktop/driver/Screen.h"
#include "desktop/driver/Windows.h"
#include "support/Videos.h"

namespace kelvane::desktop {

// The display that the tests of this process share.
Screen& TheScreen();
// Its name, as in ":7".
QString TheDisplay();

// A program of its own for each test, not yet started. At the end the program must be sound: what
// is left of it is ended, and a sanitizer's report fails the test. A failed test leaves a picture.
class DesktopTest : public ::testing::Test {
 protected:
  explicit DesktopTest(const QString& programName = QStringLiteral("kelvane"));
  // On another display than the shared one.
  DesktopTest(Screen& otherScreen, const QString& display,
              const QString& programName = QStringLiteral("kelvane"));
  void TearDown() override;

  // Starts the program and waits for its window.
  void OpenWindow();
  // Opens the window and loads a real video of this size.
  void OpenWindowWithVideo(QSize size, int seconds);
  // Puts a script in the probe tool's place that knows every file as a video of 640 by 360 pixels
  // and this duration, without looking at it.
  void ReplaceProbe(const QString& duration);
  // Opens the window and loads a file that is no video; the probe has been replaced before.
  void OpenWindowWithPretendedVideo();
  // Expects the read-outs and the bars of a video of this size, whatever path is on show, and no
  // message.
  void ExpectVideoUnderPath(QSize size, const QString& path);
  // Chooses `output` in the save dialog and waits for the job's window.
  void StartCrop(const QString& output);
  // Closes the main window and expects the program to end by itself, with 0.
  void CloseAndExpectEnd();

  // Script of a tool that tells how far it has come, and the wait for it.
  QString Note(const QString& name) const;
  bool AwaitNote(const QString& name) const;
  // The one process that the program has started and that hasn't ended; 0 where there isn't one.
  pid_t Tool() const;
  // Waits until a tool has stopped itself.
  bool AwaitStopped() const;
  // Expects that the program paints, tells and works at nothing, whatever the user does.
  void ExpectRestsWhateverComes(const std::function<void()>& userDoes);

  QByteArray ContentOf(const QString& path) const;
  // Every file in the test's own folder with its content, and of a link with what it leads to.
  // What tools note in a folder of their own isn't among them.
  QHash<QString, QByteArray> Files() const;
  void WriteFile(const QString& path, const QByteArray& content) const;

  Screen& screen;
  Program program;
  MainWindow window;
  JobWindow job;
  // The loaded video.
  QString video;
};

}  // namespace kelvane::desktop
