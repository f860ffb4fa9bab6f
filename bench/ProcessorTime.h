#pragma once

#include <QString>

#include "desktop/driver/Screen.h"

namespace kelvane::bench {

// The processor time of ten seconds of playing, in seconds: of all the threads of the one process,
// from one second after the picture came. The clip must last longer, and should have no sound, so
// that nobody looks for a device.

// In the program's window as it opens.
double ProcessorTimeInProgram(desktop::Screen& screen, const QString& display, const QString& clip,
                              QSize size);
// In a window of the bare player.
double ProcessorTimeOfPlayer(desktop::Screen& screen, const QString& display, const QString& clip);

}  // namespace kelvane::bench
