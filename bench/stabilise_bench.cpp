// Both passes over a shaken clip in the stabiliser's window, against the two bare command lines,
// and how long the window goes without serving an event meanwhile.
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "Pairs.h"
#include "platform/App.h"
#include "stabiliser/Stabiliser.h"
#include "support/DialogAnswers.h"
#include "support/Videos.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::testing;

constexpr int kSeconds = 8;

class StabiliseBench {
 public:
  StabiliseBench() {
    const QString ffmpeg = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
    App::setPath(QFileInfo(ffmpeg).path().toStdString());
    std::printf("making a shaken clip of %d seconds, 640 by 360 pixels\n", kSeconds);
    Need(RunTool(QStringLiteral("ffmpeg"),
                 {"-v", "error", "-f", "lavfi", "-i",
                  QStringLiteral("testsrc2=size=720x420:rate=30:duration=%1,noise=alls=12:allf=t,"
                                 "crop=640:360:x='40+12*sin(n*0.9)':y='30+9*sin(n*1.3)'")
                      .arg(kSeconds),
                  "-pix_fmt", "yuv420p", "-preset", "ultrafast", clip_}),
         "the clip can't be made");
    window_.Load();
    window_.Show();
    const DialogAnswers answers({TypeFile(clip_)});
    Click("Label6(0)");
    // Stops the player, which would use processor time.
    Click("Label10(2)");
  }
  ~StabiliseBench() { window_.Unload(); }

  double InProgram() {
    QTimer ticks;
    double last = 0;
    const auto serve = [&] {
      const double now = Now();
      longestGap_ = std::max(longestGap_, now - last);
      last = now;
    };
    QObject::connect(&ticks, &QTimer::timeout, serve);
    QFile::remove(steady_);
    double begin = 0;
    double end = 0;
    {
      const DialogAnswers answers({[&](QDialog& dialog) {
                                     TypeFile(steady_)(dialog);
                                     begin = last = Now();
                                     ticks.start(1);
                                   },
                                   [&](QDialog& dialog) {
                                     end = Now();
                                     serve();
                                     ticks.stop();
                                     PressButton(QMessageBox::Ok)(dialog);
                                   }});
      Click("Label12(0)");
    }
    Check();
    return end - begin;
  }

  double Bare() {
    QFile::remove(steady_);
    const QString command =
        QStringLiteral(
            "('%1' -hide_banner -stats_period 0.1 -i '%2' -an -sn -dn -vf "
            "vidstabdetect=stepsize=4:shakiness=3:accuracy=5:result='%3' -f null - && "
            "'%1' -hide_banner -stats_period 0.1 -i '%2' -vf "
            "copy,vidstabtransform=input='%3':zoom=10:optzoom=0:smoothing=25,unsharp=lx=7:ly=7 "
            "-sn -dn -y '%4') 2>&1 < /dev/null | cat > /dev/null")
            .arg(QString::fromStdString(App::Path()) + "/ffmpeg", clip_, transforms_, steady_);
    const double begin = Now();
    Need(std::system(command.toLocal8Bit().constData()) == 0, "the bare commands fail");
    const double seconds = Now() - begin;
    Check();
    return seconds;
  }

  double LongestGap() const { return longestGap_; }

 private:
  void Click(const char* command) {
    window_.Find<Label>(QLatin1String(command)).SendMouse(Qt::LeftButton);
  }
  void Check() const {
    Need(DecodedPictures(steady_) == kSeconds * 30, "the stabilised file isn't whole");
  }

  QTemporaryDir folder_;
  QString clip_ = folder_.filePath(QStringLiteral("clip.mp4"));
  QString steady_ = folder_.filePath(QStringLiteral("steady.mp4"));
  QString transforms_ = folder_.filePath(QStringLiteral("transforms"));
  Stabiliser window_;
  double longestGap_ = 0;  // seconds
};

void Run() {
  StabiliseBench bench;
  // Once each, so that the files are in the cache.
  bench.InProgram();
  bench.Bare();
  constexpr int kPairs = 7;
  Compare("both passes over 8 s of 360p", kPairs, 1.02,
          {"in the program", [&] { return bench.InProgram(); }},
          {"bare commands", [&] { return bench.Bare(); }}, Counts::kRatioOfTheFastest);
  ReportVerdict("both passes: longest time without serving the window", bench.LongestGap() * 1e3,
                50, " ms");
}

}  // namespace

int main() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false"));
  const kelvane::App app("kelvane-stabiliser", QStringLiteral("Kelvane"));
  return ToEnd(Run);
}
