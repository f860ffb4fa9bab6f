#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "support/DialogAnswers.h"
#include "support/Events.h"
#include "support/RecordingTools.h"
#include "workspace/Form1.h"

namespace kelvane::testing {

// The main window as the user meets it, with recording tools.
class MainWindowTest : public ::testing::Test {
 protected:
  MainWindowTest() {
    ForgetSharedValues();
    form_->Load();
    form_->Show();
  }
  ~MainWindowTest() override {
    form_.reset();
    ForgetSharedValues();
  }

  template <class Kind>
  Kind& Get(const char* name) const {
    return form_->Find<Kind>(QLatin1String(name));
  }
  template <class Kind>
  Kind& Get(const char* array, int index) const {
    return form_->Find<Kind>(QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index));
  }

  PictureBox& Canvas() const { return Get<PictureBox>("Picture1", CanvasBox); }
  PictureBox& Bar(MarkerBar bar) const { return Get<PictureBox>("Picture2", bar); }
  TextBox& Path() const { return Get<TextBox>("Text1", 1); }
  std::string Number(ReadOut number) const {
    return Get<Label>("Label1", number).Caption().toStdString();
  }
  QString Store() const { return Get<TextBox>("Text2").Text(); }

  // The user releases the button over one of the commands.
  void Give(Command command) const { Release(Get<Label>("Label14", command)); }
  // Load Video, with that file picked.
  void Pick(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(LoadVideo);
  }
  // The same with a tool that says that much of it.
  void Pick(const QString& file, const QString& size, const QString& duration) const {
    tools_.SizeProbeDoes(Print(size));
    tools_.DurationProbeDoes(Print(duration));
    Pick(file);
  }
  // A video of that size, in the words of the probe tool.
  QString LoadVideoOf(int width, int height) const {
    QString file = tools_.File(QStringLiteral("clip%1x%2.mp4").arg(width).arg(height));
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
  Form2* JobWindow() const {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      auto* job = qobject_cast<Form2*>(window);
      if (job != nullptr && job->Loaded()) return job;
    }
    return nullptr;
  }

  // The lines as the recording tools write them down.
  std::string SizeRun(const QString& video) const {
    return ("ffprobe | -v | error | -show_entries | stream=width,height | -of | "
            "default=noprint_wrappers=1" +
            Behind(video))
        .toStdString();
  }
  std::string DurationRun(const QString& video) const {
    return ("ffprobe | -hide_banner | -stats | -i" + Behind(video)).toStdString();
  }

  RecordingTools tools_;
  std::unique_ptr<Form1> form_ = std::make_unique<Form1>();

 private:
  static QString Behind(const QString& video) {
    return video.isEmpty() ? QString() : QLatin1String(" | ") + video;
  }
};

}  // namespace kelvane::testing
