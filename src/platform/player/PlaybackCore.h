#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QTransform>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <initializer_list>
#include <mutex>
#include <optional>
#include <thread>

class QPainter;
class QRegion;
struct mpv_handle;
struct mpv_render_context;

namespace kelvane {

struct PlayerLibrary;

// Plays one file at a time, with sound if the system has a sound device. The picture is rendered to
// memory on a thread of its own. Prints nothing.
//
// Public members belong to the user-interface thread. Only the constructor and the destructor may
// wait for the player.
class PlaybackCore : public QObject {
  Q_OBJECT
 public:
  // kStored: the pixels as they are stored, square and unrotated. kFitted: the whole picture
  // between black bars, scaled to fit a box, with the file's pixel aspect ratio and its rotation,
  // if that is by quarter turns.
  enum class Picture { kStored, kFitted };

  // Loads libmpv. Without this call, the constructor of the first object does. For any thread.
  static void LoadLibrary();

  // Isn't usable if the player can't be made. The sound system knows the player as `clientName`.
  PlaybackCore(QObject* parent, const QString& clientName, Picture picture);
  // Waits for the player's threads to end.
  ~PlaybackCore() override;

  // False if nothing can be played; all other functions have no effect then.
  bool Usable() const { return serving_.joinable(); }

  // Plays a file instead of the current one, from its beginning and unpaused. If the system can't
  // start the threads that a file takes, the call only ends the current file; if the player's
  // command queue is full, the current file stays.
  void Start(const QString& path);
  // Does the same, but pauses first, so that the file's first picture stays.
  void StartPaused(const QString& path);
  // Ends the file. Active is false at once.
  void Stop();
  void setPaused(bool paused);
  // Goes to the first picture at or after `seconds`, or else to the last one, and stays paused or
  // playing. `seconds` must be finite and >= 0. While the file is still being opened or another
  // seek is under way, the seek is kept for later; of several kept ones only the last is done. No
  // effect unless Active.
  void Seek(double seconds);
  // Pauses the file and goes `pictures` on, or back if `pictures` is negative, at most to the last
  // or first one. Steps that come while a picture is sought are done from that picture. No effect
  // unless Active. A file without a picture is only paused.
  void Step(int pictures);
  // 0 to 100; the caller checks the range.
  void setVolume(int volume);
  // From -100 (left channel alone) to 100 (right one alone); the caller checks the range.
  void setBalance(int balance);

  // Whether a file is being opened or played, paused or not.
  bool Active() const { return active_; }
  bool Playing() const { return active_ && !paused_; }
  // In seconds; 0 while unknown. While a picture is sought, the position is the one that Seek was
  // given. The duration stays after the file has ended.
  double Position() const { return sought_.value_or(position_); }
  double Duration() const { return duration_; }

  // Sets the visible size of a stored picture, from its top left corner, or the size of the box of
  // a fitted one, in pixels. Little more than that is rendered.
  void setVisibleSize(QSize visible);
  // Draws the part of the current picture that is inside `region`, with the picture's top left
  // corner at (0, 0). Returns the part of the region outside the picture.
  QRegion Draw(QPainter& painter, const QRegion& region);

 signals:
  // The picture may have changed. Emitted on the user-interface thread.
  void PictureChanged();

 private:
  bool MakePlayer(const QString& clientName);
  // Returns whether the player has queued the command and will reply with `replyId`.
  bool Command(std::initializer_list<const char*> words, std::uint64_t replyId = 0);
  // Returns whether the player has queued the start.
  bool Load(const QString& path);
  void SetFlag(const char* name, bool value);
  // Called when no seek is under way any more. Begins the waiting seek, or else waiting steps.
  void SeekNext();
  void SeekTo(double seconds);
  void AskForSoughtPosition();
  void ForgetSeeks();
  void setSilent(bool silent);
  void ObservePosition();
  void ObserveProperties();
  // Sets the flag and wakes the serving thread. Thread-safe.
  void Wake(bool PlaybackCore::*pending);

  // On the serving thread.
  void ServePlayer();
  void DrainEvents();
  void TakeProperty(const char* name, const double* number);
  void TakeSize();
  void RenderFrame();
  // The size at which the next pictures are rendered, before they are turned; empty while the
  // size of the file's pictures is unknown. mutex_ must be locked.
  QSize RenderedSize() const;
  void PostChange();
  // Queues `task` to the user-interface thread.
  template <typename Task>
  void Post(Task task);

  const Picture picture_;
  const PlayerLibrary* const mpv_;  // null if libmpv can't be loaded: then nothing is played
  mpv_handle* player_ = nullptr;
  mpv_render_context* renderer_ = nullptr;
  bool active_ = false;
  bool paused_ = false;
  bool silent_ = false;
  int unansweredStarts_ = 0;
  bool seeking_ = false;            // or opening, or stepping back
  std::optional<double> nextSeek_;  // the time of the Seek that waits
  std::optional<double> sought_;    // the time of the last Seek, until seeking_ is false again
  int steps_ = 0;                   // how many steps wait; negative for steps back
  bool stepped_ = false;            // forward, since the file was last unpaused
  std::atomic<double> position_ = 0;
  std::atomic<double> duration_ = 0;
  std::atomic<bool> hasPictures_ = false;  // false for sound with a cover picture

  std::thread serving_;
  int storedWidth_ = 0;  // storedWidth_ to turn_ are for the serving thread alone
  int storedHeight_ = 0;
  QTransform turn_;   // of a fitted picture
  std::mutex mutex_;  // guards framePending_ to shown_
  std::condition_variable wake_;
  bool framePending_ = false;
  bool eventsPending_ = false;
  bool redraw_ = false;
  bool ending_ = false;
  QSize size_;      // full size of the next pictures; empty while unknown
  QSize wanted_;    // kStored: the part of them to render, may exceed size_; kFitted: their box
  QImage shown_;    // null while there is none
  QImage drawing_;  // for the serving thread alone
  std::atomic<bool> changePosted_ = false;
};

}  // namespace kelvane
