#pragma once

#include <gtest/gtest.h>

#include <QPointer>
#include <string>
#include <vector>

#include "cropjob/Form2.h"
#include "cropjob/MainWindowStandIn.h"
#include "shared/SharedValues.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"
#include "support/RecordingTools.h"

namespace kelvane::testing {

// The job window, with RecordingTools in place of the media tools and a stand-in for the main
// window.
class JobWindowTest : public ::testing::Test {
 protected:
  JobWindowTest() {
    ForgetSharedValues();
    mainWindow_.Load();
    mainWindow_.Show();
    OutputPath = QStringLiteral("/tmp/out.mp4");
    CropFilter = QStringLiteral("640:360:100:50");
    mainWindow_.video = QStringLiteral("/tmp/in.mp4");
  }
  ~JobWindowTest() override { ForgetSharedValues(); }

  Form2& LoadJob(const char* duration = "00:00:10") {
    VideoDuration = QLatin1String(duration);
    Form2& job = job_.Load(mainWindow_);
    job.Show(&mainWindow_);
    shown_ = &job;
    return job;
  }
  Form2& Job() const { return *shown_; }
  bool JobIsThere() const { return !shown_.isNull(); }

  template <class Kind>
  Kind& Get(const char* name) const {
    return Job().Find<Kind>(QLatin1String(name));
  }
  Timer& JobTimer() const { return Get<Timer>("Timer1"); }
  ProgressBar& Bar() const { return Get<ProgressBar>("pbar"); }
  ProgressBar& MainBar() { return mainWindow_.JobProgress(); }
  std::string Status() const { return Get<Label>("Label1(2)").Caption().toStdString(); }
  std::string Title() const { return mainWindow_.Caption().toStdString(); }
  void Cancel(Qt::MouseButton button = Qt::LeftButton) const {
    Release(Get<Label>("Label2"), button);
  }

  // Lets the timer tick twice, so that the tool runs these commands to their end.
  void Run(const QString& commands = {}) const {
    tools_.FfmpegDoes(commands);
    Timer& timer = JobTimer();
    Tick(timer);
    Tick(timer);
  }
  // Returns shell commands that print each of the texts as a block of its own.
  static QString PrintBlocks(const std::vector<std::string>& texts) {
    constexpr int kBlock = 256;
    QString commands;
    for (const std::string& text : texts) {
      commands +=
          PrintCommands(QString::fromStdString(text).leftJustified(kBlock, QLatin1Char(' ')));
    }
    return commands;
  }

  RecordingTools tools_;
  MainWindowStandIn mainWindow_;
  FormInstance<Form2> job_;
  QPointer<Form2> shown_;
};

constexpr const char* kGettingCropRegions =
    "Progress: 00.00 % Complete: Status: Getting Crop Regions";
constexpr const char* kStarting = "Progress: 000 % Complete: Status: Starting...";
constexpr const char* kCropping = "Progress: 00.00 % Complete: Status: Cropping...";
constexpr const char* kSuccessful = "Progress: 100 % Complete: Status: Cropping Successful";

}  // namespace kelvane::testing
