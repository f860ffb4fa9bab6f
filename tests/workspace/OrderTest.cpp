// What comes after what in a load, and what happens when one thing comes inside another: a tool
// that runs serves the windows at each block of its text.
#include <QFile>
#include <QPointer>
#include <QTimer>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

using Texts = std::vector<std::string>;

// Writes down a whole load: changes of captions and texts, new sizes, runs of tools.
class LoadOrder : public MainWindowTest {
 protected:
  void Add(const std::string& event) {
    const Texts runs = tools_.Runs();
    for (; runsSeen_ < runs.size(); ++runsSeen_) events_.push_back("run: " + runs[runsSeen_]);
    events_.push_back(event);
  }

  // Text on one line.
  static std::string Line(QString text) {
    return text.replace(QLatin1String("\n"), QLatin1String("/")).toStdString();
  }

  void WriteEverythingDown() {
    Before(Path().Change, [this](int) {
      Add("path: " + Line(Path().Text()) + (VideoPath == Path().Text() ? ", known" : ""));
    });
    After(Path().Change, [this](int) { Add("path done"); });
    for (const ReadOut number : {SourceWidth, SourceHeight}) {
      Before(Get<Label>("Label1", number).Change, [this](int index) {
        Add("Label1(" + std::to_string(index) +
            "): " + Line(Get<Label>("Label1", index).Caption()));
      });
    }
    for (const WorkspaceBox box : {CanvasBox, HolderBox}) {
      Before(Get<PictureBox>("Picture1", box).Resize, [this](int index) {
        const auto& resized = Get<PictureBox>("Picture1", index);
        Add("Picture1(" + std::to_string(index) + "): " + std::to_string(resized.width()) + "x" +
            std::to_string(resized.height()));
      });
    }
    for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
      Before(Bar(bar).Resize,
             [this](int index) { Add("Picture2(" + std::to_string(index) + "): resized"); });
    }
    Get<TextBox>("Text2").Change = [this](int) {
      Add("store: " + Line(Store()) + ", duration: " + VideoDuration.toStdString());
    };
    shown_ = std::make_unique<ShowWatch>([this] { Add("canvas shown"); });
    Canvas().installEventFilter(shown_.get());
  }

  const Texts& Events() {
    Add("end");
    return events_;
  }

 private:
  class ShowWatch : public QObject {
   public:
    explicit ShowWatch(std::function<void()> step) : step_(std::move(step)) {}
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      if (event->type() == QEvent::Show) step_();
      return false;
    }

   private:
    std::function<void()> step_;
  };

  Texts events_;
  std::size_t runsSeen_ = 0;
  std::unique_ptr<ShowWatch> shown_;
};

TEST_F(LoadOrder, OfAVideoOfFourDigits) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  WriteEverythingDown();
  Pick(video, SizeText(1920, 1080), QStringLiteral("Duration: 00:00:10.00\n"));
  EXPECT_EQ(Events(),
            (Texts{"path: " + video.toStdString(), "run: " + SizeRun(video), "Label1(1): 1,920",
                   "Picture1(3): 1920x209", "Picture1(2): 1920x249", "Picture2(1): resized",
                   "Picture2(3): resized", "Label1(3): 1,080", "Picture1(3): 1920x1080",
                   "Picture1(2): 1920x1080", "Picture2(0): resized", "Picture2(2): resized",
                   "run: " + DurationRun(video), "store: Duration: 00:00:10.00/, duration: ",
                   "path done", "canvas shown", "end"}));
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
}

TEST_F(LoadOrder, OfAVideoOfThreeDigits) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  WriteEverythingDown();
  Pick(video, SizeText(640, 360), QStringLiteral("Duration: 00:00:10.00\n"));
  EXPECT_EQ(Events(),
            (Texts{"path: " + video.toStdString(), "run: " + SizeRun(video), "Label1(1): 0,640",
                   "Picture1(3): 640x209", "Picture1(2): 640x249", "Picture2(1): resized",
                   "Picture2(3): resized", "Label1(3): 0,360", "Picture1(3): 640x360",
                   "Picture1(2): 640x360", "Picture2(0): resized", "Picture2(2): resized",
                   "store: width=640/height=360/, duration: ", "run: " + DurationRun(video),
                   "store: width=640/height=360/Duration: 00:00:10.00/, duration: ", "path done",
                   "canvas shown", "end"}));
}

