#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "demo/DemoPart.h"
#include "desktop/driver/JoinerWindow.h"
#include "desktop/driver/Picture.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/Windows.h"
#include "support/Videos.h"

namespace kelvane::desktop {
namespace {

struct ClipDesign {
  const char* colour;
  int seconds;
};

// All have one encoding, as a join requires.
constexpr ClipDesign kClips[] = {
    {"red", 120},  {"orange", 300}, {"yellow", 200}, {"green", 450}, {"cyan", 90},
    {"blue", 360}, {"violet", 240}, {"white", 500},  {"gray", 180},  {"black", 400},
};
constexpr int kTotalSeconds = 2840;
constexpr int kRemoved = 3;
constexpr int kHovered = 6;
constexpr double kFrame = 1.0 / 25;

class JoinerDemo : private DemoPart {
 public:
  JoinerDemo(Screen& screen, Program& program, const QDir& output)
      : DemoPart(screen, output), program_(program), window_(screen) {}

  void RemoveAndHover() {
    Open();
    Keep("joiner-1-empty", "the joiner window as it opens");
    AddAll();
    Remove();
    Hover();
    Leave();
  }

  void Join() {
    Open();
    AddAll();
    Keep("joiner-5-ten-sections", "ten sections: strips, table, list and totals");
    const QString joined = output_.filePath(QStringLiteral("joined.mp4"));
    Need(window_.ChooseFile(JoinerButton::kJoinSections, joined),
         "the save dialog doesn't take the name");
    const WindowId box = screen_.Await(QStringLiteral("Kelvane"));
    Need(box != 0, "the join doesn't end");
    Need(WaitFor([&] {
           const QImage inside = screen_.Picture(screen_.Place(box));
           return !AllOf(inside, inside.rect(), inside.pixel(0, 0));
         }),
         "the box stays empty");
    Keep("joiner-6-joined", "the end of the join; the tool printed a duration: one more strip");
    Need(CloseJoinMessage(screen_), "the box at the end doesn't close");
    const double seconds = VideoSeconds(joined);
    Say(QStringLiteral("%1: %2 seconds; its ten sections have %3")
            .arg(joined)
            .arg(seconds, 0, 'f', 2)
            .arg(kTotalSeconds));
    Need(std::abs(seconds - kTotalSeconds) <= kFrame, "the joined file isn't as long as its parts");
    Need(PicturesWithoutComplaint(joined) == kTotalSeconds * 25, "the joined file isn't whole");
    Leave();
  }

 private:
  QString PathOf(const ClipDesign& clip) const {
    return output_.filePath(QLatin1String(clip.colour) + QStringLiteral(".mp4"));
  }

  void Open() {
    program_.Start();
    Need(window_.Await(), "the joiner window doesn't come");
  }

  void AddAll() {
    int added = 0;
    for (const ClipDesign& clip : kClips) {
      Need(window_.ChooseFile(JoinerButton::kAddSection, PathOf(clip)),
           "the open dialog doesn't take the clip");
      Need(window_.AwaitSections(++added), "the section isn't counted");
    }
    Need(window_.AwaitTotals(added, QStringLiteral("02,840"), QStringLiteral("00:47:20")),
         "the totals aren't the sum of the clips");
    for (int section = 0; section < added; ++section) {
      Need(window_.Strip(section).width() == kClips[section].seconds / 10,
           "a strip isn't as wide as its clip is long");
    }
  }

  void Remove() {
    const QPoint entry = window_.OpenMenuAt(window_.OnChart(window_.Strip(kRemoved).center()));
    Need(!entry.isNull(), "the context menu doesn't come");
    screen_.MovePointer(entry);
    Keep("joiner-2-menu", "the context menu of the fourth strip");
    screen_.Click(entry);
    Need(WaitFor([&] { return window_.Strip(kRemoved).isEmpty(); }), "the strip isn't removed");
    screen_.MovePointer(window_.EmptyChartPosition());
    Need(window_.AwaitDetails({}), "the details don't go away");
    Keep("joiner-3-one-removed", "ten sections, the fourth of them removed");
  }

  void Hover() {
    window_.PointAtSection(kHovered);
    Need(window_.AwaitDetails(QStringLiteral("   Video Index: 07 Title: violet.mp4   ")),
         "the details don't come");
    Need(WaitFor([&] { return window_.LineSelected(kHovered) && window_.RowSelected(kHovered); }),
         "the hovered section isn't chosen in the lists");
    Keep("joiner-4-hovered", "the strip under the pointer: frame, details, its rows");
  }

  void Leave() {
    screen_.Close(window_.Id());
    Need(program_.AwaitExit() == 0, "the joiner's program doesn't end cleanly");
  }

  Program& program_;
  JoinerWindow window_;
};

void MakeClips(const QDir& output) {
  std::printf("demo: making ten clips, %d seconds in all\n", kTotalSeconds);
  std::fflush(stdout);
  for (const auto& [colour, seconds] : kClips) {
    const QString path = output.filePath(QLatin1String(colour) + QStringLiteral(".mp4"));
    if (!MakePlainVideo(path, QLatin1String(colour), seconds)) {
      throw std::runtime_error("a clip can't be made");
    }
  }
}

}  // namespace

// The join has a program of its own: in the first program a section is removed, before which a join
// of that list would end.
void ShowJoiner(Screen& screen, const QString& programFolder, const QString& display,
                const QDir& output) {
  MakeClips(output);
  const QString name = QStringLiteral("kelvane-joiner");
  Program removing(programFolder, display, name);
  JoinerDemo(screen, removing, output).RemoveAndHover();
  Program joining(programFolder, display, name);
  JoinerDemo(screen, joining, output).Join();
}

}  // namespace kelvane::desktop
