#include "platform/player/PlaybackCore.h"

#include <alsa/asoundlib.h>

#include <QDir>
#include <QPainter>
#include <QRegion>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstring>
#include <latch>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/player/PlayerLibrary.h"
#include "shared/TextHelpers.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// The player has no configuration, scripts, keys or window, and opens no file but the one that it
// is given. A release of libmpv refuses the options that it doesn't know, which does no harm.
constexpr std::pair<const char*, const char*> kOptions[] = {
    {"config", "no"},
    {"load-scripts", "no"},
    {"load-stats-overlay", "no"},
    {"load-osd-console", "no"},  // newer releases call it load-console
    {"load-console", "no"},
    {"load-select", "no"},
    {"load-positioning", "no"},
    {"load-commands", "no"},
    {"load-auto-profiles", "no"},
    {"osc", "no"},
    {"ytdl", "no"},
    {"terminal", "no"},
    {"input-builtin-bindings", "no"},
    {"clipboard-backends", ""},
    {"autoload-files", "no"},
    {"access-references", "no"},
    {"demuxer-lavf-o", "protocol_whitelist=none"},  // nothing that the file references is opened
    {"resume-playback", "no"},
    {"osd-level", "0"},
    {"sid", "no"},
    {"idle", "yes"},
    {"vo", "libmpv"},
    {"hwdec", "no"},
    {"video-rotate", "no"},     // libmpv's software renderer can't rotate
    {"video-crop", "0x0+0+0"},  // no crop, not even the file's own
    {"profile", "sw-fast"},
    {"ao", "pulse,alsa"},  // PipeWire serves Pulse clients as well
    {"audio-fallback-to-null", "yes"},
};

// Stored pixels are rendered 1:1, and the picture is cut to the rendered size. "0" means square
// pixels; "no" does too in older releases, but means the file's own aspect ratio in newer ones.
constexpr auto kStoredPictureOptions = std::to_array<std::pair<const char*, const char*>>({
    {"video-aspect-override", "0"},
    {"video-unscaled", "yes"},
    {"video-align-x", "-1"},
    {"video-align-y", "-1"},
});

constexpr const char* kPosition = "time-pos";
constexpr const char* kDuration = "duration";
constexpr const char* kStoredWidth = "video-params/w";
constexpr const char* kStoredHeight = "video-params/h";
constexpr const char* kRotation = "current-tracks/video/demux-rotation";
constexpr const char* kCoverPicture = "current-tracks/video/albumart";

// ALSA prints its errors, such as a missing sound device, unless it has an error handler.
void Silence(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
             const char* /*format*/, ...) {}

// Returns whether the system can start as many threads as a file takes. libmpv aborts the program,
// or never returns, if it can't start one.
bool HasRoomForThreads() {
  constexpr std::size_t kThreadsPerFile = 16;
  std::latch counted(1);
  std::vector<std::jthread> threads;
  threads.reserve(kThreadsPerFile);
  try {
    while (threads.size() < kThreadsPerFile) threads.emplace_back([&counted] { counted.wait(); });
  } catch (const std::system_error&) {
    // There are too few threads then.
  }
  counted.count_down();
  return threads.size() == kThreadsPerFile;
}

// libmpv leaves the byte beside a pixel's colours undefined.
void MakeOpaque(QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    std::for_each(line, line + image.width(), [](QRgb& pixel) { pixel |= qRgb(0, 0, 0); });
  }
}

// The reply ids of: commands that start a file; commands that seek or step back; the position as
// observed; and the position asked for after a file has been opened or a seek or step back done.
constexpr std::uint64_t kStartReplyId = 1;
constexpr std::uint64_t kSeekReplyId = 2;
constexpr std::uint64_t kPositionReplyId = 3;
constexpr std::uint64_t kSoughtReplyId = 4;

}  // namespace

void PlaybackCore::LoadLibrary() { (void)PlayerLibrary::Get(); }