TEST_F(LoadOrder, OfASecondVideoOfTheSameSizeHasNoResize) {
  LoadVideoOf(1920, 1080);
  const QString video = tools_.File(QStringLiteral("b.mp4"));
  const Texts former = tools_.Runs();
  const QString store = Store();
  WriteEverythingDown();
  Pick(video, SizeText(1920, 1080), QStringLiteral("text\n"));
  EXPECT_EQ(Events(),
            (Texts{"run: " + former[0], "run: " + former[1], "path: " + video.toStdString(),
                   "run: " + SizeRun(video), "run: " + DurationRun(video),
                   "store: " + Line(store) + "text/, duration: 00:00:10", "path done", "end"}));
}

class Nesting : public MainWindowTest {
 protected:
  // To be done at the next DoEvents behind the arrival of that block.
  void AfterBlock(const QString& block, std::function<void()> step) const {
    Get<TextBox>("Text2").Change = [this, block, step = std::move(step)](int) mutable {
      if (step && Store().endsWith(block)) AtNextDoEvents(std::exchange(step, nullptr));
    };
  }
  void CropTo(const char* file) const {
    const DialogAnswers answers({TypeFile(QLatin1String(file))});
    Give(CropVideo);
  }
  static Timer& TimerOf(const Form2& job) { return job.Find<Timer>(QStringLiteral("Timer1")); }
  static std::string StatusOf(const Form2& job) {
    return job.Find<Label>(QStringLiteral("Label1(2)")).Caption().toStdString();
  }
  static void RunJob(const Form2& job) {
    Timer& timer = TimerOf(job);
    Tick(timer);
    Tick(timer);
  }
  static void Cancel(const Form2& job) { Release(job.Find<Label>(QStringLiteral("Label2"))); }
  // Until the program ends by itself; returns its exit status.
  static int RunProgram() {
    constexpr int kGoodTime = 20000;  // ms
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, [] {
      ADD_FAILURE() << "the program doesn't end";
      QApplication::exit(1);
    });
    deadline.start(kGoodTime);
    return QApplication::exec();
  }
  float MainBar() const { return Get<ProgressBar>("pbar").Value(); }
};

TEST_F(Nesting, ASecondLoadInsideTheFirstOnesDurationProbe) {
  const QString first = tools_.File(QStringLiteral("first.mp4"));
  const QString second = tools_.File(QStringLiteral("second.mp4"));
  const Gate gate(tools_);
  tools_.SizeProbeDoes(Print(SizeText(640, 360)));
  tools_.DurationProbeDoes(Print(QStringLiteral("one\n")) + gate.Wait() +
                           Print(QStringLiteral("two, Duration: 00:00:11.00\n")) + gate.Wait() +
                           Print(QStringLiteral("three\n")));
  Texts inside;
  AfterBlock(QStringLiteral("one\n"), [&] {
    inside = {Path().Text().toStdString(), Number(SourceWidth), Number(SourceHeight)};
    Pick(second, SizeText(1920, 1080), QStringLiteral("Duration: 00:00:22.00\n"));
    gate.Open();
  });
  Before(Get<TextBox>("Text2").Change, [&](int) {
    if (Store().endsWith(QLatin1String("one\n"))) gate.Open();
  });
  Pick(first);

  EXPECT_EQ(inside, (Texts{first.toStdString(), "0,640", "0,360"}));
  EXPECT_EQ(tools_.Runs(),
            (Texts{SizeRun(first), DurationRun(first), SizeRun(second), DurationRun(second)}));
  EXPECT_EQ(Store().toStdString(),
            "width=640\nheight=360\none\nDuration: 00:00:22.00\ntwo, Duration: "
            "00:00:11.00\nthree\n");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:22");
  EXPECT_EQ(Path().Text(), second);
  EXPECT_EQ(VideoPath, second);
  EXPECT_EQ(Number(SourceWidth), "1,920");
  EXPECT_EQ(Number(SourceHeight), "1,080");
  EXPECT_EQ(Canvas().size(), QSize(1920, 1080));
  EXPECT_TRUE(ProbeDimensionsDone);
}

TEST_F(Nesting, ASecondLoadInsideTheFirstOnesSizeProbe) {
  const QString first = tools_.File(QStringLiteral("first.mp4"));
  const QString second = tools_.File(QStringLiteral("second.mp4"));
  tools_.SizeProbeDoes(Print(SizeText(640, 360)));
  tools_.DurationProbeDoes(Print(QStringLiteral("text\n")));
  bool nested = false;
  Before(Path().Change, [&](int) {
    if (Path().Text() != first) return;
    AtNextDoEvents([&] {
      Pick(second);
      nested = true;
    });
  });
  const DialogAnswers answers({TypeFile(first)});
  Give(LoadVideo);
  EXPECT_TRUE(nested);
  EXPECT_EQ(tools_.Runs(),
            (Texts{SizeRun(first), SizeRun(second), DurationRun(second), DurationRun(second)}));
  EXPECT_EQ(answers.seen().size(), 1U);
  EXPECT_EQ(Path().Text(), second);
  EXPECT_EQ(VideoPath, second);
  EXPECT_EQ(Store().toStdString(), "width=640\nheight=360\ntext\nwidth=640\nheight=360\ntext\n");
}

