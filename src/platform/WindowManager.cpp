#include "platform/WindowManager.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>

namespace kelvane {

using namespace Qt::StringLiterals;

bool IsGeometryNotice(const QByteArray& eventType, const void* message) {
  if (eventType != "xcb_generic_event_t") return false;
  constexpr std::uint8_t kEventTypeMask = 0x7f;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  return (event->response_type & kEventTypeMask) == XCB_CONFIGURE_NOTIFY;
}

bool PointerButtonHeld() {
  if (QGuiApplication::platformName() != "xcb"_L1) return false;
  xcb_connection_t* connection =
      qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  const std::unique_ptr<xcb_query_pointer_reply_t, decltype(&std::free)> pointer(
      xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr),
      &std::free);
  constexpr unsigned kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
  return pointer != nullptr && (pointer->mask & kButtons) != 0;
}

}  // namespace kelvane
