#pragma once

#include "desktop/DesktopTest.h"
#include "desktop/driver/JoinerWindow.h"

namespace kelvane::desktop {

// Starts the program of the joiner window, with the real tools unless the test replaces them.
class JoinerTest : public DesktopTest {
 protected:
  JoinerTest() : DesktopTest("kelvane-joiner") {}

  void SetUp() override;
  void CloseJoinerAndExpectEnd();

  // Adds that file as a section, and waits until the window counts it.
  void Add(const QString& file);
  // Joins all sections to that output, and closes the message box at the end.
  void JoinTo(const QString& output);

  JoinerWindow joiner{screen};
  // The paths of the added sections.
  QStringList added;
};

}  // namespace kelvane::desktop