TEST_F(Nesting, ALoadInsideAPreviewLeavesThePreviewsLaterBlocksTheirWayToTheStore) {
  const Gate gate(tools_);
  ProbeDimensionsDone = true;
  tools_.PreviewDoes(Print(QStringLiteral("one\n")) + gate.Wait() + Print(QStringLiteral("two\n")));
  AfterBlock(QStringLiteral("one\n"), [&] {
    Pick(tools_.File(QStringLiteral("a.mp4")), SizeText(1920, 1080), QStringLiteral("loaded\n"));
  });
  Before(Get<TextBox>("Text2").Change, [&](int) {
    if (Store().endsWith(QLatin1String("one\n"))) gate.Open();
  });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store().toStdString(), "one\nloaded\ntwo\n");
  EXPECT_EQ(Number(SourceWidth), "1,920");
}

// Where a load stands when the windows are served next, from its start on.
class Served : public Nesting {
 protected:
  Texts FirstTimeInALoadOf(int width, int height) const {
    tools_.SizeProbeDoes(Print(SizeText(width, height)));
    Texts state;
    Before(Path().Change, [&](int) {
      AtNextDoEvents([&] {
        state = {Number(SourceWidth), Number(SourceHeight),
                 ProbeDimensionsDone ? "size known" : "size unknown", Store().toStdString(),
                 "runs: " + std::to_string(tools_.Runs().size())};
      });
    });
    Pick(tools_.File(QStringLiteral("a.mp4")));
    return state;
  }
};

// Not by the block of the size, but by the empty one at its tool's end.
TEST_F(Served, NotWhileASizeIsTaken) {
  EXPECT_EQ(FirstTimeInALoadOf(1920, 1080), (Texts{"1,920", "1,080", "size known", "", "runs: 1"}));
}

TEST_F(Served, BeforeTheBlockOfASizeIsKeptAsText) {
  EXPECT_EQ(FirstTimeInALoadOf(640, 360), (Texts{"0,640", "0,360", "size known", "", "runs: 1"}));
}

TEST_F(Served, OnceForEachBlockOfTextBeforeItIsTaken) {
  const Gate gate(tools_);
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(QStringLiteral("one\n")) + gate.Wait() +
                           Print(QStringLiteral("Duration: 00:00:01")) + gate.Wait() +
                           Print(QStringLiteral("\nthree\n")));
  Texts served;
  Get<TextBox>("Text2").Change = [&](int) {
    AtNextDoEvents([&] {
      served.push_back(Store().toStdString() + ", duration: " + VideoDuration.toStdString());
    });
    gate.Open();
  };
  Pick(tools_.File(QStringLiteral("a.mp4")));
  EXPECT_EQ(served, (Texts{"one\n, duration: ", "one\nDuration: 00:00:01, duration: 00:00:01",
                           "one\nDuration: 00:00:01\nthree\n, duration: 00:00:01"}));
}

TEST_F(Nesting, TheWindowsAreServedBeforeABlockIsKept) {
  ProbeDimensionsDone = true;
  tools_.PreviewDoes(Print(QStringLiteral("playing\n")));
  QString served = QStringLiteral("not served");
  AtNextDoEvents([&] { served = Store(); });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(served.toStdString(), "");
  EXPECT_EQ(Store().toStdString(), "playing\n");
}

TEST_F(Nesting, APreviewInsideADurationProbe) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  const Gate gate(tools_);
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(Print(QStringLiteral("one\n")) + gate.Wait() +
                           Print(QStringLiteral("Duration: 00:00:11.00\n")));
  tools_.PreviewDoes(Print(QStringLiteral("playing\n")));
  AfterBlock(QStringLiteral("one\n"), [&] { Give(PreviewCroppedVideo); });
  Before(Get<TextBox>("Text2").Change, [&](int) {
    if (Store().endsWith(QLatin1String("one\n"))) gate.Open();
  });
  Pick(video);
  EXPECT_EQ(Store().toStdString(), "one\nplaying\nDuration: 00:00:11.00\n");
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:11");
}

