#include "platform/WindowsMediaPlayer.h"

#include <QPaintEvent>
#include <QPainter>

#include "platform/Colours.h"
#include "platform/Container.h"
#include "platform/PlaybackCore.h"

namespace kelvane {
namespace {

QString PositionText(int seconds) {
  constexpr int kSixty = 60;
  const auto twoDigits = [](int number) {
    return QString::number(number).rightJustified(2, QLatin1Char('0'));
  };
  const int minutes = seconds / kSixty;
  const QString minutesAndSeconds =
      twoDigits(minutes % kSixty) + QLatin1Char(':') + twoDigits(seconds % kSixty);
  return minutes < kSixty ? minutesAndSeconds
                          : twoDigits(minutes / kSixty) + QLatin1Char(':') + minutesAndSeconds;
}

}  // namespace

WindowsMediaPlayer::WindowsMediaPlayer(Container* container, const QString& name)
    : Control(container, name) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

WindowsMediaPlayer::~WindowsMediaPlayer() = default;

void WindowsMediaPlayer::setURL(const QString& url) {
  url_ = url;
  if (url_.isEmpty()) {
    if (core_ != nullptr) core_->Stop();
    return;
  }
  if (core_ == nullptr) MakeCore();
  core_->Start(url_);
}

void WindowsMediaPlayer::MakeCore() {
  core_ = std::make_unique<PlaybackCore>();
  core_->setVolume(settings.volume());
  core_->setBalance(settings.balance());
  connect(core_.get(), &PlaybackCore::PictureChanged, this, [this] { update(); });
}

void WindowsMediaPlayer::Controls::play() {
  if (player_.url_.isEmpty()) return;
  if (player_.core_->Active()) {
    player_.core_->setPaused(false);
  } else {
    player_.core_->Start(player_.url_);
  }
}

void WindowsMediaPlayer::Controls::pause() {
  if (player_.core_ != nullptr && player_.core_->Active()) player_.core_->setPaused(true);
}

void WindowsMediaPlayer::Controls::stop() {
  if (player_.core_ != nullptr) player_.core_->Stop();
}

QString WindowsMediaPlayer::Controls::currentPositionString() const {
  if (player_.url_.isEmpty()) return {};
  return PositionText(static_cast<int>(player_.core_->Position()));
}

void WindowsMediaPlayer::Settings::setVolume(int volume) {
  constexpr int kFull = 100;
  if (volume < 0 || volume > kFull) return;
  volume_ = volume;
  if (player_.core_ != nullptr) player_.core_->setVolume(volume);
}

void WindowsMediaPlayer::Settings::setBalance(int balance) {
  constexpr int kFull = 100;
  if (balance < -kFull || balance > kFull) return;
  balance_ = balance;
  if (player_.core_ != nullptr) player_.core_->setBalance(balance);
}

std::optional<double> WindowsMediaPlayer::currentMediaDuration() const {
  if (url_.isEmpty()) return std::nullopt;
  return core_->Duration();
}

void WindowsMediaPlayer::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  QRegion uncovered = event->region();
  if (core_ != nullptr) uncovered = core_->Draw(painter, uncovered);
  for (const QRect& part : uncovered) painter.fillRect(part, QColor(kBlack));
}

}  // namespace kelvane
