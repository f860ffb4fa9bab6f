#include "SentPictures.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <xcb/shm.h>

#include <QImage>
#include <map>
#include <mutex>
#include <utility>

namespace {

struct Memory {
  void* start;
  std::size_t length;
};

std::mutex guard;
std::function<void(const QImage&)> looks;
std::map<xcb_shm_seg_t, Memory> shared;  // what was attached as read-only, as pictures are

template <typename Function>
Function* TheLibrarys(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace kelvane::bench {

void LookAtSentPictures(std::function<void(const QImage&)> look) {
  const std::lock_guard lock(guard);
  looks = std::move(look);
}

}  // namespace kelvane::bench

extern "C" {

xcb_void_cookie_t xcb_shm_attach_fd_checked(xcb_connection_t* connection, xcb_shm_seg_t segment,
                                            int descriptor, std::uint8_t readOnly) {
  struct stat file {};
  if (readOnly != 0 && fstat(descriptor, &file) == 0) {
    const auto length = static_cast<std::size_t>(file.st_size);
    void* start = mmap(nullptr, length, PROT_READ, MAP_SHARED, descriptor, 0);
    const std::lock_guard lock(guard);
    if (start != MAP_FAILED) shared[segment] = {start, length};
  }
  static auto* const attach =
      TheLibrarys<decltype(xcb_shm_attach_fd_checked)>("xcb_shm_attach_fd_checked");
  return attach(connection, segment, descriptor, readOnly);
}

xcb_void_cookie_t xcb_shm_detach(xcb_connection_t* connection, xcb_shm_seg_t segment) {
  {
    const std::lock_guard lock(guard);
    if (const auto found = shared.find(segment); found != shared.end()) {
      munmap(found->second.start, found->second.length);
      shared.erase(found);
    }
  }
  static auto* const detach = TheLibrarys<decltype(xcb_shm_detach)>("xcb_shm_detach");
  return detach(connection, segment);
}

xcb_void_cookie_t xcb_shm_put_image(xcb_connection_t* connection, xcb_drawable_t drawable,
                                    xcb_gcontext_t graphics, std::uint16_t totalWidth,
                                    std::uint16_t totalHeight, std::uint16_t fromX,
                                    std::uint16_t fromY, std::uint16_t width, std::uint16_t height,
                                    std::int16_t toX, std::int16_t toY, std::uint8_t depth,
                                    std::uint8_t format, std::uint8_t sendEvent,
                                    xcb_shm_seg_t segment, std::uint32_t offset) {
  {
    const std::lock_guard lock(guard);
    if (const auto found = shared.find(segment); looks && found != shared.end()) {
      looks(QImage(static_cast<const uchar*>(found->second.start), totalWidth, totalHeight,
                   QImage::Format_RGB32));
    }
  }
  static auto* const put = TheLibrarys<decltype(xcb_shm_put_image)>("xcb_shm_put_image");
  return put(connection, drawable, graphics, totalWidth, totalHeight, fromX, fromY, width, height,
             toX, toY, depth, format, sendEvent, segment, offset);
}
}
