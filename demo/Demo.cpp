// Drives the real windows on a private display, from the load of a clip to a crop, a join and a
// stabilised video. Leaves a picture of each step and the new files. Exits with 0 only if the steps
// show what they should and the new files are whole.
//
//   kelvane_demo PROGRAM_FOLDER OUTPUT_FOLDER
#include <QDir>
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "demo/DemoPart.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/QtOnDisplay.h"
#include "desktop/driver/Windows.h"
#include "support/Videos.h"

namespace {

using namespace kelvane;
using namespace kelvane::desktop;

constexpr QSize kClip(960, 400);
constexpr int kClipSeconds = 60;
constexpr int kThickness = 5;
// The middle of each bar while the bars are at the edges of the canvas.
constexpr QPoint kOnLeftBar(2, kClip.height() / 2);
constexpr QPoint kOnTopBar(kClip.width() / 2, 2);
constexpr QPoint kOnRightBar(kClip.width() - 3, kClip.height() / 2);
constexpr QPoint kOnBaseBar(kClip.width() / 2, kClip.height() - 3);
constexpr Region kWhole = {
    .left = 0, .top = 0, .right = kClip.width() - kThickness, .base = kClip.height() - kThickness};
constexpr Region kRegion = {.left = 61, .top = 23, .right = 722, .base = 348};
constexpr QSize kRegionSize(kRegion.right - kRegion.left, kRegion.base - kRegion.top);
// ffmpeg rounds sizes down to even numbers.
constexpr QSize kCropped(kRegionSize.width() / 2 * 2, kRegionSize.height() / 2 * 2);

class Demo : private DemoPart {
 public:
  Demo(Screen& screen, Program& program, const QDir& output)
      : DemoPart(screen, output), program_(program), window_(screen), job_(screen) {}

  void Run() {
    MakeClip();
    OpenProgram();
    Load();
    Play();
    CrossBars();
    DragBarsHalfOut();
    DragBarsIn();
    Preview();
    Crop();
    CancelAnotherCrop();
    CheckFiles();
    Leave();
  }

 private:
  void MakeClip() {
    Say(QStringLiteral("making a clip of %1 seconds, %2 by %3 pixels")
            .arg(kClipSeconds)
            .arg(kClip.width())
            .arg(kClip.height()));
    Need(MakeDemoClip(clip_, kClip, kClipSeconds), "the clip can't be made");
  }

  void OpenProgram() {
    program_.Start();
    Need(window_.Await(), "the main window doesn't come");
    Keep("01-empty-window", "the main window, nothing loaded yet");
  }

  // Clicks a command and returns its file dialog once that is drawn.
  WindowId OpenDialog(Command command) {
    const QList<WindowId> known = screen_.Windows();
    window_.Click(command);
    const WindowId dialog = screen_.AwaitNew(known);
    Need(dialog != 0 && WaitFor([&] { return screen_.Active(dialog); }), "no file dialog opens");
    Need(WaitFor([&] { return Colours(screen_.Picture(screen_.Place(dialog))) > kManyColours; }),
         "the file dialog isn't drawn");
    return dialog;
  }

  void Load() {
    const WindowId dialog = OpenDialog(kLoadVideo);
    Keep("02-open-dialog", "Load Video was clicked; the file's name is typed in here");
    Need(TypeFileName(screen_, dialog, clip_), "the open dialog doesn't take the file");
    Need(window_.AwaitVideo(kClip), "the read-outs don't show the clip's size");
    Need(window_.AwaitBarsAround(kClip), "the four green bars aren't round the picture");
    Keep("03-loaded-video", "path, source size, canvas with its green bars, read-outs");
  }

  void Play() {
    window_.Click(kRunVideo);
    Need(WaitFor([&] { return Colours(window_.Inside(kClip)) > kManyColours; }),
         "the video doesn't play");
    const QImage before = window_.Inside(kClip);
    Need(WaitFor([&] { return window_.Inside(kClip) != before; }), "the picture stands still");
    Need(window_.AwaitCaption(QStringLiteral("Label12"), QStringLiteral("0:01:00")),
         "the duration isn't shown");
    Need(window_.AwaitCaption(QStringLiteral("Label13"), QStringLiteral("00:01")),
         "the position isn't shown");
    Keep("04-playing-video", "Run Video: the clip plays beneath the bars, the position ticks");
  }

