#include "support/PlayerWatch.h"

#include <QImage>

#include "platform/WindowsMediaPlayer.h"
#include "platform/player/PlaybackCore.h"
#include "support/Pictures.h"
#include "support/Wait.h"

namespace kelvane::testing {

PlaybackCore& PlayerWatch::Core() const { return *player_.findChild<PlaybackCore*>(); }

bool PlayerWatch::Made() const { return player_.findChild<PlaybackCore*>() != nullptr; }

bool PlayerWatch::AwaitPosition(double seconds) const {
  return WaitFor([&] { return Core().Position() >= seconds; });
}

bool PlayerWatch::AwaitEnd() const {
  return WaitFor([&] { return !Core().Active(); });
}

bool PlayerWatch::AwaitMove() const {
  constexpr double kSome = 0.05;
  return AwaitPosition(Core().Position() + kSome);
}

bool PlayerWatch::AwaitStandstill() const {
  constexpr auto kAWhile = 500ms;
  const bool still = WaitFor([&] {
    const double position = Core().Position();
    return HoldsFor([&] { return Core().Position() == position; }, kAWhile);
  });
  return still && Core().Active();
}

QRgb PlayerWatch::Colour() const {
  constexpr QPoint kPlace(2, 2);
  return player_.grab(QRect(kPlace, QSize(1, 1))).toImage().pixel(0, 0) & RGB_MASK;
}

bool PlayerWatch::AwaitColour(QRgb colour) const {
  return WaitFor([&] { return Like(Colour(), colour); });
}

bool PlayerWatch::Like(QRgb one, QRgb other) {
  constexpr int kRounding = 7;
  return IsNear(one, other, kRounding);
}

}  // namespace kelvane::testing