PlaybackCore::PlaybackCore(QObject* parent, const QString& clientName, Picture picture)
    : QObject(parent), picture_(picture), mpv_(PlayerLibrary::Get()) {
  if (mpv_ == nullptr || !HasRoomForThreads() || !MakePlayer(clientName)) return;
  ObserveProperties();
  try {
    serving_ = std::thread([this] { ServePlayer(); });
  } catch (const std::system_error&) {
    // Usable returns false then.
  }
}

bool PlaybackCore::MakePlayer(const QString& clientName) {
  // mpv_create fails if LC_NUMERIC isn't "C".
  (void)std::setlocale(LC_NUMERIC, "C");
  snd_lib_error_set_handler(Silence);
  player_ = mpv_->create();
  if (player_ == nullptr) return false;
  for (const auto& [name, value] : kOptions) mpv_->set_option_string(player_, name, value);
  if (picture_ == Picture::kStored) {
    for (const auto& [name, value] : kStoredPictureOptions) {
      mpv_->set_option_string(player_, name, value);
    }
  }
  mpv_->set_option_string(player_, "audio-client-name", clientName.toUtf8().constData());
  if (mpv_->initialize(player_) < 0) return false;
  std::string software = MPV_RENDER_API_TYPE_SW;
  std::array<mpv_render_param, 2> parameters{
      {{MPV_RENDER_PARAM_API_TYPE, software.data()}, {MPV_RENDER_PARAM_INVALID, nullptr}}};
  if (mpv_->render_context_create(&renderer_, player_, parameters.data()) < 0) return false;
  mpv_->render_context_set_update_callback(
      renderer_,
      [](void* core) { static_cast<PlaybackCore*>(core)->Wake(&PlaybackCore::framePending_); },
      this);
  return true;
}

PlaybackCore::~PlaybackCore() {
  if (renderer_ != nullptr) mpv_->render_context_set_update_callback(renderer_, nullptr, nullptr);
  if (serving_.joinable()) {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
    }
    wake_.notify_one();
    serving_.join();
  }
  if (renderer_ != nullptr) mpv_->render_context_free(renderer_);
  if (player_ == nullptr) return;
  mpv_->set_wakeup_callback(player_, nullptr, nullptr);
  mpv_->terminate_destroy(player_);
}

void PlaybackCore::Start(const QString& path) {
  if (Load(path)) setPaused(false);
}

void PlaybackCore::StartPaused(const QString& path) {
  setPaused(true);  // before the file is opened, so that its first picture stays
  Load(path);
}

bool PlaybackCore::Load(const QString& path) {
  if (!Usable()) return false;
  const bool hasRoom = HasRoomForThreads();
  // Reset before the command is sent, since the serving thread may set the new values at once.
  const double position = position_.exchange(0);
  const double duration = duration_.exchange(0);
  if (!hasRoom) {
    Stop();
    return false;
  }
  // The player might take a relative path for a URL, or "-" for standard input.
  const std::string file = ToNarrow(QDir::current().absoluteFilePath(path));
  setSilent(false);
  if (!Command({"loadfile", file.c_str(), "replace"}, kStartReplyId)) {
    position_ = position;
    duration_ = duration;
    return false;
  }
  active_ = true;
  ++unansweredStarts_;
  seeking_ = true;
  ForgetSeeks();
  return true;
}

void PlaybackCore::Stop() {
  if (!Usable()) return;
  active_ = false;
  ForgetSeeks();
  Command({"stop"});
}

bool PlaybackCore::Command(std::initializer_list<const char*> words, std::uint64_t replyId) {
  std::vector<const char*> arguments(words);
  arguments.push_back(nullptr);
  return mpv_->command_async(player_, replyId, arguments.data()) >= 0;
}

void PlaybackCore::setPaused(bool paused) {
  if (!Usable()) return;
  if (!paused) {
    steps_ = 0;
    // This ends a step that is under way, which would otherwise pause the player when it is done.
    if (paused_) SetFlag("pause", true);
    setSilent(false);
    // After a step beyond the last picture the player would otherwise wait for the sound for ever.
    if (std::exchange(stepped_, false)) SeekTo(position_);
  }
  paused_ = paused;
  SetFlag("keep-open", paused);  // keeps the last picture, even after a step beyond it
  SetFlag("pause", paused);
}

