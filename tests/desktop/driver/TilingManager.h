#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// A tiling window manager on a thread of its own: it chooses the size of the windows, and answers a
// window's request for another size by repeating the chosen one.
class TilingManager {
 public:
  // The display must have no window manager.
  TilingManager(const std::string& display, QSize size);
  TilingManager(const TilingManager&) = delete;
  TilingManager& operator=(const TilingManager&) = delete;
  ~TilingManager();

  // Gives the window another size, as if the user moved its edge.
  void Resize(WindowId window, QSize size);
  // Answers the next request for another size with `size`, and from then on repeats that one.
  void GrantNext(QSize size) { granted_ = size; }
  // How many requests for another size the manager has answered.
  int Requests() const { return requests_; }

 private:
  void HandleEvents();
  void Manage(WindowId window);
  void Place(WindowId window);
  // Asks the window to close if the message is a request for that.
  void HandleMessage(const xcb_client_message_event_t& message);
  void Answer(const xcb_configure_request_event_t& request);

  xcb_connection_t* connection_;
  xcb_atom_t clientList_;
  xcb_atom_t closeWindow_;
  xcb_atom_t protocols_;
  xcb_atom_t deleteWindow_;
  WindowId root_ = 0;
  std::atomic<QSize> size_;
  std::atomic<QSize> granted_;  // invalid if the next request is refused
  std::atomic<int> requests_ = 0;
  std::jthread thread_;
};

}  // namespace kelvane::desktop