TEST_F(Nesting, ASecondCropWhileTheFirstRunsStartsNothingAndReplacesTheSharedValues) {
  const Gate gate(tools_);
  tools_.CropDoes(Print(QStringLiteral("one\n")) + gate.Wait() + Print(QStringLiteral("two\n")));
  CropWidth = 111;
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  bool nested = false;
  AtNextDoEvents([&] {
    CropWidth = 222;
    CropTo("/tmp/second.mp4");
    nested = true;
    EXPECT_EQ(JobWindow(), job);
    EXPECT_EQ(StatusOf(*job), "Progress: 00.00 % Complete: Status: Cropping...");
    gate.Open();
  });
  RunJob(*job);
  EXPECT_TRUE(nested);
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | -vf | crop=111:0:0:0 | /tmp/first.mp4"});
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/second.mp4");
  EXPECT_EQ(CropFilter.toStdString(), "222:0:0:0");
  EXPECT_EQ(job->Find<Label>(QStringLiteral("Label1(1)")).Caption().toStdString(),
            "/tmp/first.mp4");
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
  EXPECT_TRUE(job->isVisible());
}

TEST_F(Nesting, ACropWhileTheFinishedJobsWindowIsOpenBringsItUpAndStartsNothing) {
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  RunJob(*job);
  job->hide();
  CropTo("/tmp/second.mp4");
  EXPECT_EQ(JobWindow(), job);
  EXPECT_TRUE(job->isVisible());
  EXPECT_FALSE(TimerOf(*job).Enabled());
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/second.mp4");
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

TEST_F(Nesting, CancelDuringAJobAndANewCropInsideIt) {
  const Gate gate(tools_);
  const QString output = tools_.Path() + QLatin1String("/whole");
  tools_.CropDoes(Print(QStringLiteral("time=00:00:01.00 ")) + gate.Wait() +
                  Print(QStringLiteral("time=00:00:07.00 ")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  CropTo("/tmp/first.mp4");
  const QPointer<Form2> first = JobWindow();
  ASSERT_FALSE(first.isNull());
  QPointer<Form2> second;
  AtNextDoEvents([&] {
    Cancel(*first);
    EXPECT_EQ(JobWindow(), nullptr);
    EXPECT_FALSE(first->isVisible());
    EXPECT_TRUE(form_->isVisible());
    tools_.CropDoes(Print(QStringLiteral("time=00:00:03.00 ")));
    CropTo("/tmp/second.mp4");
    second = JobWindow();
    ASSERT_FALSE(second.isNull());
    EXPECT_NE(second, first);
    EXPECT_EQ(StatusOf(*second), "Progress: 00.00 % Complete: Status: Getting Crop Regions");
    RunJob(*second);
    EXPECT_EQ(MainBar(), 3);
    EXPECT_FALSE(QFile::exists(output));
    gate.Open();
  });
  RunJob(*first);
  ASSERT_FALSE(second.isNull());
  EXPECT_EQ(tools_.Runs(), (Texts{"ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/first.mp4",
                                  "ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/second.mp4"}));
  EXPECT_EQ(MainBar(), 7);  // the cancelled job goes on feeding it
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(StatusOf(*second), "Progress: 100 % Complete: Status: Cropping Successful");
  EXPECT_EQ(JobWindow(), second);
  PumpOnce();
  EXPECT_TRUE(first.isNull()) << "the cancelled window is still there";
}

TEST_F(Nesting, TheNewJobMayOutlastTheCancelledOne) {
  tools_.CropDoes(Print(QStringLiteral("one\n")));
  CropTo("/tmp/first.mp4");
  const QPointer<Form2> first = JobWindow();
  ASSERT_FALSE(first.isNull());
  AtNextDoEvents([&] {
    Cancel(*first);
    CropTo("/tmp/second.mp4");
  });
  RunJob(*first);
  const QPointer<Form2> second = JobWindow();
  ASSERT_FALSE(second.isNull());
  PumpOnce();
  EXPECT_TRUE(first.isNull());
  EXPECT_TRUE(TimerOf(*second).Enabled());
  RunJob(*second);
  EXPECT_EQ(StatusOf(*second), "Progress: 100 % Complete: Status: Cropping Successful");
}

TEST_F(Nesting, CancelBeforeTheSecondTickRunsNoTool) {
  CropTo("/tmp/out.mp4");
  const QPointer<Form2> job = JobWindow();
  ASSERT_FALSE(job.isNull());
  ASSERT_TRUE(WaitForTicks(TimerOf(*job), 1));
  Cancel(*job);
  PumpOnce();
  EXPECT_TRUE(job.isNull());
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer3"), 4));  // two seconds
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(Nesting, ALoadDuringAJobIsPossibleAndChangesTheJobsLineNoMore) {
  const QString video = tools_.File(QStringLiteral("other.mp4"));
  const Gate gate(tools_);
  tools_.CropDoes(Print(QStringLiteral("one\n")) + gate.Wait());
  CropTo("/tmp/out.mp4");
  AtNextDoEvents([&] {
    Pick(video, SizeText(1920, 1080), DurationText("00:00:10.00"));
    gate.Open();
  });
  RunJob(*JobWindow());
  EXPECT_EQ(tools_.Runs(), (Texts{"ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/out.mp4", SizeRun(video),
                                  DurationRun(video)}));
  EXPECT_EQ(Number(SourceWidth), "1,920");
}

TEST_F(Nesting, StartingFreshDuringAJobUnloadsItsWindowAndLeavesTheToolToItsEnd) {
  const Gate gate(tools_);
  const QString output = tools_.Path() + QLatin1String("/whole");
  tools_.CropDoes(Print(QStringLiteral("time=00:00:05.00 ")) + gate.Wait() +
                  Print(QStringLiteral("time=00:00:09.00 ")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  CropTo("/tmp/out.mp4");
  const QPointer<Form2> job = JobWindow();
  AtNextDoEvents([&] {
    const DialogAnswers answers({PressButton(QMessageBox::Yes)});
    Get<CommandButton>("Command1", StartFreshButton).Click(StartFreshButton);
    EXPECT_EQ(JobWindow(), nullptr);
    EXPECT_EQ(MainBar(), 0);
    gate.Open();
  });
  RunJob(*job);
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(MainBar(), 9);
  PumpOnce();
  EXPECT_TRUE(job.isNull());
}

TEST_F(Nesting, ClosingTheMainWindowDuringAJobLeavesTheJobToItsEnd) {
  const Gate gate(tools_);
  const QString output = tools_.Path() + QLatin1String("/whole");
  tools_.CropDoes(Print(QStringLiteral("time=00:00:05.00 ")) + gate.Wait() +
                  Print(QStringLiteral("time=00:00:09.00 ")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  CropTo("/tmp/out.mp4");
  Form2* const job = JobWindow();
  AtNextDoEvents([&] {
    EXPECT_TRUE(form_->close());
    EXPECT_FALSE(form_->isVisible());
    EXPECT_FALSE(form_->Loaded());
    EXPECT_TRUE(job->isVisible());
    gate.Open();
  });
  RunJob(*job);
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_TRUE(job->isVisible());
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
}

TEST_F(Nesting, WithItsWindowsClosedDuringAJobTheProgramEndsByItselfAfterTheTool) {
  const Gate gate(tools_);
  const QString output = tools_.Path() + QLatin1String("/whole");
  CropTo("/tmp/out.mp4");
  Texts events;
  tools_.CropDoes(Print(QStringLiteral("one\n")) + gate.Wait() + Print(QStringLiteral("two\n")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  Timer& timer = TimerOf(*JobWindow());
  const std::function<void()> wired = timer.Tick;
  timer.Tick = [&, wired] {
    events.emplace_back("tick");
    AtNextDoEvents([&] {
      if (tools_.Runs().empty()) return;
      form_->close();
      Cancel(*JobWindow());
      events.emplace_back("closed");
      gate.Open();
    });
    wired();
    if (!tools_.Runs().empty()) events.emplace_back("handler returned");
  };
  EXPECT_EQ(RunProgram(), 0);
  events.emplace_back("program ended");
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(events, (Texts{"tick", "tick", "closed", "handler returned", "program ended"}));
}

TEST_F(Nesting, WithNoJobTheProgramEndsWhenItsWindowIsClosed) {
  AtNextDoEvents([this] { form_->close(); });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_FALSE(form_->Loaded());
}

TEST_F(Nesting, AProgramWhoseMainWindowIsClosedLivesUntilTheJobWindowIsClosedToo) {
  CropTo("/tmp/out.mp4");
  Texts events;
  AtNextDoEvents([&] {
    form_->close();
    events.emplace_back("main window closed");
  });
  Timer& timer = TimerOf(*JobWindow());
  const std::function<void()> wired = timer.Tick;
  timer.Tick = [&, wired] {
    wired();
    if (timer.Enabled()) return;
    events.emplace_back("job done");
    JobWindow()->close();
  };
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, (Texts{"main window closed", "job done"}));
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

}  // namespace
}  // namespace kelvane::testing
