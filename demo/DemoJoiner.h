#pragma once

#include <QDir>
#include <QString>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// The demo's part in the joiner window: its own program, driven with a real pointer, with ten clips
// made for the purpose. Leaves a picture of each step and the joined file in `output`; throws
// std::runtime_error where a step doesn't work, or that file isn't as long as its ten sections.
void ShowJoiner(Screen& screen, const QString& programFolder, const QString& display,
                const QDir& output);

}  // namespace kelvane::desktop
