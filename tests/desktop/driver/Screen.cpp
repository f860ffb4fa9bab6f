#include "desktop/driver/Screen.h"

#include <xcb/xtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <thread>

namespace kelvane::desktop {
namespace {

template <typename Reply>
auto Own(Reply* reply) {
  return std::unique_ptr<Reply, void (*)(void*)>(reply, std::free);
}

QList<std::uint32_t> Numbers(const QByteArray& property) {
  if (property.isEmpty()) return {};
  QList<std::uint32_t> numbers(property.size() / qsizetype{sizeof(std::uint32_t)});
  std::memcpy(numbers.data(), property.constData(),
              static_cast<std::size_t>(numbers.size()) * sizeof(std::uint32_t));
  return numbers;
}

// Requests from a pager are always granted by window managers.
constexpr std::uint32_t kPager = 2;

}  // namespace

Screen::Screen(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) {
    xcb_disconnect(connection_);
    throw std::runtime_error("the display " + display + " doesn't answer");
  }
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  root_ = screen->root;
  size_ = {screen->width_in_pixels, screen->height_in_pixels};
  ReadKeyboard();
}

Screen::~Screen() { xcb_disconnect(connection_); }

QList<WindowId> Screen::Windows() const { return Numbers(Property(root_, "_NET_CLIENT_LIST")); }

QString Screen::Title(WindowId window) const {
  return QString::fromUtf8(Property(window, "_NET_WM_NAME"));
}

std::optional<WindowId> Screen::Find(const QString& title) const {
  for (const WindowId window : Windows()) {
    if (Title(window) == title) return window;
  }
  return std::nullopt;
}

WindowId Screen::Await(const QString& title, std::chrono::milliseconds patience) const {
  std::optional<WindowId> found;
  WaitFor([&] { return (found = Find(title)).has_value(); }, patience);
  return found.value_or(0);
}

WindowId Screen::AwaitNew(const QList<WindowId>& known) const {
  WindowId found = 0;
  WaitFor([&] {
    for (const WindowId window : Windows()) {
      if (!known.contains(window)) found = window;
    }
    return found != 0;
  });
  return found;
}

QRect Screen::Place(WindowId window) const {
  const auto geometry =
      Own(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
  const auto origin = Own(xcb_translate_coordinates_reply(
      connection_, xcb_translate_coordinates(connection_, window, root_, 0, 0), nullptr));
  if (!geometry || !origin) return {};
  return {origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

bool Screen::Minimised(WindowId window) const {
  return Numbers(Property(window, "_NET_WM_STATE")).contains(Atom("_NET_WM_STATE_HIDDEN"));
}

bool Screen::Active(WindowId window) const {
  return Numbers(Property(root_, "_NET_ACTIVE_WINDOW")).value(0) == window;
}

void Screen::SetResources(const QByteArray& resources) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, root_, XCB_ATOM_RESOURCE_MANAGER,
                      XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(resources.size()),
                      resources.constData());
  Sync();
}

void Screen::Minimise(WindowId window) {
  constexpr std::uint32_t kIconic = 3;
  SendMessage(window, "WM_CHANGE_STATE", kIconic);
}

void Screen::Activate(WindowId window) { SendMessage(window, "_NET_ACTIVE_WINDOW", kPager); }

void Screen::Resize(WindowId window, QSize size) {
  const std::array values = {static_cast<std::uint32_t>(size.width()),
                             static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
  Sync();
}

void Screen::Close(WindowId window) {
  SendMessage(window, "_NET_CLOSE_WINDOW", XCB_CURRENT_TIME, kPager);
}

void Screen::Disconnect(WindowId window) {
  xcb_kill_client(connection_, window);
  Sync();
}

QImage Screen::Picture() const { return Picture(QRect({}, size_)); }

QImage Screen::Picture(const QRect& part) const {
  const QRect inside = part & QRect({}, size_);
  if (inside.isEmpty()) {
    QImage nothing(part.size(), QImage::Format_RGB32);
    nothing.fill(Qt::black);
    return nothing;
  }
  const auto reply = Own(xcb_get_image_reply(
      connection_,
      xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_,
                    static_cast<std::int16_t>(inside.x()), static_cast<std::int16_t>(inside.y()),
                    static_cast<std::uint16_t>(inside.width()),
                    static_cast<std::uint16_t>(inside.height()), ~0U),
      nullptr));
  if (!reply) throw std::runtime_error("the screen's pixels can't be read");
  const QImage picture(xcb_get_image_data(reply.get()), inside.width(), inside.height(),
                       xcb_get_image_data_length(reply.get()) / inside.height(),
                       reply->depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32);
  return picture.convertToFormat(QImage::Format_RGB32).copy(part.translated(-inside.topLeft()));
}

QImage Screen::Still(const QRect& part) const {
  constexpr std::chrono::milliseconds kQuiet{100};
  QImage last;
  const bool still = WaitFor([&] {
    last = Picture(part);
    return HoldsFor([&] { return Picture(part) == last; }, kQuiet);
  });
  if (!still) throw std::runtime_error("the screen never stops changing");
  return last;
}

QRgb Screen::Pixel(QPoint place) const { return Picture({place, QSize(1, 1)}).pixel(0, 0); }

void Screen::MovePointer(QPoint place) { SendPointerEvent(XCB_MOTION_NOTIFY, 0, place); }

void Screen::Press(PointerButton button) { SendPointerEvent(XCB_BUTTON_PRESS, button); }

void Screen::Release(PointerButton button) { SendPointerEvent(XCB_BUTTON_RELEASE, button); }

void Screen::Click(QPoint place, PointerButton button) {
  MovePointer(place);
  Press(button);
  Release(button);
}

void Screen::Drag(QPoint place, QPoint way) {
  MovePointer(place);
  Press(kLeftButton);
  MovePointer(place + way / 3);
  MovePointer(place + way);
  Release(kLeftButton);
}

QRect Screen::OpenMenu(QPoint place) {
  const QList<WindowId> known = PopUps();
  Click(place, kRightButton);
  QRect menu;
  WaitFor([&] {
    for (const WindowId window : PopUps()) {
      if (!known.contains(window)) menu = Place(window);
    }
    return !menu.isEmpty();
  });
  return menu;
}

void Screen::PressKey(std::uint32_t key, std::uint32_t modifier) {
  const std::uint8_t code = keyboard_.value(key).code;
  if (modifier != 0) SendEvent(XCB_KEY_PRESS, keyboard_.value(modifier).code);
  SendEvent(XCB_KEY_PRESS, code);
  SendEvent(XCB_KEY_RELEASE, code);
  if (modifier != 0) SendEvent(XCB_KEY_RELEASE, keyboard_.value(modifier).code);
}

void Screen::Type(const QString& text) {
  const bool hasKeys = std::all_of(text.begin(), text.end(), [this](QChar character) {
    return keyboard_.contains(character.unicode());
  });
  if (!hasKeys) {
    QGuiApplication::clipboard()->setText(text);
    PressKey('v', kControl);
    return;
  }
  for (const QChar character : text) {
    const std::uint32_t symbol = character.unicode();
    PressKey(symbol, keyboard_.value(symbol).shifted ? std::uint32_t{kShift} : 0);
  }
}

QList<WindowId> Screen::PopUps() const {
  const auto tree =
      Own(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
  if (!tree) return {};
  QList<WindowId> popUps;
  const xcb_window_t* children = xcb_query_tree_children(tree.get());
  for (int child = 0; child < xcb_query_tree_children_length(tree.get()); ++child) {
    const auto attributes = Own(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, children[child]), nullptr));
    if (attributes && attributes->override_redirect != 0 &&
        attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
      popUps << children[child];
    }
  }
  return popUps;
}