// Switches the sound off or on. With sound, the player reports the sound's time as that of the
// file's last picture. So a paused file has no sound from its first seek or step on.
void PlaybackCore::setSilent(bool silent) {
  if (silent_ == silent) return;
  silent_ = silent;
  const char* track = silent ? "no" : "auto";
  mpv_->set_property_async(player_, 0, "aid", MPV_FORMAT_STRING, &track);
}

void PlaybackCore::SetFlag(const char* name, bool value) {
  int flag = value ? 1 : 0;
  mpv_->set_property_async(player_, 0, name, MPV_FORMAT_FLAG, &flag);
}

void PlaybackCore::Seek(double seconds) {
  if (!active_) return;
  sought_ = nextSeek_ = seconds;
  steps_ = 0;
  if (!seeking_) SeekNext();
}

void PlaybackCore::Step(int pictures) {
  if (!active_) return;
  if (!paused_) setPaused(true);
  steps_ += pictures;
  if (!seeking_) SeekNext();
}

void PlaybackCore::SeekTo(double seconds) {
  constexpr int kMicroseconds = 6;
  const QByteArray place = QByteArray::number(seconds, 'f', kMicroseconds);
  if (Command({"seek", place.constData(), "absolute+exact"}, kSeekReplyId)) seeking_ = true;
}

void PlaybackCore::ForgetSeeks() {
  sought_.reset();
  nextSeek_.reset();
  steps_ = 0;
  stepped_ = false;
}

void PlaybackCore::ObservePosition() {
  mpv_->observe_property(player_, kPositionReplyId, kPosition, MPV_FORMAT_DOUBLE);
}

// The player reports the new position by itself only some time after a seek, and reports no
// position that equals the last one that it has reported.
void PlaybackCore::AskForSoughtPosition() {
  // If a start is unanswered, the seek was the former file's.
  if (unansweredStarts_ > 0) return;
  mpv_->unobserve_property(player_, kPositionReplyId);
  ObservePosition();
  if (mpv_->get_property_async(player_, kSoughtReplyId, kPosition, MPV_FORMAT_DOUBLE) < 0) {
    SeekNext();
  }
}

void PlaybackCore::SeekNext() {
  seeking_ = false;
  if (paused_ && hasPictures_ && !silent_ && (nextSeek_ || steps_ != 0)) {
    setSilent(true);
    // A step right after the sound is switched off could go to the end of the file.
    if (!nextSeek_) SeekTo(position_);
    if (seeking_) return;
  }
  if (nextSeek_) {
    if (paused_) SetFlag("pause", true);  // ends steps that are under way
    SeekTo(*std::exchange(nextSeek_, {}));
  } else if (!hasPictures_) {
    steps_ = 0;  // the player would ignore a step back, and report no end of it
  } else if (steps_ < 0) {
    ++steps_;
    seeking_ = Command({"frame-back-step"}, kSeekReplyId);
  } else {
    // The player itself counts the steps forward that it still has to do.
    for (; steps_ > 0; --steps_) stepped_ = Command({"frame-step"}) || stepped_;
  }
  if (!seeking_) sought_.reset();
}

void PlaybackCore::setVolume(int volume) {
  if (!Usable()) return;
  double value = volume;
  mpv_->set_property_async(player_, 0, "volume", MPV_FORMAT_DOUBLE, &value);
}

// Attenuates the opposite channel.
void PlaybackCore::setBalance(int balance) {
  if (!Usable()) return;
  constexpr double kFull = 100;
  const double left = balance > 0 ? 1 - balance / kFull : 1;
  const double right = balance < 0 ? 1 + balance / kFull : 1;
  const QByteArray filter = balance == 0 ? QByteArray()
                                         : u"lavfi=[aformat=channel_layouts=stereo,"
                                           "pan=stereo|c0=%1*c0|c1=%2*c1]"_s.arg(left)
                                               .arg(right)
                                               .toLatin1();
  Command({"af", "set", filter.constData()});
}

