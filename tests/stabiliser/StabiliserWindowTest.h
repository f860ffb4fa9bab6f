#pragma once

#include <string>

#include "stabiliser/Stabiliser.h"
#include "support/DialogAnswers.h"
#include "support/OpenWindowTest.h"

namespace kelvane::testing {

// The open stabiliser window. The probe describes a video of 640 by 360 pixels with 25 pictures a
// second, and ffmpeg writes an output.
class StabiliserWindowTest : public OpenWindowTest<Stabiliser> {
 protected:
  StabiliserWindowTest() {
    ProbeSays(60);
    tools_.FfmpegDoes(kWriteOutput);
  }
  ~StabiliserWindowTest() override { SectionSourceShortPath.clear(); }

  // Shell commands that write the file of the last argument, unless that is "-", and the file of
  // the motions, if an argument has one after "result=".
  static constexpr const char* kWriteOutput =
      "for output; do\n"
      "  case \"$output\" in *result=*) echo motions > \"${output##*result=}\" ;; esac\n"
      "done\n"
      "[ \"$output\" = - ] || echo written > \"$output\"\n";

  // From now on the probe describes each file as a video of that duration.
  void ProbeSays(double duration) const {
    tools_.StreamProbeDoes(QString("printf '%s\\n' width=640 height=360 pix_fmt=yuv420p "
                                   "avg_frame_rate=25/1 duration=N/A format_name=mov,mp4 "
                                   "start_time=0.0 duration=%1")
                               .arg(duration));
  }

  // Makes a file, selects it for the time line as a video of that duration, and returns its path.
  QString Select(double duration, const QString& name = "clip.mp4") {
    ProbeSays(duration);
    const QString path = tools_.MakeFile(name);
    const DialogAnswers answers({TypeFile(path)});
    Click(Caption("Label6", 0));
    return path;
  }

  Label& Caption(const char* array, int index) const { return Get<Label>(array, index); }
  std::string Text(const char* array, int index) const {
    return Caption(array, index).Caption().toStdString();
  }
  std::string Time(SectionReadOut readOut) const { return Text("Label8", readOut); }
  PictureBox& Strip() const { return Get<PictureBox>("Picture3", TimeLineStrip); }
  PictureBox& NeedleBox(Needle needle) const { return Get<PictureBox>("Picture4", needle); }
  // Drags a needle sideways by `pixels`.
  void DragNeedle(Needle needle, float pixels) const {
    PictureBox& box = NeedleBox(needle);
    box.MouseDown({.Index = needle, .Button = kLeftButton, .Shift = 0, .X = 2, .Y = 2});
    box.MouseMove({.Index = needle, .Button = kLeftButton, .Shift = 0, .X = 2 + pixels, .Y = 2});
  }
  static void Click(Label& caption) { caption.SendMouse(Qt::LeftButton); }
  // Clicks the caption and returns the message box that follows. If none does, the test fails.
  std::string MessageOf(Label& caption) {
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Click(caption);
    return answers.seen().empty() ? "" : answers.seen().front();
  }
  // The runs except the probe's.
  Texts Runs() const {
    Texts runs;
    for (const std::string& run : tools_.Runs()) {
      if (!run.starts_with("ffprobe")) runs.push_back(run);
    }
    return runs;
  }
};

}  // namespace kelvane::testing
