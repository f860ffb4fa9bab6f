#include "support/Videos.h"

#include <QFile>
#include <string>
#include <utility>
#include <vector>

#include "support/Process.h"

namespace kelvane {
namespace {

// Makes a video with a tone. `pictures` is a filter graph of ffmpeg's that needs no input.
bool MakeWithTone(const QString& path, const QString& pictures, double seconds,
                  const QStringList& encoding = {"-pix_fmt", "yuv420p", "-preset", "ultrafast"}) {
  const QString tone = QStringLiteral("sine=frequency=440:duration=%1").arg(seconds);
  return RunTool("ffmpeg", QStringList{"-v", "error", "-f", "lavfi", "-i", pictures, "-f", "lavfi",
                                       "-i", tone} +
                               encoding + QStringList{path});
}

// Returns the comma-separated values that ffprobe prints of one entry.
QString Probed(const QString& path, const QString& entry, const QStringList& options = {}) {
  QString printed;
  RunTool("ffprobe",
          QStringList{"-v", "error", "-show_entries", entry, "-of", "csv=p=0"} + options +
              QStringList{path},
          &printed);
  return printed.trimmed();
}

}  // namespace

bool RunTool(const QString& tool, const QStringList& arguments, QString* printed) {
  std::vector<std::string> words{"timeout", "300", tool.toStdString()};
  for (const QString& argument : arguments) {
    words.push_back(QFile::encodeName(argument).toStdString());
  }
  testing::Process process(std::move(words), testing::Process::Errors::kInOutput);
  process.CloseInput();
  const std::string text = process.ReadToTheEnd();
  if (printed != nullptr) *printed = QString::fromStdString(text);
  return process.Wait() == 0;
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

bool MakeChequers(const QString& path, QSize size, int seconds) {
  const QString pictures =
      QStringLiteral("nullsrc=size=%1x%2:rate=5:duration=%3,format=gray,geq=lum=255*mod(X+Y\\,2)")
          .arg(size.width())
          .arg(size.height())
          .arg(seconds);
  return MakeWithTone(path, pictures, seconds, {"-c:v", "ffv1"});
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

// FFmpeg 7 has an option of the input for this, FFmpeg 5.1 an entry of the output's metadata.
bool MakeTurned(const QString& path, const QString& turned, int degrees) {
  const QString angle = QString::number(degrees);
  const QStringList quiet = {"-v", "error", "-y"};
  const QStringList copy = {"-i", path, "-c", "copy"};
  return RunTool("ffmpeg",
                 quiet + QStringList{"-display_rotation", angle} + copy + QStringList{turned}) ||
         RunTool("ffmpeg", quiet + copy + QStringList{"-metadata:s:v", "rotate=" + angle, turned});
}

QSize VideoSize(const QString& path) {
  const QStringList numbers =
      Probed(path, "stream=width,height", {"-select_streams", "v:0"}).split(u',');
  return numbers.size() == 2 ? QSize(numbers[0].toInt(), numbers[1].toInt()) : QSize();
}

double VideoSeconds(const QString& path) { return Probed(path, "format=duration").toDouble(); }

int DecodedPictures(const QString& path) {
  const QString printed = Probed(path, "stream=nb_read_frames",
                                 {"-select_streams", "v:0", "-count_frames", "-v", "quiet"});
  // A transport stream has a second line, for its programme.
  return printed.section(u'\n', 0, 0).remove(u',').toInt();
}

int PicturesWithoutComplaint(const QString& path) {
  QString printed;
  const bool decodes = RunTool("ffmpeg", {"-v", "error", "-i", path, "-f", "null", "-"}, &printed);
  return decodes && printed.isEmpty() ? DecodedPictures(path) : -1;
}

QString PicturesSum(const QString& path) {
  QString printed;
  const bool made = RunTool(
      "ffmpeg", {"-v", "error", "-noautorotate", "-i", path, "-map", "0:v:0", "-f", "md5", "-"},
      &printed);
  return made ? printed.trimmed() : QString();
}

}  // namespace kelvane
