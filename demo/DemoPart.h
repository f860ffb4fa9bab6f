#pragma once

#include <QDir>
#include <QString>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// What the parts of the demo share: each drives one window with a real pointer and leaves pictures
// in a folder.
class DemoPart {
 protected:
  // Fewer than a picture or a drawn dialog has, and more than a flat surface.
  static constexpr int kManyColours = 100;

  DemoPart(Screen& screen, const QDir& output) : screen_(screen), output_(output) {}

  // Saves a picture of the screen, without its empty margins, as NAME.png, and prints `what`.
  void Keep(const char* name, const char* what);
  // Throws std::runtime_error with the complaint unless the condition holds, and saves a picture of
  // the screen as failed.png.
  void Need(bool holds, const char* complaint);
  static void Say(const QString& text);

  Screen& screen_;
  QDir output_;
};

// The parts with a program of their own. The joiner's leaves the joined file in `output` as well.
void ShowSections(Screen& screen, const QString& programFolder, const QString& display,
                  const QDir& output);
void ShowJoiner(Screen& screen, const QString& programFolder, const QString& display,
                const QDir& output);
// Leaves a shaken clip, a section of it and the stabilised file in `output` as well.
void ShowStabiliser(Screen& screen, const QString& programFolder, const QString& display,
                    const QDir& output);

// Makes the clip that the demo crops, with a tone and 25 pictures a second: a balloon before a
// sunset, over mountains that go by. Returns whether it could be made.
bool MakeDemoClip(const QString& path, QSize size, int seconds);

}  // namespace kelvane::desktop