  void CrossBars() {
    Pull(kOnRightBar, {300 - kWhole.right, 0});
    Pull(kOnLeftBar, {400, 0});
    Need(window_.AwaitRegion({.left = 400, .top = 0, .right = 300, .base = kWhole.base}),
         "the left bar doesn't pass the right one");
    Keep("05-crossed-bars", "the left bar was dragged past the right one; the width is negative");
    ResetMarkers();
  }

  void DragBarsHalfOut() {
    Pull(kOnLeftBar, {-3, 0});
    Pull(kOnTopBar, {0, -60});
    Need(window_.AwaitRegion({.left = -3, .top = -60, .right = kWhole.right, .base = kWhole.base}),
         "the bars don't leave the canvas");
    Keep("06-bar-half-out", "half of the left bar and all of the top bar lie outside the canvas");
    ResetMarkers();
  }

  void ResetMarkers() {
    window_.Click(kResetMarkers);
    Need(window_.AwaitVideo(kClip), "the bars don't go back to the edges");
  }

  void DragBarsIn() {
    Pull(kOnLeftBar, {kRegion.left, 0});
    Pull(kOnTopBar, {0, kRegion.top});
    Pull(kOnRightBar, {kRegion.right - kWhole.right, 0});
    Pull(kOnBaseBar, {0, kRegion.base - kWhole.base});
    Need(window_.AwaitRegion(kRegion), "the bars don't follow the pointer");
    Keep("07-dragged-bars", "all four bars were dragged in while the video plays");
  }

  // Drags a bar at the edge of the canvas.
  void Pull(QPoint bar, QPoint way) { screen_.Drag(window_.OnCanvas(bar), way); }

  void Preview() {
    const QList<WindowId> known = screen_.Windows();
    window_.Click(kPreviewCroppedVideo);
    const WindowId player = screen_.AwaitNew(known);
    Need(player != 0, "the player's window doesn't come");
    Need(WaitFor([&] { return screen_.Place(player).size() == kCropped; }),
         "the player doesn't show the cropped size");
    // The player's window is black until it paints. The clip has no black.
    const auto shown = [&] {
      const QImage inside = screen_.Picture(screen_.Place(player));
      return CountOf(inside, inside.rect(), kBlack) == 0;
    };
    Need(WaitFor([&] { return HoldsFor(shown, 700ms); }), "the player shows no picture");
    Keep("08-preview", "Preview Cropped Video: the player shows the region");
    screen_.Activate(player);
    Need(WaitFor([&] { return screen_.Active(player); }), "the player doesn't become active");
    screen_.PressKey('q');
    Need(WaitFor([&] { return !screen_.Exists(player); }), "the player doesn't end");
  }

  void Crop() {
    const WindowId dialog = OpenDialog(kCropVideo);
    Keep("09-save-dialog", "Crop Video was clicked; the new file's name is typed in here");
    Need(TypeFileName(screen_, dialog, cropped_), "the save dialog doesn't take the name");
    Need(job_.Await(), "the window of the job doesn't come");
    Need(WaitFor([&] { return job_.Progress() > 0 && window_.Progress() > 0; }),
         "the progress bars don't move");
    // The percentage in the status is that of the update before.
    const int first = job_.Progress();
    const QString noFigure = QStringLiteral("Progress: 00.00% Complete: Status: Cropping Video");
    Need(WaitFor([&] { return job_.Progress() > first && !job_.ShowsStatus(noFigure); }),
         "the percentage doesn't follow the bar");
    Keep("10-running-job", "the job runs; both progress bars move");
    Need(job_.AwaitEndStatus(60s), "the job doesn't end");
    Keep("11-finished-job", "the job is done");
    job_.Cancel();
    Need(WaitFor([&] { return !job_.Open(); }), "the finished job's window doesn't close");
  }

