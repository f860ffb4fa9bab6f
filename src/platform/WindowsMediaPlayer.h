#pragma once

#include <optional>
#include <thread>

#include "platform/Control.h"

namespace kelvane {

class PlaybackCore;

// A player whose only controls are in a context menu: play, pause, stop, skips of ten seconds,
// steps of a picture, and back to the beginning. The picture has its natural size, one source
// pixel to one screen pixel, at the top left corner, unless setFitsBox was called; the rest is
// black. A file that can't be played shows nothing, without a message.
//
// libmpv's player is made when a file is set and no player exists; if that fails, nothing plays.
// Only making libmpv's player and ending it may block. Belongs to the user-interface thread.
class WindowsMediaPlayer : public Control {
  Q_OBJECT
 public:
  WindowsMediaPlayer(Container& container, const QString& name);

  // The path of the file. Setting one, even the same again, plays it once from its beginning.
  // Setting an empty one unloads the file.
  QString URL() const { return url_; }
  void setURL(const QString& url);
  // Sets a file as setURL does, but shows its first picture, paused.
  void OpenPaused(const QString& url);

  // Begins to load libmpv on a thread, so that the first file needn't wait for that. To be called
  // when a file is likely to come soon.
  void Prepare();

  // Scales the picture to fit the control and centres it, with the file's pixel aspect ratio and
  // rotation. Must be called before the first file is set.
  void setFitsBox() { fitsBox_ = true; }

  class Controls {
   public:
    explicit Controls(WindowsMediaPlayer& player) : player_(player) {}
    // Resumes a paused file, or restarts an ended or stopped one. No effect without a URL.
    void play();
    // No effect unless a file is being opened or played.
    void pause();
    // Ends playback. URL stays.
    void stop();
    // "mm:ss", or "hh:mm:ss" from an hour on; empty while URL is empty.
    QString currentPositionString() const;
    // In seconds; 0 while the position is unknown or URL is empty. Until a seek is done, this is
    // the time to which it goes.
    double currentPosition() const;
    // Goes to the first picture at or after `seconds`, or else to the last one, and stays paused or
    // playing. Doesn't wait for that; of several calls that come during one seek only the last is
    // done. An ended or stopped file is opened at that picture, paused. A value below 0
    // means 0; one that isn't finite has no effect, and neither has a call without a URL.
    void setCurrentPosition(double seconds);
    // Goes `seconds` on, or back if `seconds` is negative, as setCurrentPosition does, at most to
    // the end or the beginning. No effect unless a file is being opened, plays or is paused.
    void skip(double seconds);
    // Pauses the file and goes `pictures` on, or back if `pictures` is negative, at most to the
    // last or first one. No effect unless a file is being opened, plays or is paused.
    void step(int pictures);
    // Whether a file is being opened or played and isn't paused. False after its end.
    bool playing() const;

   private:
    bool active() const;

    WindowsMediaPlayer& player_;
  };

  class Settings {
   public:
    explicit Settings(WindowsMediaPlayer& player) : player_(player) {}
    int volume() const { return volume_; }
    // 0 to 100; any other value has no effect.
    void setVolume(int volume);
    int balance() const { return balance_; }
    // From -100 (left channel alone) to 100 (right one alone); any other value has no effect.
    void setBalance(int balance);

   private:
    WindowsMediaPlayer& player_;
    int volume_ = 50;
    int balance_ = 0;
  };

  Controls controls{*this};
  Settings settings{*this};

  // The length of the file in seconds, 0 until it is known; std::nullopt while URL is empty.
  std::optional<double> currentMediaDuration() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void MakeCore();
  // Sets URL. If it is empty, stops the player; otherwise makes a player unless there is a usable
  // one. Returns whether there is a file to start.
  bool TakeURL(const QString& url);
  // The size of this control from its top left corner to the last pixel that no container clips.
  QSize VisibleExtent() const;

  QString url_;
  bool fitsBox_ = false;
  PlaybackCore* core_ = nullptr;
  std::jthread preparing_;
};

}  // namespace kelvane
