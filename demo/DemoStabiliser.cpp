#include "demo/DemoPart.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/StabiliserWindow.h"
#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kScene(960, 400);
constexpr int kSeconds = 20;
constexpr std::chrono::minutes kRunTime(2);
constexpr const char* kTest = "Label12(2)";

class StabiliserDemo : private DemoPart {
 public:
  StabiliserDemo(Screen& screen, Program& program, const QDir& output)
      : DemoPart(screen, output), program_(program), window_(screen) {}

  void Run() {
    MakeShakenClip();
    program_.Start();
    Need(window_.Await(), "the stabiliser's window doesn't come");
    Select();
    Mark();
    Extract();
    Test();
    Apply();
    screen_.Close(window_.Id());
    Need(program_.AwaitExit() == 0, "the stabiliser's program doesn't end cleanly");
  }

 private:
  // The scene of the main window's clip, filmed by a camera that shakes.
  void MakeShakenClip() {
    const QString scene = program_.PathOf(QStringLiteral("scene.mp4"));
    Need(MakeDemoClip(scene, kScene, kSeconds) &&
             RunTool(QStringLiteral("ffmpeg"),
                     {"-v", "error", "-i", scene, "-vf",
                      "crop=880:360:x='40+12*sin(n*0.9)':y='20+9*sin(n*1.3)'", clip_}),
         "the shaken clip can't be made");
  }

  void Select() {
    Need(window_.ChooseFile("Label6(0)", clip_), "the dialog doesn't take the clip");
    Need(window_.AwaitTime(TimeReadOut::kEnd, "00:00:20.0"), "the clip's length isn't shown");
    Need(WaitFor([&] { return Colours(screen_.Picture(window_.Place("wmp"))) > kManyColours; }),
         "the first picture isn't shown");
    Keep("stabiliser-1-selected", "a video of 20 seconds: its time line and its first picture");
  }

  void Mark() {
    constexpr int kPixelsPerSecond = 43;
    window_.DragNeedle(SectionWindow::kStartNeedle, 5 * kPixelsPerSecond);
    window_.DragNeedle(SectionWindow::kEndNeedle, -11 * kPixelsPerSecond);
    Need(window_.AwaitTime(TimeReadOut::kSpan, "00:00:04.0"), "the needles don't follow");
    Keep("stabiliser-2-marked", "a section of four seconds is marked; the player shows its end");
  }

  void Extract() {
    Need(window_.ChooseFile("Label14(0)", part_), "the dialog doesn't take the name");
    Need(WaitFor([&] { return screen_.Find("Kelvane").has_value(); }, kRunTime),
         "the section isn't extracted");
    Keep("stabiliser-3-extracted", "the section has been extracted");
    Need(window_.ConfirmMessage(kRunTime), "the message doesn't close");
  }

  void Test() {
    window_.Click(kTest);
    Need(WaitFor([&] { return window_.Progress("pbar(1)") > 0; }, kRunTime),
         "the second pass doesn't run");
    Keep("stabiliser-4-testing", "the second pass of a test; the command now reads Cancel");
    Need(window_.AwaitCommand(kTest, "Test Settings", kRunTime), "the test doesn't end");
    Keep("stabiliser-5-result", "the result plays");
  }

  void Apply() {
    Need(window_.ChooseFile("Label12(0)", steady_), "the dialog doesn't take the name");
    Need(WaitFor([&] { return window_.Progress("pbar(0)") > 0; }, kRunTime),
         "the first pass doesn't run");
    Keep("stabiliser-6-applying", "the first pass over the whole video");
    Need(window_.ConfirmMessage(kRunTime), "the video isn't stabilised");
    Need(PicturesWithoutComplaint(steady_) == PicturesWithoutComplaint(clip_),
         "the stabilised file isn't whole");
    Say(QStringLiteral("%1: %2 pictures, as many as the shaken clip")
            .arg(steady_)
            .arg(PicturesWithoutComplaint(steady_)));
  }

  Program& program_;
  StabiliserWindow window_;
  QString clip_ = output_.filePath(QStringLiteral("shaken.mp4"));
  QString part_ = output_.filePath(QStringLiteral("part.mp4"));
  QString steady_ = output_.filePath(QStringLiteral("steady.mp4"));
};

}  // namespace

void ShowStabiliser(Screen& screen, const QString& programFolder, const QString& display,
                    const QDir& output) {
  Program program(programFolder, display, QStringLiteral("kelvane-stabiliser"));
  StabiliserDemo(screen, program, output).Run();
}

}  // namespace kelvane::desktop
