#include "support/Videos.h"

#include <QProcess>

namespace kelvane {
namespace {

// `pictures` is a source of the tool's filters.
bool MakeWithTone(const QString& path, const QString& pictures, double seconds) {
  const QString tone = QStringLiteral("sine=frequency=440:duration=%1").arg(seconds);
  return RunTool(QStringLiteral("ffmpeg"),
                 {"-v", "error", "-f", "lavfi", "-i", pictures, "-f", "lavfi", "-i", tone,
                  "-pix_fmt", "yuv420p", "-preset", "ultrafast", path});
}

}  // namespace

bool RunTool(const QString& tool, const QStringList& arguments, QString* printed) {
  constexpr int kLongest = 60'000;  // ms
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.setStandardInputFile(QProcess::nullDevice());
  process.start(tool, arguments);
  const bool ended = process.waitForFinished(kLongest);
  if (printed != nullptr) *printed = QString::fromUtf8(process.readAll());
  return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool MakeVideo(const QString& path, QSize size, int seconds) {
  return MakeWithTone(path,
                      QStringLiteral("testsrc2=size=%1x%2:rate=25:duration=%3")
                          .arg(size.width())
                          .arg(size.height())
                          .arg(seconds),
                      seconds);
}

bool MakePlainVideo(const QString& path, const QString& colour, double seconds) {
  return MakeWithTone(
      path, QStringLiteral("color=%1:size=320x180:rate=25:duration=%2").arg(colour).arg(seconds),
      seconds);
}

bool MakeColours(const QString& path, QSize size, const QList<QRgb>& colours) {
  QString pictures;
  QString joined;
  int count = 0;
  for (const QRgb colour : colours) {
    pictures += QStringLiteral("color=c=0x%1:size=%2x%3:rate=25:duration=1[c%4];")
                    .arg(colour & RGB_MASK, 6, 16, QLatin1Char('0'))
                    .arg(size.width())
                    .arg(size.height())
                    .arg(count);
    joined += QStringLiteral("[c%1]").arg(count++);
  }
  return MakeWithTone(path, pictures + joined + QStringLiteral("concat=n=%1").arg(count), count);
}

QSize VideoSize(const QString& path) {
  QString printed;
  RunTool(QStringLiteral("ffprobe"),
          {"-v", "error", "-select_streams", "v:0", "-show_entries", "stream=width,height", "-of",
           "csv=p=0", path},
          &printed);
  const QStringList numbers = printed.trimmed().split(QLatin1Char(','));
  return numbers.size() == 2 ? QSize(numbers[0].toInt(), numbers[1].toInt()) : QSize();
}

double VideoSeconds(const QString& path) {
  QString printed;
  RunTool(QStringLiteral("ffprobe"),
          {"-v", "error", "-show_entries", "format=duration", "-of", "csv=p=0", path}, &printed);
  return printed.trimmed().toDouble();
}

int Pictures(const QString& path) {
  QString printed;
  const bool sound =
      RunTool(QStringLiteral("ffmpeg"), {"-v", "error", "-i", path, "-f", "null", "-"}, &printed);
  if (!sound || !printed.isEmpty()) return -1;
  RunTool(QStringLiteral("ffprobe"),
          {"-v", "error", "-select_streams", "v:0", "-count_frames", "-show_entries",
           "stream=nb_read_frames", "-of", "csv=p=0", path},
          &printed);
  // Of a transport stream it is told once more for its programme.
  return printed.section(QLatin1Char('\n'), 0, 0).remove(QLatin1Char(',')).trimmed().toInt();
}

}  // namespace kelvane
