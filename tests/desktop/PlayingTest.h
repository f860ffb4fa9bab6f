#pragma once

#include <algorithm>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {

// The video runs beneath the bars.
class Playing : public DesktopTest {
 protected:
  using DesktopTest::DesktopTest;

  // Loads a clip and runs it; its size must be this one.
  void LoadAndRun(const QString& path, QSize size) {
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    ASSERT_TRUE(window.AwaitVideo(size));
    ASSERT_TRUE(window.AwaitCanvas());
    window.Click(kRunVideo);
  }

  // The pictures change, and go on changing.
  bool AwaitMoving(QSize size) const {
    for (int change = 0; change < 3; ++change) {
      const QImage before = window.Inside(size);
      if (!WaitFor([&] { return window.Inside(size) != before; }, 5s)) return false;
    }
    return true;
  }

  // The same picture for longer than a clip shows one.
  bool AwaitStill(QSize size) const {
    QImage last;
    return WaitFor(
        [&] {
          last = window.Inside(size);
          return HoldsFor([&] { return window.Inside(size) == last; }, 500ms);
        },
        10s);
  }

  bool AwaitBlack(QSize size) const {
    return WaitFor([&] { return IsBlack(size); }, 5s);
  }
  bool IsBlack(QSize size) const {
    const QImage inside = window.Inside(size);
    return AllOf(inside, inside.rect(), kBlack);
  }

  // The bars stand whole at the edges, whatever colours the picture between them has.
  bool BarsLieOver(QSize size) const {
    const QImage canvas = screen.Picture(QRect(window.OnCanvas({}), size));
    const QRegion bars = AllOf(BarsAround(size));
    return std::all_of(bars.begin(), bars.end(),
                       [&](const QRect& part) { return AllOf(canvas, part, kMarker); });
  }

  // The window answers the pointer.
  bool Lives() {
    window.PointAtGround();
    window.PointAt(kPauseVideo);
    return WaitFor([&] { return window.Shows("Label14(2)", "Pause Video", kLit); }, 5s);
  }
};

}  // namespace kelvane::desktop
