#pragma once

#include <QDir>
#include <QString>

#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// What the parts of the demo share: each drives one window with a real pointer and leaves pictures
// in a folder.
class DemoPart {
 protected:
  // More colours than a flat surface has, and fewer than a video or a drawn dialog.
  static constexpr int kManyColours = 100;

  DemoPart(Screen& screen, const QDir& output) : screen_(screen), output_(output) {}

  // Saves a picture of the screen, without its empty margins, as NAME.png, and prints `what`.
  void Keep(const char* name, const char* what);
  // Unless the condition holds, saves a picture of the screen as failed.png and throws
  // std::runtime_error with the complaint.
  void Need(bool holds, const char* complaint);
  static void Say(const QString& text);

  Screen& screen_;
  QDir output_;
};

// The parts with a program of their own. ShowJoiner also leaves its clips and the joined file in
// `output`, ShowStabiliser a shaken clip, a section of it and the stabilised file.
void ShowSections(Screen& screen, const QString& programFolder, const QString& display,
                  const QDir& output);
void ShowJoiner(Screen& screen, const QString& programFolder, const QString& display,
                const QDir& output);
void ShowStabiliser(Screen& screen, const QString& programFolder, const QString& display,
                    const QDir& output);

// Makes the clip that the demo crops, with a tone and 25 pictures a second: a balloon before a
// sunset, over mountains that go by. Returns whether it could be made.
bool MakeDemoClip(const QString& path, QSize size, int seconds);

}  // namespace kelvane::desktop
