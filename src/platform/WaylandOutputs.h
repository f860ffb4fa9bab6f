#pragma once

#include <QByteArray>
#include <QHash>
#include <QSize>
#include <QString>
#include <optional>

namespace kelvane {

// Whether Qt itself is a client of a Wayland compositor: false under Xwayland. Needs the
// QApplication.
bool RunsOnWayland();

// Returns the sizes of the outputs in screen pixels, as rotated, by the names that the Wayland
// compositor gives them. Empty without a compositor. Blocks for two round trips to it.
QHash<QString, QSize> PixelsOfWaylandOutputs();

// Returns the scale of an output from its sizes in physical and logical pixels. `roundedUp` is the
// scale rounded up; it is returned if a size is empty or the sizes contradict it.
double ScaleOfOutput(QSize pixels, QSize units, double roundedUp);

// The factors that make a Qt pixel a screen pixel. They are needed since Qt applies a Wayland
// compositor's scale even if Qt's own high-DPI scaling is switched off.
struct ScaleFactors {
  QByteArray common;  // less than 1, for QT_SCALE_FACTOR
  // Each output's own factor, by which Qt multiplies the common one, for QT_SCREEN_SCALE_FACTORS:
  // at least 1, since Qt ignores smaller ones.
  QByteArray outputs;
};

// Returns the factors for the present outputs; std::nullopt if all have the scale 1. Needs the
// QApplication. Blocks as PixelsOfWaylandOutputs does.
std::optional<ScaleFactors> FactorsThatUndoScales();

}  // namespace kelvane
