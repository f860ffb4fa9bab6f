// Clips joined and wrapped in the joiner window by the real tools.
#include <QDir>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

class JoinerRealTools : public JoinerTest {
 protected:
  // Clips of one encoding.
  void AddClips(const QList<std::pair<QString, int>>& clips) {
    for (const auto& [name, seconds] : clips) {
      const QString clip = program.PathOf(name);
      ASSERT_TRUE(MakePlainVideo(clip, "teal", seconds));
      ASSERT_NO_FATAL_FAILURE(Add(clip));
    }
  }
  QString Output() const { return program.PathOf("all.mp4"); }

  static constexpr double kFrame = 1.0 / 25;
};

TEST_F(JoinerRealTools, ThreeClipsBecomeOneAsLongAsTheyAreAndAllOfItDecodes) {
  ASSERT_NO_FATAL_FAILURE(AddClips({{"a.mp4", 2}, {"b.mp4", 3}, {"c.mp4", 4}}));
  EXPECT_TRUE(joiner.AwaitTotals(3, "00,009", "00:00:09"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_NEAR(VideoSeconds(Output()), 9, kFrame);
  EXPECT_EQ(Pictures(Output()), 9 * 25);
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinerRealTools, NamesWithBlanksAndAnyLettersAreJoined) {
  ASSERT_NO_FATAL_FAILURE(
      AddClips({{QString::fromUtf8("my Füße.mp4"), 2}, {QString::fromUtf8("動画.mp4"), 2}}));
  const QString output = program.PathOf(QString::fromUtf8("größer.mp4"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_NEAR(VideoSeconds(output), 4, kFrame);
  EXPECT_EQ(Pictures(output), 4 * 25);
}

TEST_F(JoinerRealTools, AnApostropheSpoilsTheJoinAndNoSourceIsTouched) {
  ASSERT_NO_FATAL_FAILURE(AddClips({{"it's.mp4", 2}, {"b.mp4", 2}}));
  const QByteArray before = ContentOf(added[0]) + ContentOf(added[1]);
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_FALSE(QFile::exists(Output()));
  EXPECT_EQ(ContentOf(added[0]) + ContentOf(added[1]), before);
}

TEST_F(JoinerRealTools, AnExistingFileGivesWayEvenToAJoinThatFailsOnItsWay) {
  ASSERT_NO_FATAL_FAILURE(AddClips({{"a.mp4", 2}, {"b.mp4", 2}}));
  const QByteArray first = ContentOf(added[0]);
  ASSERT_TRUE(QFile::remove(added[1]));
  ASSERT_NO_FATAL_FAILURE(WriteFile(Output(), "somebody's work"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(Output()));
  EXPECT_EQ(Pictures(Output()), 2 * 25) << "the tool came that far";
  EXPECT_EQ(ContentOf(added[0]), first);
}

TEST_F(JoinerRealTools, EachSectionBecomesATransportStreamThatDecodes) {
  ASSERT_NO_FATAL_FAILURE(AddClips({{"a.mp4", 2}, {"b.mp4", 3}}));
  joiner.Choose(JoinerMode::kTransportStreams);
  screen.Click(joiner.ButtonCentre(JoinerButton::kJoinSections));
  ASSERT_TRUE(ConfirmJoin(screen, 60s));
  EXPECT_EQ(QDir(program.Folder()).entryList({"*.ts"}),
            (QStringList{"intermediate01.ts", "intermediate02.ts"}));
  EXPECT_EQ(Pictures(program.PathOf("intermediate01.ts")), 2 * 25);
  EXPECT_EQ(Pictures(program.PathOf("intermediate02.ts")), 3 * 25);
}

}  // namespace
}  // namespace kelvane::desktop
