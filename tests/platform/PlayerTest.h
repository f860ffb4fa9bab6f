#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "platform/TestForm.h"
#include "platform/WindowsMediaPlayer.h"
#include "platform/player/PlaybackCore.h"
#include "support/Events.h"
#include "support/PlayerWatch.h"
#include "support/Videos.h"

namespace kelvane::testing {

// A player of 320 by 180 pixels in a window that is open, and real files for it.
class PlayerTest : public ::testing::Test {
 protected:
  PlayerTest() { form->Open(); }

  // Makes a file with the real tool, which gets `arguments` before the file's name.
  QString Make(const QString& name, const QStringList& arguments) const {
    QString path = files.filePath(name);
    QString printed;
    EXPECT_TRUE(RunTool(u"ffmpeg"_s,
                        QStringList{"-v", "error", "-y"} + arguments + QStringList{path}, &printed))
        << printed.toStdString();
    return path;
  }
  QString MakePlain(const QString& name, const QString& colour, double seconds) const {
    QString path = files.filePath(name);
    EXPECT_TRUE(MakePlainVideo(path, colour, seconds));
    return path;
  }

  const QTemporaryDir files;
  std::unique_ptr<TestForm> form =
      std::make_unique<TestForm>(Controls{Design(kWindowsMediaPlayer, "wmp", {0, 0, 320, 180})});
  WindowsMediaPlayer& player = form->Find<WindowsMediaPlayer>("wmp");
  const PlayerWatch watch{player};
};

}  // namespace kelvane::testing
