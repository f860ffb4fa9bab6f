#include "platform/WaylandOutputs.h"

#include <wayland-client-protocol.h>

#include <QGuiApplication>
#include <QList>
#include <QLocale>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <list>
#include <memory>
#include <vector>

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

template <typename T, void (*destroy)(T*)>
struct Destroyer {
  void operator()(T* object) const { destroy(object); }
};

struct Output {
  std::unique_ptr<wl_output, Destroyer<wl_output, wl_output_destroy>> object;
  QString name;
  QSize mode;
  bool rotated = false;
};

Output& OutputOf(void* data) { return *static_cast<Output*>(data); }

constexpr wl_output_listener kOutputListener = {
    .geometry =
        [](void* data, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
           std::int32_t, const char*, const char*, std::int32_t transform) {
          // Odd transforms turn by a quarter or three quarters.
          OutputOf(data).rotated = transform % 2 == 1;
        },
    .mode =
        [](void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
           std::int32_t) {
          if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) OutputOf(data).mode = QSize(width, height);
        },
    .done = [](void*, wl_output*) {},
    .scale = [](void*, wl_output*, std::int32_t) {},
    .name = [](void* data, wl_output*,
               const char* name) { OutputOf(data).name = QString::fromUtf8(name); },
    .description = [](void*, wl_output*, const char*) {},
};

constexpr wl_registry_listener kRegistryListener = {
    .global =
        [](void* data, wl_registry* registry, std::uint32_t number, const char* interface,
           std::uint32_t version) {
          if (std::strcmp(interface, wl_output_interface.name) != 0 ||
              version < WL_OUTPUT_NAME_SINCE_VERSION) {
            return;
          }
          Output& output = static_cast<std::list<Output>*>(data)->emplace_back();
          output.object.reset(static_cast<wl_output*>(wl_registry_bind(
              registry, number, &wl_output_interface, WL_OUTPUT_NAME_SINCE_VERSION)));
          wl_output_add_listener(output.object.get(), &kOutputListener, &output);
        },
    .global_remove = [](void*, wl_registry*, std::uint32_t) {},
};

QByteArray FactorText(double factor) {
  return QByteArray::number(factor, 'g', QLocale::FloatingPointShortest);
}

}  // namespace

bool RunsOnWayland() { return QGuiApplication::platformName().startsWith("wayland"_L1); }

QHash<QString, QSize> PixelsOfWaylandOutputs() {
  const std::unique_ptr<wl_display, Destroyer<wl_display, wl_display_disconnect>> display(
      wl_display_connect(nullptr));
  if (!display) return {};
  const std::unique_ptr<wl_registry, Destroyer<wl_registry, wl_registry_destroy>> registry(
      wl_display_get_registry(display.get()));
  std::list<Output> outputs;
  wl_registry_add_listener(registry.get(), &kRegistryListener, &outputs);
  wl_display_roundtrip(display.get());  // announces the outputs
  wl_display_roundtrip(display.get());  // reports their properties
  QHash<QString, QSize> pixels;
  for (const Output& output : outputs) {
    pixels.insert(output.name, output.rotated ? output.mode.transposed() : output.mode);
  }
  return pixels;
}

double ScaleOfOutput(QSize pixels, QSize units, double roundedUp) {
  if (pixels.isEmpty() || units.isEmpty()) return roundedUp;
  constexpr double kScaleDenominator = 120;  // compositors send scales in 120ths
  const double longSide = std::max(pixels.width(), pixels.height());
  const double scale =
      std::round(kScaleDenominator * longSide / std::max(units.width(), units.height())) /
      kScaleDenominator;
  return std::ceil(scale) == roundedUp ? scale : roundedUp;
}

std::optional<ScaleFactors> FactorsThatUndoScales() {
  const QList<QScreen*> screens = QGuiApplication::screens();
  const auto isPlain = [](const QScreen* screen) { return screen->devicePixelRatio() == 1; };
  if (std::ranges::all_of(screens, isPlain)) return std::nullopt;
  const QHash<QString, QSize> pixels =
      RunsOnWayland() ? PixelsOfWaylandOutputs() : QHash<QString, QSize>();
  std::vector<double> scales;
  for (const QScreen* screen : screens) {
    scales.push_back(
        ScaleOfOutput(pixels.value(screen->name()), screen->size(), screen->devicePixelRatio()));
  }
  const double largest = *std::ranges::max_element(scales);
  ScaleFactors factors{.common = FactorText(1 / largest), .outputs = {}};
  for (qsizetype i = 0; i < screens.size(); ++i) {
    const double factor = largest / scales[static_cast<std::size_t>(i)];
    factors.outputs += screens[i]->name().toUtf8() + '=' + FactorText(factor) + ';';
  }
  return factors;
}

}  // namespace kelvane
