#pragma once

#include <xcb/xcb.h>

#include <QHash>
#include <QImage>
#include <QList>
#include <QRect>
#include <QString>
#include <chrono>
#include <optional>

#include "desktop/driver/Wait.h"

namespace kelvane::desktop {

using WindowId = xcb_window_t;

enum PointerButton : std::uint8_t { kLeftButton = 1, kMiddleButton = 2, kRightButton = 3 };

// Keys by the X server's symbols.
enum Key : std::uint32_t { kReturn = 0xff0d, kEscape = 0xff1b, kControl = 0xffe3, kShift = 0xffe1 };

// A user's eyes and hands on one X display: the windows that the window manager knows, their titles
// and places, pictures of the screen, and a real pointer and keyboard. All places are screen
// pixels.
class Screen {
 public:
  // Throws std::runtime_error if the display doesn't answer.
  explicit Screen(const std::string& display);
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen();

  // The windows under management, oldest first, minimised ones included.
  QList<WindowId> Windows() const;
  QString Title(WindowId window) const;
  // The oldest window of exactly this title.
  std::optional<WindowId> Find(const QString& title) const;
  // Waits for a window of this title; 0 if none comes.
  WindowId Await(const QString& title, std::chrono::milliseconds patience = kPatience) const;
  // Waits for a window that isn't among `known`; 0 if none comes.
  WindowId AwaitNew(const QList<WindowId>& known,
                    std::chrono::milliseconds patience = kPatience) const;
  bool Exists(WindowId window) const { return Windows().contains(window); }

  // The window's inside, without the manager's frame.
  QRect Place(WindowId window) const;
  bool Minimised(WindowId window) const;
  bool Active(WindowId window) const;

  // What the programs that are started from now on find among the display's resources, a line as in
  // "Xft.dpi:\t192"; nothing for no such line.
  void SetResources(const QByteArray& resources);

  // What the manager's buttons and a task bar do. Each returns once it was asked for, not done.
  void Minimise(WindowId window);
  void Activate(WindowId window);
  void Resize(WindowId window, QSize size);
  void Close(WindowId window);
  // Ends the connection of the window's program to the display, as the display's own end does.
  void Disconnect(WindowId window);

  // What lies beyond the screen is black. Throws std::runtime_error where the display is gone.
  QImage Picture() const;
  QImage Picture(const QRect& part) const;
  // Waits until nothing has changed there for a moment, as after what the pointer or a window has
  // just done. Throws std::runtime_error where it never rests.
  QImage Still() const { return Still(QRect({}, size_)); }
  QImage Still(const QRect& part) const;
  QRgb Pixel(QPoint place) const;

  // The picture that the pointer shows at this moment, as wide and as high as what is drawn in it.
  QSize PointerShape() const;

  void MovePointer(QPoint place);
  void Press(PointerButton button);
  void Release(PointerButton button);
  void Click(QPoint place, PointerButton button = kLeftButton);
  // Presses at `place`, goes `way` from there in two moves, as a hand does, and lets go.
  void Drag(QPoint place, QPoint way, PointerButton button = kLeftButton);
  // Clicks there with the right button and waits for the menu that it opens; the menu's place,
  // empty if none comes.
  QRect OpenMenu(QPoint place);
  // A key alone, or with one held down.
  void Strike(std::uint32_t key, std::uint32_t held = 0);
  // Types what the keyboard has keys for, and pastes any other text.
  void Type(const QString& text);

 private:
  struct Stroke {
    std::uint8_t code;
    bool shifted;
  };

  // The windows on show that no manager looks after, as menus are.
  QList<WindowId> PopUps() const;
  xcb_atom_t Atom(const char* name) const;
  QByteArray Property(WindowId window, const char* name) const;
  void Ask(WindowId window, const char* request, std::uint32_t first, std::uint32_t second = 0);
  void Handle(std::uint8_t type, std::uint8_t detail, QPoint place = {});
  void Send(std::uint8_t type, std::uint8_t detail, QPoint place = {});
  void Settle() const;
  void ReadKeyboard();

  xcb_connection_t* connection_;
  WindowId root_ = 0;
  QSize size_;
  QHash<std::uint32_t, Stroke> keyboard_;
  mutable QHash<QByteArray, xcb_atom_t> atoms_;
};

}  // namespace kelvane::desktop
