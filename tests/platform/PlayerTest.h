#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <cmath>
#include <memory>

#include "platform/TestForm.h"
#include "platform/WindowsMediaPlayer.h"
#include "platform/player/PlaybackCore.h"
#include "support/Events.h"
#include "support/PlayerWatch.h"
#include "support/Videos.h"

namespace kelvane::testing {

// A player of 320 by 180 pixels in an open form, and a folder for its files.
class PlayerTest : public ::testing::Test {
 protected:
  PlayerTest() { form->Open(); }

  QString InFolder(const QString& name) const { return files.filePath(name); }
  // Makes a file with ffmpeg and returns its path. `arguments` are separated by blanks and come
  // before the path.
  QString Make(const QString& name, const QString& arguments) const {
    QString path = InFolder(name);
    QString printed;
    EXPECT_TRUE(RunTool(
        "ffmpeg", QStringList{"-v", "error", "-y"} + arguments.split(u' ') + QStringList{path},
        &printed))
        << printed.toStdString();
    return path;
  }
  QString MakePlain(const QString& name, const QString& colour, double seconds) const {
    QString path = InFolder(name);
    EXPECT_TRUE(MakePlainVideo(path, colour, seconds));
    return path;
  }
  QString Write(const QString& name, const QByteArray& content) const {
    QFile file(InFolder(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content), content.size());
    return file.fileName();
  }
  static QByteArray ContentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  // Replaces `before`, which must be in the content exactly once.
  static void Replace(QByteArray& content, const QByteArray& before, const QByteArray& after) {
    ASSERT_EQ(content.count(before), 1) << before.toHex().toStdString();
    content.replace(before, after);
  }
  bool AwaitDuration(double seconds) const {
    constexpr double kNear = 0.1;
    return WaitFor(
        [&] { return std::abs(player.currentMediaDuration().value_or(0) - seconds) < kNear; });
  }

  const QTemporaryDir files;
  std::unique_ptr<TestForm> form =
      std::make_unique<TestForm>(Controls{Design(kWindowsMediaPlayer, "wmp", {0, 0, 320, 180})});
  WindowsMediaPlayer& player = form->Find<WindowsMediaPlayer>("wmp");
  const PlayerWatch watch{player};
};

}  // namespace kelvane::testing
