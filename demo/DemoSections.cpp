#include "demo/DemoPart.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {
namespace {

class SectionsDemo : private DemoPart {
 public:
  SectionsDemo(Screen& screen, Program& program, const QDir& output)
      : DemoPart(screen, output), program_(program), window_(screen) {}

  void Run() {
    Open();
    Scroll();
    DragNeedles();
    OpenMenu();
    MoveSliders();
    Leave();
  }

 private:
  void Open() {
    program_.Start();
    Need(window_.Await(), "the section window doesn't come");
    Keep("sections-1-opened", "the section window as it opens");
  }

  void Scroll() {
    constexpr int kClicks = 6;
    for (int click = 0; click < kClicks; ++click) window_.ClickArrow(TimeLineArrow::kTowardsEnd);
    Need(WaitFor([&] { return window_.OnTimeLine(SectionWindow::kEndNeedle).isEmpty(); }),
         "the time line doesn't scroll");
    Keep("sections-2-scrolled", "six clicks on the right arrow: 240 seconds further");
    window_.ClickArrow(TimeLineArrow::kTowardsStart);
    Need(WaitFor([&] { return window_.OnTimeLine(SectionWindow::kStartNeedle).left() == 8; }),
         "the time line doesn't come back");
  }

  void DragNeedles() {
    window_.DragNeedle(SectionWindow::kStartNeedle, 90);
    window_.DragNeedle(SectionWindow::kEndNeedle, 222);
    Need(window_.AwaitTime(TimeReadOut::kStart, "00:01:40") &&
             window_.AwaitTime(TimeReadOut::kEnd, "00:06:00") &&
             window_.AwaitTime(TimeReadOut::kSpan, "00:04:20"),
         "the read-outs don't follow the needles");
    Keep("sections-3-needles", "both needles were dragged: start, end and span");
  }

  void OpenMenu() {
    constexpr QPoint kLater(600, 10);
    const QPoint entry = window_.OpenMenuAt(kLater, 1);
    Need(!entry.isNull(), "the context menu doesn't come");
    screen_.MovePointer(entry);
    Keep("sections-4-menu", "the context menu of the time line, open at ten minutes");
    screen_.Click(entry);
    Need(
        WaitFor([&] { return window_.OnTimeLine(SectionWindow::kEndNeedle).left() == kLater.x(); }),
        "the menu doesn't place the needle");
  }

  void MoveSliders() {
    constexpr int kPitch = 60;
    for (int slider = 0; slider < SectionWindow::kSliders; ++slider) {
      window_.DragThumb(slider, kPitch * (slider + 1));
    }
    Need(window_.AwaitOption(SectionWindow::kSliders - 1, "28"), "the sliders don't move");
    Keep("sections-5-sliders", "all seven sliders were dragged; the last one is lit");
    screen_.MovePointer(window_.Track(2).center());
    constexpr QRgb kHover = 0xff404040;
    const QPoint frame = window_.Track(2).topLeft() - QPoint(1, 1);
    Need(WaitFor([&] { return screen_.Pixel(frame) == kHover; }), "the track isn't framed");
    Keep("sections-6-track", "a track under the pointer has a frame");
  }

  void Leave() {
    screen_.Close(window_.Id());
    Need(program_.AwaitExit() == 0, "the section window's program doesn't end cleanly");
  }

  Program& program_;
  SectionWindow window_;
};

}  // namespace

void ShowSections(Screen& screen, const QString& programFolder, const QString& display,
                  const QDir& output) {
  Program program(programFolder, display, QStringLiteral("kelvane-sections"));
  SectionsDemo(screen, program, output).Run();
}

}  // namespace kelvane::desktop
