#pragma once

#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {

// The stabiliser's window as a user finds and uses it. Its commands have the names of their
// controls, such as "Label14(0)".
class StabiliserWindow : public SectionWindow {
 public:
  explicit StabiliserWindow(Screen& screen) : SectionWindow(screen), screen_(screen) {}

  void Click(const char* command);
  // Clicks the command and types the path into the file dialog that this opens. Returns false if no
  // dialog opens or if it doesn't accept the path.
  bool ChooseFile(const char* command, const QString& path);
  // Waits for a message box and closes it. Returns false if none comes within `patience`.
  bool ConfirmMessage(std::chrono::milliseconds patience);
  // Waits until the command shows this caption while the pointer is elsewhere.
  bool AwaitCommand(const char* command, const QString& caption,
                    std::chrono::milliseconds patience = kPatience);
  // Waits until the middle of the player's picture has about this colour.
  bool AwaitColour(QRgb colour);
  // The width in pixels of the filled part of a progress bar, such as "pbar(0)".
  int Progress(const char* bar) const;

 private:
  Screen& screen_;
};

}  // namespace kelvane::desktop
