#pragma once

#include <QByteArray>
#include <QHash>
#include <QSize>
#include <QString>
#include <optional>

namespace kelvane {

// Whether the program's windows are shown by a Wayland compositor. Needs the QApplication.
bool RunsOnWayland();

// Returns how many pixels of the screen each output of the Wayland compositor has horizontally and
// vertically, by its name. Empty without a compositor.
QHash<QString, QSize> PixelsOfWaylandOutputs();

// Returns the scale of an output by its sizes in pixels and in the compositor's units. `whole` is
// the scale rounded up, which is returned if the sizes don't agree with it.
double ScaleOfOutput(QSize pixels, QSize units, double whole);

// What Qt shall multiply by for a pixel of its own to be one of the screen: a Wayland compositor's
// scale comes in whatever the switch for dense screens says.
struct ScaleFactors {
  QByteArray common;   // on every output
  QByteArray outputs;  // and on each of them besides; Qt takes none that is less than 1
};

// Returns std::nullopt if no output has a scale. Needs the QApplication.
std::optional<ScaleFactors> FactorsThatUndoScales();

}  // namespace kelvane
