// A video comes in, with the real probe tool unless said otherwise.
#include <QDir>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class Load : public DesktopTest {};

TEST_F(Load, ShowsPathSizeCanvasBarsAndReadOuts) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 1));
  EXPECT_TRUE(window.ShowsPath(video));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
  EXPECT_EQ(window.Bars(), QRect(0, 0, 640, 360));
}

TEST_F(Load, OpensTheSameDialogFromTheMenu) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QList<WindowId> known = screen.Windows();
  window.ChooseMenuItem(0, 0);
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog), "Open");
}

TEST_F(Load, TakesNamesWithBlanksAndLettersOfAnyKind) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QList<std::pair<QString, QSize>> videos = {
      {"a clip  of mine.mp4", {200, 100}},
      {"it's mine & $HOME.mp4", {208, 104}},
      {QString::fromUtf8("Urlaub in Öland – 東京.mp4"), {216, 112}},
      {"-leading dash.mp4", {224, 120}}};
  for (const auto& [name, size] : videos) {
    SCOPED_TRACE(name.toStdString());
    const QString path = program.PathOf(name);
    ASSERT_TRUE(MakeVideo(path, size, 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, path));
    ASSERT_TRUE(window.AwaitVideo(size));
    EXPECT_TRUE(window.AwaitBarsAround(size));
  }
}

// Locales whose encoding isn't UTF-8. Names of files are bytes all the same.
class OtherEncoding : public DesktopTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(OtherEncoding, LoadsNamesWithLettersBeyondAsciiAndIsNotMentioned) {
  const QString locales = program.PathOf("locales");
  const QString latin1 = QStringLiteral("de_DE.ISO-8859-1");
  ASSERT_TRUE(QDir().mkpath(locales));
  ASSERT_TRUE(RunTool("localedef",
                      {"--no-archive", "-i", "de_DE", "-f", "ISO-8859-1", locales + '/' + latin1}))
      << "the definitions of locales are missing";
  program.SetVariable("LOCPATH", locales);
  program.SetVariable("LC_CTYPE", GetParam());
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const auto& [name, size] : {std::pair("M\u00e4rz.mp4", QSize(640, 360)),
                                   {"\u00fcber M\u00e4rz.mp4", QSize(480, 270)}}) {
    video = program.PathOf(QString::fromUtf8(name));
    ASSERT_TRUE(MakeVideo(video, size, 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
    EXPECT_TRUE(window.AwaitVideo(size)) << name;
  }
  EXPECT_FALSE(program.Printed().contains("locale")) << program.Printed().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Locales, OtherEncoding,
                         ::testing::Values("C", "POSIX", "de_DE.ISO-8859-1", "xx_XX"));

}  // namespace
}  // namespace kelvane::desktop
