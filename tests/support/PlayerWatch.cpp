#include "support/PlayerWatch.h"

#include <QImage>
#include <cstdlib>

#include "platform/WindowsMediaPlayer.h"
#include "platform/player/PlaybackCore.h"
#include "support/Events.h"

namespace kelvane::testing {

PlaybackCore& PlayerWatch::Core() const { return *player_.findChild<PlaybackCore*>(); }

bool PlayerWatch::Made() const { return player_.findChild<PlaybackCore*>() != nullptr; }

bool PlayerWatch::AwaitPosition(double seconds) const {
  return PumpUntil([&] { return Core().Position() >= seconds; });
}

bool PlayerWatch::AwaitEnd() const {
  return PumpUntil([&] { return !Core().Active(); });
}

bool PlayerWatch::Moves() const {
  constexpr double kSome = 0.05;
  return AwaitPosition(Core().Position() + kSome);
}

bool PlayerWatch::StandsStill() const {
  constexpr int kAWhile = 500;  // ms
  const bool still = PumpUntil([&] {
    const double position = Core().Position();
    return HoldsFor(kAWhile, [&] { return Core().Position() == position; });
  });
  return still && Core().Active();
}

QRgb PlayerWatch::Colour() const {
  constexpr QPoint kPlace(2, 2);
  return player_.grab(QRect(kPlace, QSize(1, 1))).toImage().pixel(0, 0) & RGB_MASK;
}

bool PlayerWatch::AwaitColour(QRgb colour) const {
  return PumpUntil([&] { return Like(Colour(), colour); });
}

bool PlayerWatch::Like(QRgb one, QRgb other) {
  constexpr int kOff = 8;
  return std::abs(qRed(one) - qRed(other)) < kOff && std::abs(qGreen(one) - qGreen(other)) < kOff &&
         std::abs(qBlue(one) - qBlue(other)) < kOff;
}

}  // namespace kelvane::testing
