#include "desktop/JoinerTest.h"

namespace kelvane::desktop {

void JoinerTest::SetUp() {
  program.Start();
  ASSERT_TRUE(joiner.Await()) << "the joiner window doesn't come";
}

void JoinerTest::CloseJoinerAndExpectEnd() {
  screen.Close(joiner.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

void JoinerTest::PretendProbing() {
  program.ReplaceTool(QStringLiteral("ffprobe"),
                      QStringLiteral("for file; do :; done\ncat \"$file\" >&2"));
}

QString JoinerTest::Pretended(const QString& name, const QString& duration) const {
  const QString path = program.PathOf(name);
  WriteFile(path, QStringLiteral("  Duration: %1, start: 0.000000\n").arg(duration).toUtf8());
  return path;
}

void JoinerTest::Add(const QString& file) {
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kAddSection, file)) << file.toStdString();
  added << file;
  ASSERT_TRUE(joiner.AwaitSections(static_cast<int>(added.size())));
}

void JoinerTest::AddThreePretended() {
  PretendProbing();
  for (const auto& [name, duration] :
       {std::pair("a.mp4", "00:03:20.00"), {"b.mp4", "00:10:10.90"}, {"c.mp4", "00:05:03.10"}}) {
    ASSERT_NO_FATAL_FAILURE(Add(Pretended(QLatin1String(name), QLatin1String(duration))));
  }
  ASSERT_TRUE(joiner.AwaitTotals(3, QStringLiteral("01,113"), QStringLiteral("00:18:33")));
}

void JoinerTest::ExpectPathWithoutStripOrRow(int section) const {
  EXPECT_TRUE(joiner.AwaitLine(section, added[section]));
  EXPECT_TRUE(HoldsFor([&] { return joiner.Strip(section).isEmpty(); }, 300ms));
  EXPECT_TRUE(joiner.AwaitRow(section, {}, {}, {}));
}

void JoinerTest::JoinTo(const QString& output) {
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
  ASSERT_TRUE(ConfirmJoin(screen, 60s)) << "the box at the end doesn't come";
}

QStringList JoinerTest::CopyRun(const QStringList& output) const {
  return QStringList({"-f", "concat", "-safe", "0", "-i", ListFile(), "-c", "copy", "-y"}) + output;
}

QStringList JoinerTest::WrapRun(const QString& source, const QString& intermediate) const {
  return {"-i",     source,
          "-c",     "copy",
          "-bsf:v", "h264_mp4toannexb",
          "-f",     "mpegts",
          "-y",     program.PathOf(intermediate)};
}

}  // namespace kelvane::desktop