  void CancelAnotherCrop() {
    Need(ChooseFile(screen_, window_, kCropVideo, afterCancel_), "the second crop doesn't start");
    Need(job_.Await(), "the window of the second job doesn't come");
    Need(WaitFor([&] { return job_.Progress() > 0; }), "the second job doesn't run");
    const QRect place = screen_.Place(job_.Id());
    const QImage before = screen_.Picture(place);
    job_.Cancel();
    Need(WaitFor([&] { return !job_.Open(); }), "Cancel doesn't close the window");
    // When the tool prints again, the main window repaints what the closed one covered.
    Need(WaitFor([&] { return screen_.Picture(place) != before; }),
         "the closed window can still be seen");
    Keep("12-cancelled-job", "Cancel closed the window; the tool goes on and finishes its file");
    Need(WaitFor([&] { return program_.Children("RSDZT").isEmpty(); }, 60s),
         "the tool doesn't end");
  }

  void CheckFiles() {
    const QString filter = QStringLiteral("crop=%1:%2:%3:%4")
                               .arg(kRegionSize.width())
                               .arg(kRegionSize.height())
                               .arg(kRegion.left)
                               .arg(kRegion.top);
    const QString bare = program_.PathOf(QStringLiteral("bare.mp4"));
    Need(RunTool(QStringLiteral("ffmpeg"), {"-i", clip_, "-vf", filter, bare}),
         "the tool's own crop fails");
    Need(VideoSize(bare) == kCropped, "the tool itself doesn't give the expected size");
    for (const QString& file : {cropped_, afterCancel_}) {
      Need(VideoSize(file) == kCropped, "the cropped file has the wrong size");
      Need(PicturesWithoutComplaint(file) == PicturesWithoutComplaint(clip_),
           "the cropped file isn't whole");
      Say(QStringLiteral("%1: as large as the tool's own file with %2").arg(file, filter));
    }
  }

  void Leave() {
    screen_.Close(window_.Id());
    Need(program_.AwaitExit() == 0, "the program doesn't end cleanly");
  }

  Program& program_;
  MainWindow window_;
  JobWindow job_;
  QString clip_ = output_.filePath(QStringLiteral("clip.mp4"));
  QString cropped_ = output_.filePath(QStringLiteral("cropped.mp4"));
  QString afterCancel_ = output_.filePath(QStringLiteral("cropped-after-cancel.mp4"));
};

void Show(const QString& programFolder, const QString& outputFolder) {
  QDir output(outputFolder);
  output.removeRecursively();
  if (!output.mkpath(QStringLiteral("."))) throw std::runtime_error("can't make the output folder");

  // A blank would cut the path of a new file, so the windows get the folder by a link without one.
  const QTemporaryDir links;
  QDir shown(output.absolutePath());
  if (shown.path().contains(QLatin1Char(' '))) {
    if (!QFile::link(shown.path(), links.filePath(QStringLiteral("demo")))) {
      throw std::runtime_error("can't make a link to the output folder");
    }
    shown.setPath(links.filePath(QStringLiteral("demo")));
  }

  const QTemporaryDir home;
  const PrivateDisplay display(home.path().toStdString());
  const QtOnDisplay qt(display, home.path().toStdString());
  Screen screen(display.Name());
  Program program(programFolder, QString::fromStdString(display.Name()));
  Demo(screen, program, shown).Run();
  ShowSections(screen, programFolder, QString::fromStdString(display.Name()), shown);
  ShowStabiliser(screen, programFolder, QString::fromStdString(display.Name()), shown);
  ShowJoiner(screen, programFolder, QString::fromStdString(display.Name()), shown);
  std::printf("demo: done; the pictures and the new files lie in %s\n",
              qUtf8Printable(output.absolutePath()));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: kelvane_demo PROGRAM_FOLDER OUTPUT_FOLDER\n", stderr);
    return 2;
  }
  try {
    Show(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "demo: failed: %s\n", failure.what());
    return 1;
  }
  return 0;
}
