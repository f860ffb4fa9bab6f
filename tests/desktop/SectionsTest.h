#pragma once

#include "desktop/DesktopTest.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {

// The program of the section window, opened.
class SectionsTest : public DesktopTest {
 protected:
  SectionsTest() : DesktopTest(QStringLiteral("kelvane-sections")) {}

  void SetUp() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) {
      program.ReplaceTool(QLatin1String(tool), QStringLiteral("exit 1"));
    }
    program.Start();
    ASSERT_TRUE(sections.Await()) << "the section window doesn't come";
  }
  // The window starts no tool, whatever the user does.
  void TearDown() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) {
      EXPECT_TRUE(program.RunsOf(QLatin1String(tool)).isEmpty()) << tool;
    }
    DesktopTest::TearDown();
  }

  void CloseSectionsAndExpectEnd() {
    screen.Close(sections.Id());
    EXPECT_EQ(program.AwaitExit(), 0);
  }

  SectionWindow sections{screen};
};

}  // namespace kelvane::desktop
