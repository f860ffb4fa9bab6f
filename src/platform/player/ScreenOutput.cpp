#include "platform/player/ScreenOutput.h"

#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <algorithm>
#include <bit>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace kelvane {
namespace {

// The replies and errors of the server's library are its caller's to free.
template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> Owned(Reply* reply) {
  return {reply, &std::free};
}

// Memory can be handed over to a server on this machine alone.
bool IsLocal(xcb_connection_t* connection) {
  sockaddr_storage address{};
  socklen_t length = sizeof(address);
  return getsockname(xcb_get_file_descriptor(connection), reinterpret_cast<sockaddr*>(&address),
                     &length) == 0 &&
         address.ss_family == AF_UNIX;
}

// Whether the server takes memory by a descriptor.
bool SharesMemory(xcb_connection_t* connection) {
  const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_shm_id);
  if (extension == nullptr || extension->present == 0) return false;
  const auto version =
      Owned(xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
  return version != nullptr &&
         std::pair<int, int>(version->major_version, version->minor_version) >= std::pair(1, 2);
}

constexpr std::uint8_t kDepth = 24;

// Whether the server keeps pixels of that depth as pictures do: four bytes to each, in the order of
// this machine.
bool KeepsPixelsAlike(const xcb_setup_t* setup) {
  constexpr std::uint8_t kBits = 32;
  constexpr bool kLowestFirst = std::endian::native == std::endian::little;
  if (kLowestFirst != (setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST)) return false;
  const auto* formats = xcb_setup_pixmap_formats(setup);
  return std::any_of(formats, formats + xcb_setup_pixmap_formats_length(setup),
                     [](const xcb_format_t& format) {
                       return format.depth == kDepth && format.bits_per_pixel == kBits;
                     });
}

// Whether a pixel of the visual has its colours where a picture has them.
bool IsLikePictures(const xcb_setup_t* setup, xcb_visualid_t visual) {
  for (auto screen = xcb_setup_roots_iterator(setup); screen.rem > 0; xcb_screen_next(&screen)) {
    for (auto depth = xcb_screen_allowed_depths_iterator(screen.data); depth.rem > 0;
         xcb_depth_next(&depth)) {
      if (depth.data->depth != kDepth) continue;
      for (auto each = xcb_depth_visuals_iterator(depth.data); each.rem > 0;
           xcb_visualtype_next(&each)) {
        if (each.data->visual_id != visual) continue;
        return each.data->red_mask == 0xFF0000 && each.data->green_mask == 0xFF00 &&
               each.data->blue_mask == 0xFF;
      }
    }
  }
  return false;
}

// What a picture's memory is, and to whom it is lent.
struct Lent {
  xcb_connection_t* connection;
  xcb_shm_seg_t segment;
  void* memory;
  std::size_t length;
};

void TakeBack(void* lent) {
  const std::unique_ptr<Lent> owned(static_cast<Lent*>(lent));
  xcb_shm_detach(owned->connection, owned->segment);
  munmap(owned->memory, owned->length);
}

}  // namespace

// The toolkit has a connection, or says so, where its windows are on no screen as well.
ScreenOutput::ScreenOutput() {
  if (QGuiApplication::platformName() != QLatin1String("xcb")) return;
  xcb_connection_t* connection =
      qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  if (IsLocal(connection) && SharesMemory(connection) &&
      KeepsPixelsAlike(xcb_get_setup(connection))) {
    connection_ = connection;
  }
}

ScreenOutput::~ScreenOutput() {
  if (graphics_ != 0) xcb_free_gc(connection_, graphics_);
}

bool ScreenOutput::Takes(std::uint32_t window) const {
  const auto attributes = Owned(xcb_get_window_attributes_reply(
      connection_, xcb_get_window_attributes(connection_, window), nullptr));
  return attributes != nullptr && IsLikePictures(xcb_get_setup(connection_), attributes->visual);
}

void ScreenOutput::setWindow(std::uint32_t window) {
  if (graphics_ != 0) xcb_free_gc(connection_, std::exchange(graphics_, 0));
  window_ = window;
  region_ = {};
  if (window == 0 || !Takes(window)) return;
  graphics_ = xcb_generate_id(connection_);
  xcb_create_gc(connection_, graphics_, window, 0, nullptr);
}

void ScreenOutput::setPlace(std::uint32_t window, QPoint corner, const QRegion& region) {
  if (connection_ == nullptr) return;
  if (window != window_) setWindow(window);
  corner_ = corner;
  if (region == std::exchange(region_, region) || graphics_ == 0) return;
  std::vector<xcb_rectangle_t> parts;
  for (const QRect& part : region) {
    parts.push_back({static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y()),
                     static_cast<std::uint16_t>(part.width()),
                     static_cast<std::uint16_t>(part.height())});
  }
  xcb_set_clip_rectangles(connection_, XCB_CLIP_ORDERING_UNSORTED, graphics_, 0, 0,
                          static_cast<std::uint32_t>(parts.size()), parts.data());
}

ScreenOutput::Picture ScreenOutput::MakePicture(QSize size) const {
  Picture picture;
  if (connection_ != nullptr) picture = MakeShared(size);
  if (picture.image.isNull()) picture.image = QImage(size, QImage::Format_RGB32);
  return picture;
}

ScreenOutput::Picture ScreenOutput::MakeShared(QSize size) const {
  constexpr std::size_t kBytes = 4;  // to a pixel
  const auto length =
      static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * kBytes;
  const int descriptor = memfd_create("picture", MFD_CLOEXEC);
  if (descriptor < 0) return {};
  void* memory = MAP_FAILED;
  if (ftruncate(descriptor, static_cast<off_t>(length)) == 0) {
    memory = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
  }
  if (memory == MAP_FAILED) {
    close(descriptor);
    return {};
  }
  const xcb_shm_seg_t segment = xcb_generate_id(connection_);
  constexpr std::uint8_t kReadOnly = 1;
  // Takes the descriptor.
  const auto request = xcb_shm_attach_fd_checked(connection_, segment, descriptor, kReadOnly);
  if (const auto refusal = Owned(xcb_request_check(connection_, request))) {
    munmap(memory, length);
    return {};
  }
  return {QImage(static_cast<uchar*>(memory), size.width(), size.height(), QImage::Format_RGB32,
                 TakeBack, new Lent{connection_, segment, memory, length}),
          segment};
}

bool ScreenOutput::Put(const Picture& picture) {
  if (graphics_ == 0 || picture.segment == 0) return false;
  const QRect part = region_.boundingRect().translated(-corner_) & picture.image.rect();
  if (part.isEmpty()) return false;
  const QPoint place = corner_ + part.topLeft();
  constexpr std::uint8_t kTellsNothing = 0;
  xcb_shm_put_image(
      connection_, window_, graphics_, static_cast<std::uint16_t>(picture.image.width()),
      static_cast<std::uint16_t>(picture.image.height()), static_cast<std::uint16_t>(part.x()),
      static_cast<std::uint16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
      static_cast<std::uint16_t>(part.height()), static_cast<std::int16_t>(place.x()),
      static_cast<std::int16_t>(place.y()), kDepth, XCB_IMAGE_FORMAT_Z_PIXMAP, kTellsNothing,
      picture.segment, 0);
  taking_ = true;
  return true;
}

void ScreenOutput::Send() { xcb_flush(connection_); }

// The server answers in the order in which it is asked.
void ScreenOutput::AwaitTaken() {
  if (!taking_.exchange(false)) return;
  const auto answer =
      Owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

}  // namespace kelvane
