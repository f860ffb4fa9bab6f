#include "platform/WindowsMediaPlayer.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "platform/App.h"
#include "platform/player/PlaybackCore.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

WindowsMediaPlayer::WindowsMediaPlayer(Container& container, const QString& name)
    : Control(container, name) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setRole(SpokenRole::kPicture);
}

void WindowsMediaPlayer::Prepare() {
  if (preparing_.joinable()) return;
  try {
    preparing_ = std::jthread(PlaybackCore::LoadLibrary);
  } catch (const std::exception&) {
    // The library is loaded when the first file is set.
  }
}

void WindowsMediaPlayer::setURL(const QString& url) {
  if (TakeURL(url)) core_->Start(url_);
}

void WindowsMediaPlayer::OpenPaused(const QString& url) {
  if (TakeURL(url)) core_->StartPaused(url_);
}

bool WindowsMediaPlayer::TakeURL(const QString& url) {
  if (!url.isEmpty() && (core_ == nullptr || !core_->Usable())) MakeCore();
  url_ = url;
  if (url_.isEmpty() && core_ != nullptr) core_->Stop();
  return !url_.isEmpty();
}

void WindowsMediaPlayer::MakeCore() {
  using enum PlaybackCore::Picture;
  auto* const made = new PlaybackCore(this, App::Title(), fitsBox_ ? kFitted : kStored);
  delete std::exchange(core_, made);
  core_->setVolume(settings.volume());
  core_->setBalance(settings.balance());
  connect(core_, &PlaybackCore::PictureChanged, this, [this] { update(visibleRegion()); });
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
  if (active()) player_.core_->setPaused(true);
}

void WindowsMediaPlayer::Controls::stop() {
  if (player_.core_ != nullptr) player_.core_->Stop();
}

QString WindowsMediaPlayer::Controls::currentPositionString() const {
  if (player_.url_.isEmpty()) return {};
  return FormatPosition(player_.core_->Position());
}

double WindowsMediaPlayer::Controls::currentPosition() const {
  return player_.url_.isEmpty() ? 0 : std::max(player_.core_->Position(), 0.0);
}

void WindowsMediaPlayer::Controls::setCurrentPosition(double seconds) {
  if (player_.url_.isEmpty() || !std::isfinite(seconds)) return;
  if (!player_.core_->Active()) player_.core_->StartPaused(player_.url_);
  player_.core_->Seek(std::max(seconds, 0.0));
}

void WindowsMediaPlayer::Controls::skip(double seconds) {
  if (!active()) return;
  const double duration = player_.core_->Duration();
  const double goal = currentPosition() + seconds;
  setCurrentPosition(duration > 0 ? std::min(goal, duration) : goal);
}

void WindowsMediaPlayer::Controls::step(int pictures) {
  if (active()) player_.core_->Step(pictures);
}

bool WindowsMediaPlayer::Controls::active() const {
  return player_.core_ != nullptr && player_.core_->Active();
}

bool WindowsMediaPlayer::Controls::playing() const {
  return player_.core_ != nullptr && player_.core_->Playing();
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
  if (core_ != nullptr) {
    core_->setVisibleSize(fitsBox_ ? size() : VisibleExtent());
    uncovered = core_->Draw(painter, uncovered);
  }
  for (const QRect& part : uncovered) painter.fillRect(part, Qt::black);
}

// Ignores controls in front of the picture, since they move.
QSize WindowsMediaPlayer::VisibleExtent() const {
  QRect visible = rect();
  for (const QWidget* box = parentWidget(); box != nullptr; box = box->parentWidget()) {
    visible &= QRect(mapFrom(box, QPoint()), box->size());
    if (box->isWindow()) break;
  }
  return {std::max(visible.right() + 1, 0), std::max(visible.bottom() + 1, 0)};
}

// Opens the menu and returns at once: a handler whose DoEvents opens the menu would otherwise block
// until the menu is closed. So the file may end before the user chooses.
void WindowsMediaPlayer::contextMenuEvent(QContextMenuEvent* event) {
  constexpr double kSkip = 10;  // seconds
  if (url_.isEmpty()) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool active = core_->Active();
  const auto add = [&](const QString& caption, bool enabled, const auto& action) {
    menu->addAction(caption, this, action)->setEnabled(enabled);
  };
  add(u"Play"_s, true, [this] { controls.play(); });
  add(u"Pause"_s, controls.playing(), [this] { controls.pause(); });
  add(u"Stop"_s, active, [this] { controls.stop(); });
  menu->addSeparator();
  add(u"Back 10 Seconds"_s, active, [this] { controls.skip(-kSkip); });
  add(u"Forward 10 Seconds"_s, active, [this] { controls.skip(kSkip); });
  add(u"Previous Frame"_s, active, [this] { controls.step(-1); });
  add(u"Next Frame"_s, active, [this] { controls.step(1); });
  add(u"Back to the Beginning"_s, active, [this] { controls.skip(-controls.currentPosition()); });
  menu->popup(event->globalPos());
}

}  // namespace kelvane
