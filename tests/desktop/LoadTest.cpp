// Loads: file names of every kind, and locales.
#include <QDir>

#include "desktop/JoinerTest.h"

namespace kelvane::desktop {
namespace {

using Load = DesktopTest;

TEST_F(Load, TakesNamesWithBlanksAndCharactersOfAnyKind) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const auto& [name, size] : {std::pair("a clip  of mine.mp4", QSize(200, 100)),
                                   {"it's mine & $HOME.mp4", {208, 104}},
                                   {"Urlaub in \u00d6land \u2013 \u6771\u4eac.mp4", {216, 112}},
                                   {"-leading dash.mp4", {224, 120}}}) {
    SCOPED_TRACE(name);
    video = program.PathOf(name);
    ASSERT_TRUE(MakeVideo(video, size, 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
    EXPECT_TRUE(window.AwaitVideo(size));
    EXPECT_TRUE(window.AwaitBarsAround(size));
  }
}

// Makes this locale, such as "fr_FR.UTF-8", and lets the program find it.
void ProvideLocale(Program& program, const QString& locale) {
  const QString locales = program.PathOf("locales");
  ASSERT_TRUE(QDir().mkpath(locales));
  const QStringList parts = locale.split('.');
  ASSERT_TRUE(RunTool("localedef",
                      {"--no-archive", "-i", parts[0], "-f", parts[1], locales + '/' + locale}))
      << "the definitions of locales are missing";
  program.SetVariable("LOCPATH", locales);
}

class NonUtf8Locale : public DesktopTest, public ::testing::WithParamInterface<const char*> {};

// File names are UTF-8 in every locale.
TEST_P(NonUtf8Locale, LoadsNonAsciiNamesWithoutAWarning) {
  ASSERT_NO_FATAL_FAILURE(ProvideLocale(program, "de_DE.ISO-8859-1"));
  program.SetVariable("LC_CTYPE", GetParam());
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const auto& [name, size] : {std::pair("M\u00e4rz.mp4", QSize(640, 360)),
                                   {"\u00fcber M\u00e4rz.mp4", QSize(480, 270)}}) {
    video = program.PathOf(name);
    ASSERT_TRUE(MakeVideo(video, size, 1));
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
    EXPECT_TRUE(window.AwaitVideo(size)) << name;
  }
  EXPECT_FALSE(program.Printed().contains("locale")) << program.Printed().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Locales, NonUtf8Locale,
                         ::testing::Values("C", "POSIX", "de_DE.ISO-8859-1", "xx_XX"));

// Returns the number with the group separator of the French locale, which takes three bytes, in the
// place of blanks.
QString French(const char* number) { return QString(number).replace(' ', QChar(0x202f)); }

TEST_F(Load, ShowsFrenchNumbersAndCropsAndPlaysAsInAnyLocale) {
  constexpr QSize kSize(1920, 1080);
  ASSERT_NO_FATAL_FAILURE(ProvideLocale(program, "fr_FR.UTF-8"));
  program.SetVariable("LANG", "fr_FR.UTF-8");
  video = program.PathOf("video.mp4");
  ASSERT_TRUE(MakeVideo(video, kSize, 2));
  program.ReplaceTool(
      "ffmpeg", "echo time=00:00:01.00\n" + program.PrintingGate("go") + R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  EXPECT_TRUE(window.AwaitCaption("Label1(1)", French("1 920")));
  EXPECT_TRUE(window.AwaitCaption("Label1(9)", French("1 915"))) << "the region's width is wrong";
  ASSERT_TRUE(window.AwaitCanvas());
  window.Click(kRunVideo);
  EXPECT_TRUE(window.AwaitMoving(kSize));
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitStatus("Progress: 00,00% Complete: Status: Cropping Video"));
  ASSERT_TRUE(program.Open("go"));
  ExpectEndAndCloseJob();
  EXPECT_EQ(program.RunsOf("ffmpeg").value(0).value(3), "crop=1915:1075:0:0");
  EXPECT_EQ(VideoSize(output), QSize(1914, 1074));
}

class FrenchJoiner : public JoinerTest {
 protected:
  FrenchJoiner() {
    ProvideLocale(program, "fr_FR.UTF-8");
    program.SetVariable("LANG", "fr_FR.UTF-8");
    program.ReplaceTool("ffprobe", "echo '  Duration: 00:20:20.90, start: 0.000000' >&2");
    program.ReplaceTool("ffmpeg", "");
  }
};

TEST_F(FrenchJoiner, ShowsFrenchNumbersAndJoinsAsInAnyLocale) {
  const QString clip = program.PathOf("a.mp4");
  const QString output = program.PathOf("joined.mp4");
  WriteFile(clip, "no video");
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, French("01 220"), "00:20:20"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(program.RunsOf("ffmpeg").value(0).last(), output);
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
