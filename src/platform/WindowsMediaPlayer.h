#pragma once

#include <optional>

#include "platform/Control.h"

namespace kelvane {

class PlaybackCore;

// A player without any controls of its own over the picture: natural size, one pixel of the source
// to one of the screen, from the top left corner; black where there is no picture. What it offers
// the user is a context menu on the picture. A file that can't be played shows nothing and says
// nothing.
//
// The player behind it is made at the first URL; where it can't be made, nothing plays and the next
// URL tries again. No call waits for it.
class WindowsMediaPlayer : public Control {
  Q_OBJECT
 public:
  WindowsMediaPlayer(Container& container, const QString& name);

  // The path of the file; a new one, and the same one again, starts by itself, from the beginning
  // and for one pass. An empty one unloads.
  QString URL() const { return url_; }
  void setURL(const QString& url);

  class Controls {
   public:
    explicit Controls(WindowsMediaPlayer& player) : player_(player) {}
    void play();
    void pause();
    void stop();
    // "mm:ss", or "hh:mm:ss" from an hour on; empty while nothing is loaded.
    QString currentPositionString() const;

   private:
    WindowsMediaPlayer& player_;
  };

  class Settings {
   public:
    explicit Settings(WindowsMediaPlayer& player) : player_(player) {}
    int volume() const { return volume_; }
    // 0 to 100; another is refused.
    void setVolume(int volume);
    int balance() const { return balance_; }
    // -100 to 100; another is refused.
    void setBalance(int balance);
    // The name by which the sound system knows the player; to be set before the first URL.
    const QString& clientName() const { return clientName_; }
    void setClientName(const QString& name) { clientName_ = name; }

   private:
    WindowsMediaPlayer& player_;
    int volume_ = 50;
    int balance_ = 0;
    QString clientName_;
  };

  Controls controls{*this};
  Settings settings{*this};

  // Of the loaded file, in seconds; 0 until it is known; none while nothing is loaded.
  std::optional<double> currentMediaDuration() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void MakeCore();
  // Of the picture, from its top left corner to the last pixel that no box cuts off.
  QSize VisibleExtent() const;

  QString url_;
  PlaybackCore* core_ = nullptr;
};

}  // namespace kelvane
