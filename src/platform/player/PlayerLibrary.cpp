#include "platform/player/PlayerLibrary.h"

#include <QLibrary>
#include <QString>
#include <optional>

namespace kelvane {
namespace {

template <class Function>
bool Resolve(QLibrary& library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(library.resolve(name));
  return function != nullptr;
}

bool ResolveAll(QLibrary& library, PlayerLibrary& functions) {
  return Resolve(library, "mpv_command_async", functions.command_async) &&
         Resolve(library, "mpv_create", functions.create) &&
         Resolve(library, "mpv_initialize", functions.initialize) &&
         Resolve(library, "mpv_observe_property", functions.observe_property) &&
         Resolve(library, "mpv_render_context_create", functions.render_context_create) &&
         Resolve(library, "mpv_render_context_free", functions.render_context_free) &&
         Resolve(library, "mpv_render_context_render", functions.render_context_render) &&
         Resolve(library, "mpv_render_context_set_update_callback",
                 functions.render_context_set_update_callback) &&
         Resolve(library, "mpv_render_context_update", functions.render_context_update) &&
         Resolve(library, "mpv_set_option_string", functions.set_option_string) &&
         Resolve(library, "mpv_set_property_async", functions.set_property_async) &&
         Resolve(library, "mpv_set_wakeup_callback", functions.set_wakeup_callback) &&
         Resolve(library, "mpv_terminate_destroy", functions.terminate_destroy) &&
         Resolve(library, "mpv_wait_event", functions.wait_event);
}

std::optional<PlayerLibrary> Load() {
  // Of the interface that this is compiled for.
  constexpr int kMajorVersion = MPV_CLIENT_API_VERSION >> 16;
  QLibrary library(QStringLiteral("mpv"), kMajorVersion);
  PlayerLibrary functions;
  if (!library.load() || !ResolveAll(library, functions)) return std::nullopt;
  return functions;
}

}  // namespace

const PlayerLibrary* PlayerLibrary::Get() {
  // What failed for want of descriptors or memory may be had later.
  static std::optional<PlayerLibrary> functions;
  if (!functions) functions = Load();
  return functions ? &*functions : nullptr;
}

}  // namespace kelvane
