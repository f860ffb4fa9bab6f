#pragma once

#include <atomic>
#include <string>
#include <thread>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// A window manager, served by a thread of its own, that keeps its windows at the size which it has
// chosen for them and answers each request for another with that size, as tiling managers do.
class HoldingManager {
 public:
  // The display must have no window manager.
  HoldingManager(const std::string& display, QSize held);
  HoldingManager(const HoldingManager&) = delete;
  HoldingManager& operator=(const HoldingManager&) = delete;
  ~HoldingManager();

  // Gives the window another size, as a user who moves its edge does.
  void Give(WindowId window, QSize size);
  // How many requests have been answered.
  int Requests() const { return requests_; }

 private:
  void Serve();
  void TakeOn(WindowId window);
  void Place(WindowId window);
  void Answer(const xcb_configure_request_event_t& request);

  xcb_connection_t* connection_;
  WindowId root_ = 0;
  xcb_atom_t clientList_ = 0;
  std::atomic<QSize> held_;
  std::atomic<int> requests_ = 0;
  std::jthread server_;
};

}  // namespace kelvane::desktop
