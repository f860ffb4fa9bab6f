#pragma once

#include <QByteArray>
#include <QHash>
#include <QSize>
#include <QString>
#include <optional>

namespace kelvane {

// Whether the program's windows are shown by a Wayland compositor. Needs the QApplication.
bool RunsOnWayland();

// Returns the size of each output of the Wayland compositor in pixels of the screen, by the
// output's name. Empty without a compositor.
QHash<QString, QSize> PixelsOfWaylandOutputs();

// Returns the scale of an output by its sizes in pixels and in the compositor's units. `whole` is
// the scale rounded up; it is returned if the sizes contradict it.
double ScaleOfOutput(QSize pixels, QSize units, double whole);

// The factors with which a pixel of Qt's is a pixel of the screen. Qt applies a Wayland
// compositor's scale even where its scaling for dense screens is switched off.
struct ScaleFactors {
  QByteArray common;   // less than 1, for QT_SCALE_FACTOR
  QByteArray outputs;  // of each output besides, for QT_SCREEN_SCALE_FACTORS, where Qt ignores
                       // factors less than 1
};

// Returns std::nullopt if no output has a scale. Needs the QApplication.
std::optional<ScaleFactors> FactorsThatUndoScales();

}  // namespace kelvane