void PlaybackCore::ObserveProperties() {
  ObservePosition();
  for (const char* name : {kDuration, kStoredWidth, kStoredHeight}) {
    mpv_->observe_property(player_, 0, name, MPV_FORMAT_DOUBLE);
  }
  mpv_->observe_property(player_, 0, kCoverPicture, MPV_FORMAT_FLAG);
  if (picture_ == Picture::kFitted) {
    mpv_->observe_property(player_, 0, kRotation, MPV_FORMAT_DOUBLE);
  }
  mpv_->set_wakeup_callback(
      player_,
      [](void* core) { static_cast<PlaybackCore*>(core)->Wake(&PlaybackCore::eventsPending_); },
      this);
}

void PlaybackCore::DrainEvents() {
  for (const mpv_event* event = mpv_->wait_event(player_, 0); event->event_id != MPV_EVENT_NONE;
       event = mpv_->wait_event(player_, 0)) {
    if (event->event_id == MPV_EVENT_PROPERTY_CHANGE ||
        event->event_id == MPV_EVENT_GET_PROPERTY_REPLY) {
      const auto& property = *static_cast<mpv_event_property*>(event->data);
      const bool isKnown = event->error >= 0 && property.format == MPV_FORMAT_DOUBLE;
      if (std::strcmp(property.name, kCoverPicture) == 0) {
        hasPictures_ =
            property.format == MPV_FORMAT_FLAG && *static_cast<const int*>(property.data) == 0;
      }
      TakeProperty(property.name, isKnown ? static_cast<const double*>(property.data) : nullptr);
      if (event->reply_userdata == kSoughtReplyId) {
        Post([this] {
          if (unansweredStarts_ == 0) SeekNext();
        });
      }
    } else if (event->event_id == MPV_EVENT_COMMAND_REPLY) {
      if (event->reply_userdata == kStartReplyId) Post([this] { --unansweredStarts_; });
      if (event->reply_userdata == kSeekReplyId && event->error < 0) Post([this] { SeekNext(); });
    } else if (event->event_id == MPV_EVENT_PLAYBACK_RESTART) {
      // A file has been opened or a seek done.
      Post([this] { AskForSoughtPosition(); });
    } else if (event->event_id == MPV_EVENT_START_FILE) {
      position_ = 0;
      duration_ = 0;
    } else if (event->event_id == MPV_EVENT_FILE_LOADED) {
      // A duration equal to the last file's isn't reported as a change.
      mpv_->get_property_async(player_, 0, kDuration, MPV_FORMAT_DOUBLE);
    } else if (event->event_id == MPV_EVENT_IDLE) {
      // If a start is unanswered, this is the former file's end.
      Post([this] {
        if (unansweredStarts_ > 0) return;
        active_ = false;
        ForgetSeeks();
      });
    }
  }
  TakeSize();
}

void PlaybackCore::TakeProperty(const char* name, const double* number) {
  const double value = number == nullptr ? 0 : *number;
  if (std::strcmp(name, kPosition) == 0) {
    position_ = value;
  } else if (std::strcmp(name, kDuration) == 0) {
    if (number != nullptr) duration_ = value;
  } else if (std::strcmp(name, kStoredWidth) == 0) {
    storedWidth_ = static_cast<int>(value);
  } else if (std::strcmp(name, kStoredHeight) == 0) {
    storedHeight_ = static_cast<int>(value);
  } else if (std::strcmp(name, kRotation) == 0) {
    constexpr int kQuarterTurn = 90;
    const int degrees = static_cast<int>(value);
    turn_ = degrees % kQuarterTurn == 0 ? QTransform().rotate(degrees) : QTransform();
    Wake(&PlaybackCore::redraw_);
  }
}

