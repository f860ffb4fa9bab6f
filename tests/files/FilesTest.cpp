// Real files of each kind, in the windows and with the real tools.
#include <QFile>
#include <QStandardPaths>
#include <QStringList>
#include <cstdlib>

#include "files/FileTable.h"
#include "joiner/Form4.h"
#include "platform/player/PlaybackCore.h"
#include "shared/SharedValues.h"
#include "support/Pictures.h"
#include "support/PlayerWatch.h"
#include "support/Videos.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {

void PrintTo(const KnownFile& file, std::ostream* out) { *out << file.name; }

namespace {

class Files : public MainWindowTest, public ::testing::WithParamInterface<KnownFile> {
 protected:
  void SetUp() override {
    for (const char* tool : {"ffmpeg", "ffprobe"}) {
      QFile::remove(InFolder(tool));
      QFile::link(QStandardPaths::findExecutable(tool), InFolder(tool));
    }
    QString printed;
    const QString commands = "cd " + tools_.Path() + '\n' + kMakers + GetParam().recipe;
    ASSERT_TRUE(RunTool("sh", {"-c", commands}, &printed)) << printed.toStdString();
    if (GetParam().turned != 0) {
      ASSERT_TRUE(MakeTurned(InFolder("plain.mp4"), file_, GetParam().turned));
    }
    Pick(file_);
  }

  QString InFolder(const QString& name) const { return tools_.Path() + '/' + name; }
  static QByteArray ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  // The first picture as the file has it, neither turned nor stretched.
  QImage DecodedPicture() const {
    RunTool("ffmpeg", {"-v", "error", "-noautorotate", "-i", file_, "-map", "0:v:0", "-frames:v",
                       "1", "-pix_fmt", "rgb24", InFolder("decoded.png")});
    return QImage(InFolder("decoded.png"));
  }
  // Whether the pixels are the same, up to what encodings and conversions of colours round.
  static bool Alike(const QImage& shown, const QImage& stored) {
    constexpr int kRounding = 12;
    for (int y = 0; y < stored.height(); ++y) {
      for (int x = 0; x < stored.width(); ++x) {
        if (!IsNear(shown.pixel(x, y), stored.pixel(x, y), kRounding)) return false;
      }
    }
    return true;
  }
  int Value(ReadOut number) const {
    return QString::fromStdString(Number(number)).remove(',').toInt();
  }

  const QString file_ = InFolder(GetParam().name);
};

TEST_P(Files, ShowTheirSizeAndDuration) {
  const auto line = [&](ReadOut number) {
    return QString::fromStdString(Number(number)).trimmed().toStdString();
  };
  EXPECT_EQ(line(SourceWidth) + " by " + line(SourceHeight) + ", " +
                (VideoDuration.isEmpty() ? "no time" : VideoDuration.toStdString()),
            GetParam().shown);
}

TEST_P(Files, Play) {
  auto& player = Get<WindowsMediaPlayer>("wmp");
  const PlayerWatch watch(player);
  Give(RunVideo);
  if (GetParam().played == Played::kAsItIsStored) {
    const QImage stored = DecodedPicture();
    ASSERT_FALSE(stored.isNull());
    EXPECT_TRUE(WaitFor([&] {
      const QImage shown = Picture(player);
      const QRect common = shown.rect() & stored.rect();
      return Alike(shown.copy(common), stored.copy(common));
    }));
    return;
  }
  EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() > 0.1 || !watch.Core().Active(); }));
  const QImage shown = Picture(player);
  EXPECT_EQ(CountOf(shown, kNothingPlayed), shown.width() * shown.height());
}

TEST_P(Files, AreCroppedAsByTheToolAlone) {
  Bar(LeftBar).setLeft(16);
  Bar(TopBar).setTop(8);
  Tick(Get<Timer>("Timer2"));
  CropTo(InFolder("cropped.mp4"));
  ASSERT_NE(JobWindow(), nullptr);
  RunJob(*JobWindow());
  const QString filter =
      QStringLiteral("crop=%1:%2:16:8").arg(Value(RegionWidth)).arg(Value(RegionHeight));
  RunTool("ffmpeg", {"-i", file_, "-vf", filter, InFolder("by-hand.mp4")});
  EXPECT_EQ(ContentOf(InFolder("cropped.mp4")), ContentOf(InFolder("by-hand.mp4")));
  if (GetParam().cropped.isEmpty()) {
    EXPECT_EQ(DecodedPictures(InFolder("cropped.mp4")), 0);
  } else {
    EXPECT_EQ(VideoSize(InFolder("cropped.mp4")), GetParam().cropped);
  }
}

TEST_P(Files, AreJoined) {
  Form4 joiner;
  joiner.Load();
  joiner.Show();
  const auto give = [&](JoinerCommand command) {
    Release(joiner.Find<Label>(Member("Label1", command)));
  };
  for (int section = 0; section < 2; ++section) {
    const DialogAnswers answers({TypeFile(file_)});
    give(AddVideoSection);
  }
  const QString output = InFolder("joined." + file_.section('.', -1));
  {
    const DialogAnswers answers({TypeFile(output), PressButton(QMessageBox::Ok)});
    give(JoinAllSections);
  }
  const int times = GetParam().joined == Joined::kBoth  ? 2
                    : GetParam().joined == Joined::kOne ? 1
                                                        : 0;
  EXPECT_EQ(DecodedPictures(output), times * DecodedPictures(file_));
  // If there are pictures, only their number counts: the time stamps may span more time than the
  // pictures take.
  if (DecodedPictures(file_) == 0) {
    EXPECT_NEAR(VideoSeconds(output), times * VideoSeconds(file_), 0.1);
  }
}

INSTANTIATE_TEST_SUITE_P(Table, Files, ::testing::ValuesIn(kFiles), [](const auto& test) {
  return QString(test.param.name).remove('.').toStdString();
});

std::string TextOf(const KnownFile& file) {
  const QString cropped =
      file.cropped.isEmpty()
          ? "no video"
          : QStringLiteral("%1 by %2").arg(file.cropped.width()).arg(file.cropped.height());
  const char* played = file.played == Played::kBlack ? "black" : "as it is stored";
  const char* joined = file.joined == Joined::kBoth  ? "both"
                       : file.joined == Joined::kOne ? "one of them"
                                                     : "nothing";
  return (QStringList{"", file.kind, file.shown, played, cropped, joined, ""}.join(" | ").trimmed())
      .toStdString();
}

TEST(TheTableOfFiles, StandsInTheDocs) {
  QFile page(KELVANE_DOCS "/files.md");
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  Texts written;
  for (const QByteArray& line : page.readAll().split('\n')) {
    if (line.startsWith("| ")) written.push_back(line.toStdString());
  }
  Texts expected = {"| a video of this kind | shows | plays | cropped | joined with itself |",
                    "| --- | --- | --- | --- | --- |"};
  for (const KnownFile& file : kFiles) expected.push_back(TextOf(file));
  EXPECT_EQ(written, expected);
}

}  // namespace
}  // namespace kelvane::testing
