#pragma once

#include "desktop/DesktopTest.h"
#include "desktop/driver/JoinerWindow.h"

namespace kelvane::desktop {

// The program of the joiner window, opened. Its tools are the real ones unless a test replaces
// them.
class JoinerTest : public DesktopTest {
 protected:
  JoinerTest() : DesktopTest(QStringLiteral("kelvane-joiner")) {}

  void SetUp() override;
  void CloseJoinerAndExpectEnd();

  // From now on the probe tool prints what the file itself holds, and takes no other notice of it.
  void PretendProbing();
  // A file of which the pretending probe tells this duration.
  QString Pretended(const QString& name, const QString& duration) const;
  // Add Video Section, with that file; waits for its count.
  void Add(const QString& file);
  // Three pretended sections, "a.mp4" of 200 seconds, "b.mp4" of 610 and "c.mp4" of 303.
  void AddThreePretended();

  // A section of which no tool has told a duration: all that there is of it is a line of the list.
  void ExpectPathWithoutStripOrRow(int section) const;

  // Join All Sections with that output, up to the box at its end, which is closed.
  void JoinTo(const QString& output);
  QString ListFile() const { return program.ProgramFolder() + QStringLiteral("/files.txt"); }
  // What the join's command line holds behind the tool's name.
  QStringList CopyRun(const QStringList& output) const;
  QStringList WrapRun(const QString& source, const QString& intermediate) const;

  JoinerWindow joiner{screen};
  // The paths of what was added.
  QStringList added;
};

}  // namespace kelvane::desktop
