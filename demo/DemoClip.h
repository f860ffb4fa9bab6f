#pragma once

#include <QSize>
#include <QString>

namespace kelvane::desktop {

// Makes the clip that the demo crops: a balloon before a sunset, over mountains that go by, with a
// tone; 25 pictures a second. False if it can't be made.
bool MakeDemoClip(const QString& path, QSize size, int seconds);

}  // namespace kelvane::desktop
