#pragma once

#include <QAction>
#include <QApplication>
#include <QString>
#include <string>
#include <vector>

#include "support/DialogAnswers.h"
#include "support/OpenWindowTest.h"
#include "workspace/Form1.h"

namespace kelvane::testing {

// The main window, loaded and shown, with RecordingTools in place of the media tools.
class MainWindowTest : public OpenWindowTest<Form1> {
 protected:
  PictureBox& Canvas() const { return Get<PictureBox>("Picture1", CanvasBox); }
  PictureBox& Bar(MarkerBar bar) const { return Get<PictureBox>("Picture2", bar); }
  TextBox& Path() const { return Get<TextBox>("Text1", 1); }
  std::string Number(ReadOut number) const {
    return Get<Label>("Label1", number).Caption().toStdString();
  }
  // Returns the tools' text that the window keeps.
  QString Store() const { return Get<TextBox>("Text2").Text(); }
  std::string PauseState() const {
    return Get<CommandButton>("Command1", PauseVideo).Caption().toStdString();
  }
  std::string LastRun() const { return tools_.Runs().empty() ? "" : tools_.Runs().back(); }
  // Lets the timer that measures the bars tick once.
  void MeasureRegion() const { Tick(Get<Timer>("Timer2")); }

  // Releases the left button over the command.
  void Give(Command command) const { Release(Get<Label>("Label14", command)); }
  // Gives the command Load Video and types that file into its dialog.
  void Pick(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(LoadVideo);
  }
  // Does the same with probes that print these texts.
  void Pick(const QString& file, const QString& size, const QString& duration) const {
    tools_.StreamProbeDoes(PrintCommands(size));
    tools_.DurationProbeDoes(PrintCommands(duration));
    Pick(file);
  }
  // Makes a file, loads it with probes that print that size and ten seconds, and returns its path.
  QString LoadVideoOf(int width, int height) const {
    QString file = tools_.MakeFile(QStringLiteral("clip%1x%2.mp4").arg(width).arg(height));
    Pick(file, SizeText(width, height), DurationText("00:00:10.00"));
    return file;
  }
  static QString SizeText(int width, int height) {
    return QStringLiteral("width=%1\nheight=%2\n").arg(width).arg(height);
  }
  static QString DurationText(const char* duration) {
    return QStringLiteral("Input #0\n  Duration: %1, start: 0.000000, bitrate: 1 kb/s\n")
        .arg(QLatin1String(duration));
  }
  // Gives the command, Load Video or Crop Video, and cancels its dialog.
  void Cancel(Command command) const {
    const DialogAnswers answers({CancelDialog()});
    Give(command);
  }
  void ChooseMenuItem(const char* caption) const {
    for (QAction* action : form_->findChildren<QAction*>()) {
      if (action->text() == caption) action->trigger();
    }
  }
  // Gives the command Crop Video and types that file into its dialog.
  void CropTo(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(CropVideo);
  }
  template <class Window>
  static std::vector<Window*> Loaded() {
    std::vector<Window*> windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* window = qobject_cast<Window*>(widget);
      if (window != nullptr && window->Loaded()) windows.push_back(window);
    }
    return windows;
  }
  static Form2* JobWindow() {
    const std::vector<Form2*> jobs = Loaded<Form2>();
    return jobs.empty() ? nullptr : jobs.front();
  }
  static Timer& TimerOf(const Form2& job) { return job.Find<Timer>(QStringLiteral("Timer1")); }
  // Lets the job's timer tick twice: the tool runs to its end, unless a dialog is open.
  static void RunJob(const Form2& job) {
    Timer& timer = TimerOf(job);
    Tick(timer);
    Tick(timer);
  }

  // These return what RecordingTools::Runs() has for a run of the size or of the duration probe.
  std::string SizeRun(const QString& video) const {
    return ("ffprobe | -v | error | -show_entries | stream=width,height | -of | "
            "default=noprint_wrappers=1" +
            LastArgument(video))
        .toStdString();
  }
  std::string DurationRun(const QString& video) const {
    return ("ffprobe | -hide_banner | -stats | -i" + LastArgument(video)).toStdString();
  }

 private:
  static QString LastArgument(const QString& video) {
    return video.isEmpty() ? QString() : QLatin1String(" | ") + video;
  }
};

}  // namespace kelvane::testing
