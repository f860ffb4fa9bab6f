#pragma once

#include <QRgb>

namespace kelvane {

class PlaybackCore;
class WindowsMediaPlayer;

}  // namespace kelvane

namespace kelvane::testing {

// Tells what a player does. Each Await and Stands serves events meanwhile, and is false if what it
// waits for isn't so in good time.
class PlayerWatch {
 public:
  explicit PlayerWatch(WindowsMediaPlayer& player) : player_(player) {}

  // Behind the control; made at the first file.
  PlaybackCore& Core() const;
  bool Made() const;

  bool AwaitPosition(double seconds) const;
  bool AwaitEnd() const;
  // It plays, ahead of where it is.
  bool Moves() const;
  // It comes to stand still before the end of its file, and stays so for a while.
  bool StandsStill() const;

  // The colour of the picture a little off its corner.
  QRgb Colour() const;
  // Give or take what a conversion of colours rounds off.
  bool AwaitColour(QRgb colour) const;
  static bool Like(QRgb one, QRgb other);

 private:
  WindowsMediaPlayer& player_;
};

constexpr QRgb kPlayedRed = 0xFD0000;  // what comes out of a red video
constexpr QRgb kPlayedBlue = 0x0000FE;
constexpr QRgb kNothingPlayed = 0x000000;

}  // namespace kelvane::testing
