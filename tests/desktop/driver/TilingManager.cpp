#include "desktop/driver/TilingManager.h"

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <thread>

namespace kelvane::desktop {
namespace {

xcb_atom_t Atom(xcb_connection_t* connection, std::string_view name) {
  const auto length = static_cast<std::uint16_t>(name.size());
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
      xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, length, name.data()),
                            nullptr),
      &std::free);
  return atom->atom;
}

}  // namespace

TilingManager::TilingManager(const std::string& display, QSize size)
    : connection_(xcb_connect(display.c_str(), nullptr)),
      clientList_(Atom(connection_, "_NET_CLIENT_LIST")),
      closeWindow_(Atom(connection_, "_NET_CLOSE_WINDOW")),
      protocols_(Atom(connection_, "WM_PROTOCOLS")),
      deleteWindow_(Atom(connection_, "WM_DELETE_WINDOW")),
      size_(size) {
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const std::uint32_t redirect = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &redirect);
  xcb_flush(connection_);
  thread_ = std::jthread([this](const std::stop_token& stop) {
    while (!stop.stop_requested()) {
      HandleEvents();
      std::this_thread::sleep_for(1ms);
    }
  });
}

TilingManager::~TilingManager() {
  thread_.request_stop();
  thread_.join();
  xcb_disconnect(connection_);
}

void TilingManager::Resize(WindowId window, QSize size) {
  size_ = size;
  Place(window);
}

void TilingManager::HandleEvents() {
  while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
    constexpr std::uint8_t kWithoutSentFlag = 0x7f;
    const int type = event->response_type & kWithoutSentFlag;
    if (type == XCB_MAP_REQUEST) {
      Manage(reinterpret_cast<const xcb_map_request_event_t*>(event)->window);
    } else if (type == XCB_CONFIGURE_REQUEST) {
      Answer(*reinterpret_cast<const xcb_configure_request_event_t*>(event));
    } else if (type == XCB_CLIENT_MESSAGE) {
      HandleMessage(*reinterpret_cast<const xcb_client_message_event_t*>(event));
    }
    std::free(event);
  }
}

void TilingManager::Manage(WindowId window) {
  Place(window);
  xcb_map_window(connection_, window);
  constexpr std::uint8_t kBits = 32;
  xcb_change_property(connection_, XCB_PROP_MODE_APPEND, root_, clientList_, XCB_ATOM_WINDOW, kBits,
                      1, &window);
  xcb_flush(connection_);
}

void TilingManager::Place(WindowId window) {
  const QSize size = size_;
  const std::array values = {0U, 0U, static_cast<std::uint32_t>(size.width()),
                             static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(connection_, window,
                       XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                           XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
  xcb_flush(connection_);
}

void TilingManager::HandleMessage(const xcb_client_message_event_t& message) {
  if (message.type != closeWindow_) return;
  xcb_client_message_event_t request = message;
  request.type = protocols_;
  request.data.data32[0] = deleteWindow_;
  request.data.data32[1] = XCB_CURRENT_TIME;
  xcb_send_event(connection_, 0, request.window, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&request));
  xcb_flush(connection_);
}

void TilingManager::Answer(const xcb_configure_request_event_t& request) {
  if (const QSize granted = granted_.exchange(QSize()); granted.isValid()) {
    size_ = granted;
    Place(request.window);
    ++requests_;
    return;
  }
  const QSize size = size_;
  xcb_configure_notify_event_t answer{};
  answer.response_type = XCB_CONFIGURE_NOTIFY;
  answer.event = request.window;
  answer.window = request.window;
  answer.width = static_cast<std::uint16_t>(size.width());
  answer.height = static_cast<std::uint16_t>(size.height());
  xcb_send_event(connection_, 0, request.window, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&answer));
  xcb_flush(connection_);
  ++requests_;
}

}  // namespace kelvane::desktop
