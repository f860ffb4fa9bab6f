// One joiner that joins over and over.
#include <QPixmapCache>

#include "joiner/JoinerWindowTest.h"
#include "soak/ClockAhead.h"
#include "soak/Soak.h"

namespace kelvane::testing {
namespace {

class JoinerSoak : public JoinerWindowTest {
 protected:
  ListBox& Intermediates() const { return Get<ListBox>("List2"); }
  // The path, and what Qt holds of a line.
  static constexpr std::size_t kMostOfALine = 512;

  // Each join lists its intermediate files once more.
  std::size_t BytesOfALine() const {
    constexpr int kLines = 1000;
    const std::size_t before = BytesInUse();
    for (int i = 0; i < kLines; ++i) {
      Intermediates().AddItem(tools_.Path() + QLatin1String("/intermediate01.ts"));
    }
    return (BytesInUse() - before) / kLines;
  }
};

TEST_F(JoinerSoak, AThousandJoins) {
  for (const char* name : {"a.mp4", "b.mp4"}) AddSectionOf(name, "00:10:00.00");
  Remove(3);
  tools_.CropDoes(Print("frame=1 time=00:00:05.00 bitrate=1\n"));
  const std::size_t line = BytesOfALine();
  ASSERT_LT(line, kMostOfALine);
  Label& process = Get<Label>("Label3", ProcessLine);
  // The wait before a join is over as soon as the windows have been served.
  process.Change = [&](int) {
    if (process.Caption() != QLatin1String("Process: Joining Your Videos...")) return;
    AtNextDoEvents([] { MoveSteadyClockOn(std::chrono::seconds(1)); });
  };
  const QString output = tools_.Path() + QLatin1String("/all.mp4");
  constexpr int kIconsAtMost = 10240;  // KiB
  ASSERT_LE(QPixmapCache::cacheLimit(), kIconsAtMost);
  const auto round = [&](int) {
    EXPECT_EQ(JoinTo(output).size(), std::size_t{2});
    PumpOnce();
    // Qt 6.8 caches a box's icon anew each time, until its limit of 10 MiB; Qt 6.4 doesn't.
    QPixmapCache::clear();
  };
  ExpectFlat({.warmUp = 200, .rounds = 800, .round = round, .keptOnPurpose = [&] {
                return static_cast<std::size_t>(Intermediates().ListCount()) * line;
              }});
  EXPECT_EQ(tools_.Runs().size(), std::size_t{2 + 1000});
}

}  // namespace
}  // namespace kelvane::testing
