#pragma once

#include <QRgb>

namespace kelvane {
class PlaybackCore;
class WindowsMediaPlayer;
}  // namespace kelvane

namespace kelvane::testing {

// What a player does. Whatever waits serves events meanwhile, and returns false if it has waited in
// vain.
class PlayerWatch {
 public:
  explicit PlayerWatch(WindowsMediaPlayer& player) : player_(player) {}

  // What plays for the control; made at the first file.
  PlaybackCore& Core() const;
  bool Made() const;

  bool AwaitPosition(double seconds) const;
  bool AwaitEnd() const;
  // Waits until the position has moved on.
  bool Moves() const;
  // Waits until the position has stood still for half a second, before the end of the file.
  bool StandsStill() const;

  // The colour near the top left corner of the picture.
  QRgb Colour() const;
  // These compare up to the rounding of a conversion of colours.
  bool AwaitColour(QRgb colour) const;
  static bool Like(QRgb one, QRgb other);

 private:
  WindowsMediaPlayer& player_;
};

constexpr QRgb kPlayedRed = 0xFD0000;  // of a red video
constexpr QRgb kPlayedBlue = 0x0000FE;
constexpr QRgb kNothingPlayed = 0x000000;

}  // namespace kelvane::testing
