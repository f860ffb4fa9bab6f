#pragma once

#include <QRgb>

namespace kelvane {
class PlaybackCore;
class WindowsMediaPlayer;
}  // namespace kelvane

namespace kelvane::testing {

// Watches what a player does. The functions that wait serve events meanwhile, and return false if
// what they wait for doesn't come in time.
class PlayerWatch {
 public:
  explicit PlayerWatch(WindowsMediaPlayer& player) : player_(player) {}

  // The control's PlaybackCore, which is made for the first file.
  PlaybackCore& Core() const;
  // Whether it has been made.
  bool Made() const;

  bool AwaitPosition(double seconds) const;
  bool AwaitEnd() const;
  // Waits until the position has moved on.
  bool AwaitMove() const;
  // Waits until the position has stood still for half a second. Also false if the file has ended.
  bool AwaitStandstill() const;

  // The colour near the top left corner of the picture.
  QRgb Colour() const;
  // To these, colours are alike if they differ by no more than the rounding of a conversion.
  bool AwaitColour(QRgb colour) const;
  static bool Like(QRgb one, QRgb other);

 private:
  WindowsMediaPlayer& player_;
};

constexpr QRgb kPlayedRed = 0xFD0000;  // of a red video
constexpr QRgb kPlayedBlue = 0x0000FE;
constexpr QRgb kNothingPlayed = 0x000000;

}  // namespace kelvane::testing
