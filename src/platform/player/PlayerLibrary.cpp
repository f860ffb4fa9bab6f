#include "platform/player/PlayerLibrary.h"

#include <QLibrary>
#include <QString>
#include <mutex>
#include <optional>

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// Fills `functions`. Returns false if the library lacks one of them.
bool ResolveAll(QLibrary& library, PlayerLibrary& functions) {
  bool complete = true;
  const auto resolve = [&]<class Function>(const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(library.resolve(name));
    complete = complete && function != nullptr;
  };
  resolve("mpv_command_async", functions.command_async);
  resolve("mpv_create", functions.create);
  resolve("mpv_get_property_async", functions.get_property_async);
  resolve("mpv_initialize", functions.initialize);
  resolve("mpv_observe_property", functions.observe_property);
  resolve("mpv_render_context_create", functions.render_context_create);
  resolve("mpv_render_context_free", functions.render_context_free);
  resolve("mpv_render_context_render", functions.render_context_render);
  resolve("mpv_render_context_set_update_callback", functions.render_context_set_update_callback);
  resolve("mpv_render_context_update", functions.render_context_update);
  resolve("mpv_set_option_string", functions.set_option_string);
  resolve("mpv_set_property_async", functions.set_property_async);
  resolve("mpv_unobserve_property", functions.unobserve_property);
  resolve("mpv_set_wakeup_callback", functions.set_wakeup_callback);
  resolve("mpv_terminate_destroy", functions.terminate_destroy);
  resolve("mpv_wait_event", functions.wait_event);
  return complete;
}

std::optional<PlayerLibrary> Load() {
  // The version of libmpv's API for which this file is compiled.
  constexpr int kMajorVersion = MPV_CLIENT_API_VERSION >> 16;
  QLibrary library(u"mpv"_s, kMajorVersion);
  PlayerLibrary functions;
  if (!library.load() || !ResolveAll(library, functions)) return std::nullopt;
  return functions;
}

}  // namespace

const PlayerLibrary* PlayerLibrary::Get() {
  // Loading may fail for lack of descriptors or memory, and succeed later.
  static std::mutex mutex;
  static std::optional<PlayerLibrary> functions;
  const std::lock_guard lock(mutex);
  if (!functions) functions = Load();
  return functions ? &*functions : nullptr;
}

}  // namespace kelvane
