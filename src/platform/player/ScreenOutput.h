#pragma once

#include <QImage>
#include <QPoint>
#include <QRegion>
#include <QSize>
#include <atomic>
#include <cstdint>

struct xcb_connection_t;

namespace kelvane {

// The short way of a picture to the screen: out of memory that the display server reads as well,
// straight into the window, without a paint. It goes by the toolkit's own connection, so that it
// and what the window paints come to the screen in the order in which they were asked for. Only an
// X server of this machine has it; elsewhere no picture is ever taken.
//
// Belongs to the user-interface thread, which makes and ends it, and to one that makes pictures and
// waits for them to be taken: setPlace and Put are never called at the same time.
class ScreenOutput {
 public:
  // As the player makes them: four bytes to a pixel, and no alpha.
  struct Picture {
    QImage image;
    std::uint32_t segment = 0;  // the server's number for its memory; 0 where it doesn't share it
  };

  ScreenOutput();
  ScreenOutput(const ScreenOutput&) = delete;
  ScreenOutput& operator=(const ScreenOutput&) = delete;
  ~ScreenOutput();

  // Where pictures go: their top left corner lies at `corner` of the window, and what isn't in
  // `region` of the window stays as it is. Nowhere with an empty region.
  void setPlace(std::uint32_t window, QPoint corner, const QRegion& region);

  // In shared memory where it can be, else in the program's own.
  Picture MakePicture(QSize size) const;
  // False where the picture can't go this way, and nothing was drawn.
  bool Put(const Picture& picture);
  // Sends what was put. May be called beside everything else.
  void Send();
  // Waits until the server has read all that was put. From then on it may be written over.
  void AwaitTaken();

 private:
  bool Takes(std::uint32_t window) const;
  // Without an image where the server doesn't take its memory.
  Picture MakeShared(QSize size) const;
  void setWindow(std::uint32_t window);

  xcb_connection_t* connection_ = nullptr;  // the toolkit's; null where there is no short way
  std::uint32_t window_ = 0;
  std::uint32_t graphics_ = 0;  // the server's number for what it draws with; 0 for none
  QPoint corner_;
  QRegion region_;
  std::atomic<bool> taking_ = false;
};

}  // namespace kelvane
