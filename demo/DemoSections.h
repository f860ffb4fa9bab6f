#pragma once

#include <QDir>
#include <QString>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// The demo's part in the section window: its own program, driven with a real pointer. Leaves a
// picture of each step in `output`; throws std::runtime_error where a step doesn't work.
void ShowSections(Screen& screen, const QString& programFolder, const QString& display,
                  const QDir& output);

}  // namespace kelvane::desktop
