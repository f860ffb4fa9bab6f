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

enum PointerButton : std::uint8_t { kLeftButton = 1, kRightButton = 3, kWheelDown = 5 };

// X key symbols. Those of printable characters are the characters' own numbers.
enum Key : std::uint32_t {
  kTab = 0xff09,
  kReturn = 0xff0d,
  kEscape = 0xff1b,
  kControl = 0xffe3,
  kShift = 0xffe1
};

// What a user sees and does on an X display: managed windows, pictures of the screen, pointer and
// keyboard. All places are in pixels of the screen.
class Screen {
 public:
  // Throws std::runtime_error if the display doesn't answer.
  explicit Screen(const std::string& display);
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen();

  // The managed windows, oldest first. Minimised ones are among them.
  QList<WindowId> Windows() const;
  QString Title(WindowId window) const;
  // The oldest window of exactly this title.
  std::optional<WindowId> Find(const QString& title) const;
  // Waits for a window of this title. Returns 0 if none comes.
  WindowId Await(const QString& title, std::chrono::milliseconds patience = kPatience) const;
  // Waits for a window that isn't among `known`. Returns 0 if none comes.
  WindowId AwaitNew(const QList<WindowId>& known) const;
  bool Exists(WindowId window) const { return Windows().contains(window); }

  // The place of the window without the window manager's frame.
  QRect Place(WindowId window) const;
  bool Minimised(WindowId window) const;
  bool Active(WindowId window) const;

  // Sets the X resources for programs that start later, in lines such as "Xft.dpi:\t192".
  void SetResources(const QByteArray& resources);

  // Each of these four asks the window manager and returns before the manager has answered.
  void Minimise(WindowId window);
  void Activate(WindowId window);
  void Resize(WindowId window, QSize size);
  void Close(WindowId window);
  // Closes the connection between the window's program and the X server.
  void Disconnect(WindowId window);

  // Outside the screen a picture is black. Throws std::runtime_error if the display is gone.
  QImage Picture() const;
  QImage Picture(const QRect& part) const;
  // Waits until the picture no longer changes, and returns it. Throws std::runtime_error if it
  // never stops changing.
  QImage Still() const { return Still(QRect({}, size_)); }
  QImage Still(const QRect& part) const;
  QRgb Pixel(QPoint place) const;

  void MovePointer(QPoint place);
  void Press(PointerButton button);
  void Release(PointerButton button);
  void Click(QPoint place, PointerButton button = kLeftButton);
  // Drags with the left button from `place` by `way`, in two moves of the pointer.
  void Drag(QPoint place, QPoint way);
  // Clicks with the right button and waits for the menu that this opens. Returns the menu's place,
  // which is empty if none comes.
  QRect OpenMenu(QPoint place);
  // Presses and releases a key while the key `modifier` is held down, unless that is 0.
  void PressKey(std::uint32_t key, std::uint32_t modifier = 0);
  // Types the text, or pastes it if the keyboard lacks a key for one of its characters.
  void Type(const QString& text);

 private:
  struct KeyCode {
    std::uint8_t code;
    bool shifted;
  };

  // The visible windows that the window manager doesn't manage, such as menus.
  QList<WindowId> PopUps() const;
  xcb_atom_t Atom(const char* name) const;
  QByteArray Property(WindowId window, const char* name) const;
  void SendMessage(WindowId window, const char* type, std::uint32_t first,
                   std::uint32_t second = 0);
  void SendPointerEvent(std::uint8_t type, std::uint8_t detail, QPoint place = {});
  void SendEvent(std::uint8_t type, std::uint8_t detail, QPoint place = {});
  // Waits until the X server has handled all requests.
  void Sync() const;
  void ReadKeyboard();

  xcb_connection_t* connection_;
  WindowId root_ = 0;
  QSize size_;
  QHash<std::uint32_t, KeyCode> keyboard_;
};

}  // namespace kelvane::desktop
