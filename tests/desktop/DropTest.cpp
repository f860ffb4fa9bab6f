// Files that are dragged from another program, by X's drag and drop.
#include <sys/prctl.h>

#include <QProcess>
#include <QUrl>
#include <csignal>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

// A program from which things are dragged, with the real pointer.
class Source {
 public:
  Source(Screen& screen, const QStringList& arguments) : screen_(screen) {
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process_.start(KELVANE_DRAG_SOURCE, arguments);
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() {
    process_.kill();
    process_.waitForFinished();
  }

  // Presses in the program's window, which begins a drag, and moves the pointer to `place`.
  bool DragTo(QPoint place) {
    const WindowId window = screen_.Await("Drag source");
    if (window == 0) return false;
    screen_.MovePointer(screen_.Place(window).center());
    screen_.Press(kLeftButton);
    if (!WaitFor([&] { return Printed().contains("begun"); })) return false;
    place_ = place;
    Shake();
    return true;
  }
  // Waits until the window under the pointer accepts the drag.
  bool AwaitTaken() {
    return WaitFor([&] {
      Shake();
      return Printed().trimmed().endsWith("over copy");
    });
  }
  // Whether the window under the pointer keeps refusing the drag for half a second.
  bool StaysRefused() {
    constexpr auto kTime = 500ms;
    return HoldsFor(
        [&] {
          Shake();
          return !Printed().contains("over copy");
        },
        kTime);
  }
  // Drops what is dragged, and waits until the source has got this answer.
  bool Drop(const QByteArray& answer) {
    screen_.Release(kLeftButton);
    return WaitFor([&] { return Printed().contains("dropped " + answer); });
  }
  const QByteArray& Printed() { return printed_ += process_.readAllStandardOutput(); }

 private:
  // A drag asks the window under the pointer whenever the pointer moves.
  void Shake() {
    screen_.MovePointer(place_);
    screen_.MovePointer(place_ + QPoint(1, 0));
  }

  Screen& screen_;
  QPoint place_;
  QProcess process_;
  QByteArray printed_;
};

QString Address(const QString& path) {
  return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
}

using DragOntoTheMainWindow = DesktopTest;

TEST_F(DragOntoTheMainWindow, LoadsTheFileAfterTheDropHasBeenAnswered) {
  video = program.PathOf("my video.mp4");
  ASSERT_TRUE(MakeVideo(video, QSize(640, 360), 1));
  program.ReplaceTool("ffprobe", program.Gate("go") + R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  Source source(screen, {"files", Address(video), Address(program.ProgramFolder())});
  ASSERT_TRUE(source.DragTo(window.OnCanvas({200, 150})));
  EXPECT_TRUE(source.AwaitTaken()) << source.Printed().constData();
  EXPECT_TRUE(source.Drop("copy")) << "while the probe waits: " << source.Printed().constData();
  EXPECT_TRUE(program.Open("go"));
  EXPECT_TRUE(program.Open("go"));
  EXPECT_TRUE(window.AwaitVideo(QSize(640, 360)));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
  CloseAndExpectEnd();
}

class RefusedDrag : public DesktopTest {
 protected:
  void ExpectRefusal(const QStringList& dragged) {
    Source source(screen, dragged);
    ASSERT_TRUE(source.DragTo(window.Place("Text1(1)").center()));
    EXPECT_TRUE(source.StaysRefused());
    EXPECT_TRUE(source.Drop("refused")) << source.Printed().constData();
    EXPECT_TRUE(window.Answers());
    EXPECT_TRUE(program.RunsOf("ffprobe").isEmpty());
  }
};

TEST_F(RefusedDrag, OfATextAFolderOrARemoteAddressDoesNothing) {
  ReplaceProbe();
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const QStringList& dragged : {QStringList{"text", program.ProgramFolder() + "/kelvane"},
                                     {"files", Address(program.ProgramFolder())},
                                     {"files", "https://kelvane.example/video.mp4"}}) {
    SCOPED_TRACE(dragged.last().toStdString());
    ASSERT_NO_FATAL_FAILURE(ExpectRefusal(dragged));
  }
  CloseAndExpectEnd();
}

TEST_F(RefusedDrag, BehindADialogDoesNothing) {
  ReplaceProbe();
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew({window.Id()});
  ASSERT_NE(dialog, 0U);
  WriteFile(program.PathOf("a.mp4"), "a");
  {
    Source source(screen, {"files", Address(program.PathOf("a.mp4"))});
    const QRect area = window.Area();
    ASSERT_TRUE(source.DragTo(area.bottomLeft() + QPoint(10, -10)));
    EXPECT_TRUE(source.StaysRefused());
    EXPECT_TRUE(source.Drop("refused")) << source.Printed().constData();
  }
  screen.Activate(dialog);
  ASSERT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
  screen.PressKey(kEscape);
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }));
  EXPECT_TRUE(program.RunsOf("ffprobe").isEmpty());
  CloseAndExpectEnd();
}

using DragOntoTheJoiner = JoinerTest;

TEST_F(DragOntoTheJoiner, AddsTheFilesInTheirOrder) {
  QStringList dragged = {"files"};
  for (const char* name : {"b.mp4", "a.mp4", "c.mp4"}) {
    ASSERT_TRUE(MakePlainVideo(program.PathOf(name), "teal", 2));
    dragged << Address(program.PathOf(name));
  }
  Source source(screen, dragged);
  ASSERT_TRUE(source.DragTo(joiner.Line(0).center()));
  EXPECT_TRUE(source.AwaitTaken()) << source.Printed().constData();
  EXPECT_TRUE(source.Drop("copy")) << source.Printed().constData();
  EXPECT_TRUE(joiner.AwaitSections(3));
  EXPECT_TRUE(joiner.AwaitLine(0, program.PathOf("b.mp4")));
  EXPECT_TRUE(joiner.AwaitLine(1, program.PathOf("a.mp4")));
  EXPECT_TRUE(joiner.AwaitLine(2, program.PathOf("c.mp4")));
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