xcb_atom_t Screen::Atom(const char* name) const {
  const auto length = static_cast<std::uint16_t>(std::strlen(name));
  const auto reply = Own(
      xcb_intern_atom_reply(connection_, xcb_intern_atom(connection_, 0, length, name), nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

QByteArray Screen::Property(WindowId window, const char* name) const {
  constexpr std::uint32_t kLongest = 4096;
  const auto reply = Own(xcb_get_property_reply(
      connection_, xcb_get_property(connection_, 0, window, Atom(name), XCB_ATOM_ANY, 0, kLongest),
      nullptr));
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          xcb_get_property_value_length(reply.get())};
}

void Screen::SendMessage(WindowId window, const char* type, std::uint32_t first,
                         std::uint32_t second) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = Atom(type);
  event.data.data32[0] = first;
  event.data.data32[1] = second;
  std::array<char, 32> bytes{};
  std::memcpy(bytes.data(), &event, sizeof event);
  xcb_send_event(connection_, 0, root_,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 bytes.data());
  Sync();
}

// Pauses afterwards: the window manager holds back each press for a moment, and Qt drops a move
// that another one follows at once.
void Screen::SendPointerEvent(std::uint8_t type, std::uint8_t detail, QPoint place) {
  SendEvent(type, detail, place);
  std::this_thread::sleep_for(20ms);
}

void Screen::SendEvent(std::uint8_t type, std::uint8_t detail, QPoint place) {
  xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root_,
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      0);
  Sync();
}

void Screen::Sync() const {
  Own(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void Screen::ReadKeyboard() {
  const xcb_setup_t* setup = xcb_get_setup(connection_);
  const std::uint8_t first = setup->min_keycode;
  const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
  const auto mapping = Own(xcb_get_keyboard_mapping_reply(
      connection_, xcb_get_keyboard_mapping(connection_, first, count), nullptr));
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
  for (int key = 0; key < count; ++key) {
    for (int level = 0; level < std::min<int>(2, mapping->keysyms_per_keycode); ++level) {
      const xcb_keysym_t symbol = symbols[key * mapping->keysyms_per_keycode + level];
      if (symbol == XCB_NO_SYMBOL || keyboard_.contains(symbol)) continue;
      keyboard_.insert(symbol, {static_cast<std::uint8_t>(first + key), level == 1});
    }
  }
}

}  // namespace kelvane::desktop
