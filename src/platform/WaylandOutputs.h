#pragma once

#include <QHash>
#include <QSize>
#include <QString>

namespace kelvane {

// Whether Qt shows the program's windows by a Wayland compositor. Asked once there is an
// application.
bool UnderACompositor();

// What each output of the Wayland compositor has across and down, in pixels of the screen, by its
// name. Empty without a compositor.
QHash<QString, QSize> PixelsOfWaylandOutputs();

// The scale of an output by its sizes in pixels and in the compositor's units. `whole` is the scale
// rounded up, and what is returned where the sizes don't agree with that.
double ScaleOfOutput(QSize pixels, QSize units, double whole);

}  // namespace kelvane
