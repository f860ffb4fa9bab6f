#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <initializer_list>
#include <mutex>
#include <thread>

class QPainter;
class QRegion;
struct mpv_handle;
struct mpv_render_context;

namespace kelvane {

struct PlayerLibrary;

// Plays one file at a time. Its sound goes to the system's device, if there is one. The picture, as
// it is stored and with square pixels, is drawn into memory on a thread of its own. Prints nothing.
//
// Everything public belongs to the user-interface thread, and no call of it waits for the player.
class PlaybackCore : public QObject {
  Q_OBJECT
 public:
  // Isn't usable if the player can't be made. The sound system knows the player as `clientName`.
  PlaybackCore(QObject* parent, const QString& clientName);
  // Waits for the player's threads to end.
  ~PlaybackCore() override;

  // False if nothing can be played; everything else has no effect then.
  bool Usable() const { return serving_.joinable(); }

  // Plays a file from its beginning instead of the one that was playing. If the system has no room
  // for the threads that a file takes, it only ends that one; if the player takes no more commands,
  // it has no effect.
  void Start(const QString& path);
  void Stop();
  void setPaused(bool paused);
  // 0 to 100.
  void setVolume(int volume);
  // -100, left alone, to 100, right alone.
  void setBalance(int balance);

  // Whether a file is being opened or played, paused or not.
  bool Active() const { return active_; }
  // In seconds; 0 while unknown.
  double Position() const { return position_; }
  double Duration() const { return duration_; }

  // The size of the part of the picture that can be seen, from its top left corner. Little more
  // than that is drawn.
  void setVisible(QSize visible);
  // Draws the part of the current picture that lies in `region`, with the picture's top left corner
  // at (0, 0). Returns the part of the region that it doesn't cover.
  QRegion Draw(QPainter& painter, const QRegion& region);

 signals:
  // The picture, or whether there is one, has changed since it was last drawn.
  void PictureChanged();

 private:
  bool MakePlayer(const QString& clientName);
  // Returns whether the player has accepted the command and will answer.
  bool Command(std::initializer_list<const char*> words, std::uint64_t answer = 0);
  void ObserveProperties();
  // Sets the flag and wakes the serving thread. Called on any thread of the player.
  void Wake(bool PlaybackCore::*waits);

  // On the serving thread.
  void ServePlayer();
  void DrainEvents();
  void TakeProperty(const char* name, const double* number);
  void TakeSize();
  void RenderFrame();
  void TellChange();
  // Has `news` called on the user-interface thread.
  template <typename News>
  void Tell(News news);

  const PlayerLibrary* const mpv_;  // null where it isn't there: then nothing is ever played
  mpv_handle* player_ = nullptr;
  mpv_render_context* renderer_ = nullptr;
  bool active_ = false;
  int unansweredStarts_ = 0;
  std::atomic<double> position_ = 0;
  std::atomic<double> duration_ = 0;

  std::thread serving_;
  int storedWidth_ = 0;  // the serving thread's alone
  int storedHeight_ = 0;
  std::mutex mutex_;  // guards what follows
  std::condition_variable wake_;
  bool frameWaits_ = false;
  bool eventsWait_ = false;
  bool redraw_ = false;
  bool ending_ = false;
  QSize size_;      // of the pictures to come, whole; empty while unknown
  QSize wanted_;    // the part of them to make, which may be larger than they are
  QImage shown_;    // null while there is none
  QImage drawing_;  // the serving thread's alone between two swaps
  std::atomic<bool> changeTold_ = false;
};

}  // namespace kelvane
