#pragma once

#include <mpv/client.h>
#include <mpv/render.h>

namespace kelvane {

// libmpv's functions, under their names without the prefix "mpv_". The library is loaded on first
// use, since loading takes longer than opening a window.
struct PlayerLibrary {
  // Returns null if the library can't be loaded or lacks a function; a later call tries again. The
  // result is valid until the program ends. For any thread; waits while another loads the library.
  static const PlayerLibrary* Get();

  decltype(&mpv_command_async) command_async = nullptr;
  decltype(&mpv_create) create = nullptr;
  decltype(&mpv_get_property_async) get_property_async = nullptr;
  decltype(&mpv_initialize) initialize = nullptr;
  decltype(&mpv_observe_property) observe_property = nullptr;
  decltype(&mpv_render_context_create) render_context_create = nullptr;
  decltype(&mpv_render_context_free) render_context_free = nullptr;
  decltype(&mpv_render_context_render) render_context_render = nullptr;
  decltype(&mpv_render_context_set_update_callback) render_context_set_update_callback = nullptr;
  decltype(&mpv_render_context_update) render_context_update = nullptr;
  decltype(&mpv_set_option_string) set_option_string = nullptr;
  decltype(&mpv_set_property_async) set_property_async = nullptr;
  decltype(&mpv_set_wakeup_callback) set_wakeup_callback = nullptr;
  decltype(&mpv_terminate_destroy) terminate_destroy = nullptr;
  decltype(&mpv_unobserve_property) unobserve_property = nullptr;
  decltype(&mpv_wait_event) wait_event = nullptr;
};

}  // namespace kelvane