// A frame may come before the size of the picture, so it is rendered again.
void PlaybackCore::TakeSize() {
  const QSize size(storedWidth_, storedHeight_);
  {
    const std::lock_guard lock(mutex_);
    if (size == size_) return;
    size_ = size;
    redraw_ = true;
    if (size.isEmpty()) shown_ = {};
  }
  PostChange();
}

// Has more of a stored picture rendered than is visible, so that scrolling needn't wait for it.
void PlaybackCore::setVisibleSize(QSize visible) {
  constexpr int kMargin = 128;
  constexpr int kStep = 256;
  const auto roundUp = [](int length) { return (length + kMargin + kStep - 1) / kStep * kStep; };
  const QSize wanted = picture_ == Picture::kFitted
                           ? visible
                           : QSize(roundUp(visible.width()), roundUp(visible.height()));
  {
    const std::lock_guard lock(mutex_);
    if (wanted == wanted_) return;
    wanted_ = wanted;
    redraw_ = true;
  }
  wake_.notify_one();
}

void PlaybackCore::Wake(bool PlaybackCore::*pending) {
  {
    const std::lock_guard lock(mutex_);
    this->*pending = true;
  }
  wake_.notify_one();
}

void PlaybackCore::ServePlayer() {
  std::unique_lock lock(mutex_);
  while (true) {
    wake_.wait(lock, [this] { return framePending_ || eventsPending_ || redraw_ || ending_; });
    if (ending_) return;
    const bool drains = std::exchange(eventsPending_, false);
    const bool redraws = std::exchange(redraw_, false);
    framePending_ = false;
    lock.unlock();
    if (drains) DrainEvents();
    const bool hasFrame = (mpv_->render_context_update(renderer_) & MPV_RENDER_UPDATE_FRAME) != 0;
    if (hasFrame || redraws) RenderFrame();
    lock.lock();
  }
}

QSize PlaybackCore::RenderedSize() const {
  if (picture_ == Picture::kStored || size_.isEmpty()) return size_.boundedTo(wanted_);
  return turn_.mapRect(QRect(QPoint(), wanted_)).size();
}

void PlaybackCore::RenderFrame() {
  QSize size;
  {
    const std::lock_guard lock(mutex_);
    size = RenderedSize();
  }
  int skips = size.isEmpty() ? 1 : 0;
  if (skips == 0 && drawing_.size() != size) drawing_ = QImage(size, QImage::Format_RGB32);
  std::array<int, 2> extent{drawing_.width(), drawing_.height()};
  std::string format = "bgr0";
  auto stride = static_cast<std::size_t>(drawing_.bytesPerLine());
  std::array<mpv_render_param, 6> parameters{{{MPV_RENDER_PARAM_SW_SIZE, extent.data()},
                                              {MPV_RENDER_PARAM_SW_FORMAT, format.data()},
                                              {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                              {MPV_RENDER_PARAM_SW_POINTER, drawing_.bits()},
                                              {MPV_RENDER_PARAM_SKIP_RENDERING, &skips},
                                              {MPV_RENDER_PARAM_INVALID, nullptr}}};
  mpv_->render_context_render(renderer_, parameters.data());
  if (skips != 0) return;
  MakeOpaque(drawing_);
  drawing_ = drawing_.transformed(turn_);
  {
    const std::lock_guard lock(mutex_);
    if (RenderedSize() != size) return;
    std::swap(shown_, drawing_);
  }
  PostChange();
}

void PlaybackCore::PostChange() {
  if (changePosted_.exchange(true)) return;
  Post([this] {
    changePosted_ = false;
    emit PictureChanged();
  });
}

template <typename Task>
void PlaybackCore::Post(Task task) {
  QMetaObject::invokeMethod(this, task, Qt::QueuedConnection);
}

QRegion PlaybackCore::Draw(QPainter& painter, const QRegion& region) {
  const std::lock_guard lock(mutex_);
  if (shown_.isNull()) return region;
  const QRegion covered = region & shown_.rect();
  for (const QRect& part : covered) painter.drawImage(part, shown_, part);
  return region - covered;
}

}  // namespace kelvane
