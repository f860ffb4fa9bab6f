#include "desktop/driver/Screen.h"

#include <xcb/xfixes.h>
#include <xcb/xtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <thread>

namespace kelvane::desktop {
namespace {

struct FreeReply {
  void operator()(void* reply) const { free(reply); }
};
template <typename Reply>
using ReplyOf = std::unique_ptr<Reply, FreeReply>;

template <typename Reply>
ReplyOf<Reply> Own(Reply* reply) {
  return ReplyOf<Reply>(reply);
}

QList<std::uint32_t> Numbers(const QByteArray& property) {
  if (property.isEmpty()) return {};
  QList<std::uint32_t> numbers(property.size() / qsizetype{sizeof(std::uint32_t)});
  std::memcpy(numbers.data(), property.constData(),
              static_cast<std::size_t>(numbers.size()) * sizeof(std::uint32_t));
  return numbers;
}

constexpr std::uint32_t kFromPager = 2;  // requests with a user's full weight
constexpr std::uint32_t kIconic = 3;

}  // namespace

Screen::Screen(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) {
    xcb_disconnect(connection_);
    throw std::runtime_error("the display " + display + " doesn't answer");
  }
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  root_ = screen->root;
  size_ = {screen->width_in_pixels, screen->height_in_pixels};
  // The server must be told which version it is asked for.
  Own(xcb_xfixes_query_version_reply(
      connection_,
      xcb_xfixes_query_version(connection_, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
      nullptr));
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

WindowId Screen::AwaitNew(const QList<WindowId>& known, std::chrono::milliseconds patience) const {
  WindowId found = 0;
  WaitFor(
      [&] {
        for (const WindowId window : Windows()) {
          if (!known.contains(window)) found = window;
        }
        return found != 0;
      },
      patience);
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
  Settle();
}

void Screen::Minimise(WindowId window) { Ask(window, "WM_CHANGE_STATE", kIconic); }

void Screen::Activate(WindowId window) { Ask(window, "_NET_ACTIVE_WINDOW", kFromPager); }

void Screen::Resize(WindowId window, QSize size) {
  const std::array values = {static_cast<std::uint32_t>(size.width()),
                             static_cast<std::uint32_t>(size.height())};
  xcb_configure_window(connection_, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       values.data());
  Settle();
}

void Screen::Close(WindowId window) {
  Ask(window, "_NET_CLOSE_WINDOW", XCB_CURRENT_TIME, kFromPager);
}

void Screen::Disconnect(WindowId window) {
  xcb_kill_client(connection_, window);
  Settle();
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
  if (!reply) throw std::runtime_error("the display gives no picture");
  const QImage picture(xcb_get_image_data(reply.get()), inside.width(), inside.height(),
                       xcb_get_image_data_length(reply.get()) / inside.height(),
                       reply->depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32);
  return picture.convertToFormat(QImage::Format_RGB32).copy(part.translated(-inside.topLeft()));
}

QImage Screen::Still(const QRect& part) const {
  constexpr std::chrono::milliseconds kMoment{100};
  QImage last;
  const bool rests = WaitFor([&] {
    last = Picture(part);
    return HoldsFor([&] { return Picture(part) == last; }, kMoment);
  });
  if (!rests) throw std::runtime_error("the screen doesn't rest");
  return last;
}

QRgb Screen::Pixel(QPoint place) const { return Picture({place, QSize(1, 1)}).pixel(0, 0); }

QSize Screen::PointerShape() const {
  const auto reply = Own(xcb_xfixes_get_cursor_image_reply(
      connection_, xcb_xfixes_get_cursor_image(connection_), nullptr));
  if (!reply) return {};
  const QImage picture(
      reinterpret_cast<const uchar*>(xcb_xfixes_get_cursor_image_cursor_image(reply.get())),
      reply->width, reply->height, QImage::Format_ARGB32_Premultiplied);
  QRect drawn;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (qAlpha(picture.pixel(x, y)) != 0) drawn |= QRect(x, y, 1, 1);
    }
  }
  return drawn.size();
}

void Screen::MovePointer(QPoint place) { Handle(XCB_MOTION_NOTIFY, 0, place); }

void Screen::Press(PointerButton button) { Handle(XCB_BUTTON_PRESS, button); }

void Screen::Release(PointerButton button) { Handle(XCB_BUTTON_RELEASE, button); }

void Screen::Click(QPoint place, PointerButton button) {
  MovePointer(place);
  Press(button);
  Release(button);
}

void Screen::Drag(QPoint place, QPoint way, PointerButton button) {
  MovePointer(place);
  Press(button);
  MovePointer(place + way / 3);
  MovePointer(place + way);
  Release(button);
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

void Screen::Strike(std::uint32_t key, std::uint32_t held) {
  const std::uint8_t code = keyboard_.value(key).code;
  const std::uint8_t heldCode = held == 0 ? std::uint8_t{0} : keyboard_.value(held).code;
  if (heldCode != 0) Send(XCB_KEY_PRESS, heldCode);
  Send(XCB_KEY_PRESS, code);
  Send(XCB_KEY_RELEASE, code);
  if (heldCode != 0) Send(XCB_KEY_RELEASE, heldCode);
}

void Screen::Type(const QString& text) {
  const bool hasKeys = std::all_of(text.begin(), text.end(), [this](QChar character) {
    return keyboard_.contains(character.unicode());
  });
  if (!hasKeys) {
    QGuiApplication::clipboard()->setText(text);
    Strike('v', kControl);
    return;
  }
  for (const QChar character : text) {
    const std::uint32_t symbol = character.unicode();
    Strike(symbol, keyboard_.value(symbol).shifted ? std::uint32_t{kShift} : 0);
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
  const QByteArray key(name);
  if (const auto known = atoms_.constFind(key); known != atoms_.constEnd()) return *known;
  const auto reply = Own(xcb_intern_atom_reply(
      connection_, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(key.size()), name),
      nullptr));
  return *atoms_.insert(key, reply->atom);
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

void Screen::Ask(WindowId window, const char* request, std::uint32_t first, std::uint32_t second) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = Atom(request);
  event.data.data32[0] = first;
  event.data.data32[1] = second;
  std::array<char, 32> bytes{};
  std::memcpy(bytes.data(), &event, sizeof event);
  xcb_send_event(connection_, 0, root_,
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 bytes.data());
  Settle();
}

// No hand is faster than this. The window manager holds each press back until it has looked at it,
// and Qt leaves out every move that another one follows.
void Screen::Handle(std::uint8_t type, std::uint8_t detail, QPoint place) {
  constexpr auto kHandsPace = 20ms;
  Send(type, detail, place);
  std::this_thread::sleep_for(kHandsPace);
}

void Screen::Send(std::uint8_t type, std::uint8_t detail, QPoint place) {
  xcb_test_fake_input(connection_, type, detail, XCB_CURRENT_TIME, root_,
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      0);
  Settle();
}

// Returns when the server has taken everything sent so far.
void Screen::Settle() const {
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
