// The shell commands in the README that crop a folder, run as they stand there.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "media/CommandLines.h"
#include "support/Videos.h"

namespace kelvane::testing {
namespace {

// The indented lines of the README's section on cropping many files.
QString Recipe() {
  QFile readme(KELVANE_README);
  EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
  const QString section = QString::fromUtf8(readme.readAll())
                              .section("\n## The same crop for many files\n", 1)
                              .section("\n## ", 0, 0);
  return section.split('\n').filter(QRegularExpression("^    ")).join('\n');
}

TEST(CropOfAFolder, WritesWhatTheProgramsCropFilterWritesAndKeepsWhatIsThere) {
  const QTemporaryDir folder;
  const auto in = [&](const QString& file) { return folder.filePath(file); };
  const QStringList clips = {"-my first holiday.mp4", "it's 10% \"done\": $x.mp4"};
  for (const QString& clip : clips) ASSERT_TRUE(MakeVideo(in(clip), QSize(320, 240), 1));
  ASSERT_TRUE(QFile::copy(in(clips[0]), in("kept.mp4")));
  ASSERT_TRUE(QDir(folder.path()).mkdir("cropped"));
  QFile kept(in("cropped/kept.mp4"));
  ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
  kept.write("somebody's work");
  kept.close();

  const QString recipe = Recipe();
  RunTool("sh", {"-c", "cd '" + folder.path() + "' &&\n" + recipe});

  const QString filter = "crop=" + QString::fromStdString(CropFilterText(300, 200, 10, 20));
  EXPECT_TRUE(recipe.contains(filter + ' ')) << recipe.toStdString();
  for (const QString& clip : clips) {
    const QString cropped = in("cropped/" + clip);
    EXPECT_EQ(VideoSize(cropped), QSize(300, 200)) << clip.toStdString();
    ASSERT_TRUE(RunTool("ffmpeg", {"-y", "-i", in(clip), "-vf", filter, in("bare.mp4")}));
    EXPECT_EQ(PicturesSum(cropped), PicturesSum(in("bare.mp4"))) << clip.toStdString();
  }
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), "somebody's work");
  EXPECT_EQ(QDir(in("cropped")).count(), 2U + 3U) << "there should be ., .. and three files";
}

}  // namespace
}  // namespace kelvane::testing
