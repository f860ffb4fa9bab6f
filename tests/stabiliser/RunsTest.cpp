// The stabiliser's commands, with RecordingTools in place of the media tools; and CloseOnSignal.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <csignal>

#include "media/Module1.h"
#include "platform/ContentArea.h"
#include "shared/Colours.h"
#include "stabiliser/CloseOnSignal.h"
#include "stabiliser/StabiliserWindowTest.h"
#include "support/FileDrag.h"
#include "support/Gate.h"
#include "support/Pictures.h"

namespace kelvane::testing {
namespace {

using namespace Qt::StringLiterals;

// A video of a minute is on the time line, and its section from 10.0 to 40.5 seconds is marked.
class StabiliserRuns : public StabiliserWindowTest {
 protected:
  StabiliserRuns() {
    source_ = Select(60);
    DragNeedle(StartNeedle, 14 * 10);
    DragNeedle(EndNeedle, -14 * 19.5F);
  }

  Label& Extract() const { return Caption("Label14", ExtractRegion); }
  Label& View() const { return Caption("Label14", ViewRegion); }
  Label& Test() const { return Caption("Label12", TestSettings); }
  Label& ApplyCaption() const { return Caption("Label12", Apply); }

  // From now on the probe states a picture size for which the first pass may need 13 TB.
  void ProbeSaysHuge() const {
    tools_.StreamProbeDoes(
        "printf '%s\\n' width=1000000 height=1000000 pix_fmt=yuv420p avg_frame_rate=25/1 "
        "duration=N/A format_name=mov,mp4 start_time=0.0 duration=60");
  }
  // Clicks the caption and gives the dialogs these answers. Returns the dialogs.
  static Texts ClickAndAnswer(Label& caption, std::initializer_list<Answer> answers) {
    const DialogAnswers given(answers);
    Click(caption);
    EXPECT_TRUE(given.AllGiven());
    return given.seen();
  }
  // Types the path of a file that exists, and agrees to replace it.
  static Answer ReplaceFile(const QString& path) {
    return [path](QDialog& dialog) {
      const DialogAnswers question({PressButton(QMessageBox::Yes)});
      TypeFile(path)(dialog);
    };
  }
  // Clicks the caption, types the path, confirms the message that follows, and returns it.
  static std::string MessageOfSaving(Label& caption, const QString& path) {
    return ClickAndAnswer(caption, {TypeFile(path), PressButton(QMessageBox::Ok)}).back();
  }

  // Does the step once, as soon as the condition holds, inside the run that is started next.
  void When(std::function<bool()> condition, std::function<void()> step) {
    auto* const timer = new QTimer(form_.get());
    QObject::connect(timer, &QTimer::timeout, [timer, condition, step] {
      if (!condition()) return;
      timer->deleteLater();
      timer->stop();
      step();
    });
    timer->start(1);
  }

  QString PathOf(const QString& name) const { return outputs_.filePath(name); }
  QStringList Outputs() const {
    return QDir(outputs_.path()).entryList(QDir::Files | QDir::Hidden);
  }
  // The working files that are there.
  static QStringList WorkFiles() {
    const QFileInfo any(QString::fromStdString(PrivateWorkFile("any")));
    return any.dir().entryList(QDir::Files | QDir::Hidden);
  }
  static QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "(not there)";
  }

  // The runs so far, with the source as SOURCE, a new file's temporary name as NEW, and each
  // private folder, that of working files and that of links, as WORK.
  Texts Lines() const {
    static const QRegularExpression temporary(u"[^ ]*/\\.kelvane-[A-Za-z0-9]{6}"_s);
    static const QRegularExpression working(u"[^ =]*/kelvane-[0-9]+-[A-Za-z0-9]{6}"_s);
    Texts lines;
    for (const std::string& run : Runs()) {
      lines.push_back(QString::fromStdString(run)
                          .replace(source_, "SOURCE")
                          .replace(" | ", " ")
                          .replace(temporary, "NEW")
                          .replace(working, "WORK")
                          .toStdString());
    }
    return lines;
  }
  static std::string Ffmpeg(const std::string& rest) {
    return "ffmpeg -hide_banner -stats_period 0.1 " + rest;
  }
  static constexpr const char* kDetect =
      "-vf vidstabdetect=stepsize=4:shakiness=3:accuracy=5:result=WORK/work-transforms.trf -f null "
      "-";
  static constexpr const char* kTransform =
      "-vf copy,vidstabtransform=input=WORK/work-transforms.trf:zoom=10:optzoom=0:smoothing=25,"
      "unsharp=lx=7:ly=7 -sn -dn -y ";

  QString source_;
  QTemporaryDir outputs_{QDir::tempPath() + "/my videos-XXXXXX"};
};

TEST_F(StabiliserRuns, ViewPlaysTheMarkedSection) {
  Click(View());
  EXPECT_EQ(Lines(), Texts{"ffplay -hide_banner -ss 10 -t 32.5 -autoexit -vf "
                           "trim=start=10:end=40.5 -af atrim=start=10:end=40.5 -i SOURCE"});
}

TEST_F(StabiliserRuns, ViewEndsFfplayAfterTheSection) {
  tools_.FfplayDoes("printf '  40.90 A-V: -0.012 fd=   0\\r' >&2; exec sleep 1000\n");
  Click(View());
  EXPECT_EQ(View().Caption(), "View Selected Region ");
}

TEST_F(StabiliserRuns, ViewTellsThatTheVideoHasVanished) {
  ASSERT_TRUE(QFile::remove(source_));
  EXPECT_NE(ClickAndAnswer(View(), {PressButton(QMessageBox::Ok)}).back().find("can't be read"),
            std::string::npos);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(StabiliserRuns, ExtractWritesTheMarkedSection) {
  ProbeSays(30.5);
  EXPECT_EQ(
      ClickAndAnswer(Extract(), {TypeFile(PathOf("part.mp4")), PressButton(QMessageBox::Ok)}),
      (Texts{"Save Selected Region As", "Kelvane | The selected region has been saved as\n" +
                                            PathOf("part.mp4").toStdString() + " | no icon | OK"}));
  EXPECT_EQ(Lines(), Texts{Ffmpeg("-ss 10 -i SOURCE -t 30.5 -sn -dn -y NEW.mp4")});
  EXPECT_EQ(Content(PathOf("part.mp4")), "written\n");
  EXPECT_EQ(Outputs(), QStringList("part.mp4"));
}

TEST_F(StabiliserRuns, LeaveATypedPathInItsBoxAndAllowOtherCommandsWhileItIsProbed) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.StreamProbeDoes(QString::fromStdString(gate.WaitCommands()) + "exit 1");
  auto& box = Get<TextBox>("Text1");
  const QString typed = tools_.MakeFile("typed.mp4");
  box.findChild<QLineEdit*>()->setText(typed);
  QString during;
  When([this] { return Text("Label6", 0) == "Cancel"; },
       [&] {
         box.EditFinished(-1);
         Get<Label>("Label2", OptionReadOut(StepSize)).setCaption("99");
         Click(Caption("Label12", ResetSettings));
         EXPECT_NE(Text("Label2", OptionReadOut(StepSize)), "99") << "the other command is lost";
         during = box.Text();
         gate.Open();
       });
  MessageOf(View());
  EXPECT_EQ(during, typed);
  EXPECT_EQ(box.Text(), source_);
}

TEST_F(StabiliserRuns, TestUsesTheMarkedSectionUntilOneIsExtracted) {
  Click(Test());
  const std::string part = "-ss 10 -i SOURCE -t 30.5 ";
  EXPECT_EQ(Lines(), (Texts{Ffmpeg(part + "-an -sn -dn " + kDetect),
                            Ffmpeg(part + kTransform + "WORK/work-test.mp4")}));
  EXPECT_TRUE(Get<WindowsMediaPlayer>("wmp").URL().endsWith("/work-test.mp4"));

  MessageOfSaving(Extract(), PathOf("part.mp4"));
  Click(Test());
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[3].find(" -ss "), std::string::npos) << lines[3];
  EXPECT_NE(lines[3].find("-i WORK/"), std::string::npos) << "doesn't read a link: " << lines[3];
}

TEST_F(StabiliserRuns, TestUsesTheMarkedSectionAgainOnceOtherMarksAreSet) {
  MessageOfSaving(Extract(), PathOf("part.mp4"));
  DragNeedle(EndNeedle, 14);
  Click(Test());
  EXPECT_NE(Lines().back().find("-ss 10 -i SOURCE -t 31.5 "), std::string::npos);
}

TEST_F(StabiliserRuns, ApplyStabilisesTheWholeVideo) {
  EXPECT_EQ(ClickAndAnswer(ApplyCaption(),
                           {TypeFile(PathOf("steady.mp4")), PressButton(QMessageBox::Ok)}),
            (Texts{"Save Stabilised Video As",
                   "Kelvane | The stabilised video has been saved as\n" +
                       PathOf("steady.mp4").toStdString() + " | no icon | OK"}));
  EXPECT_EQ(Lines(), (Texts{Ffmpeg(std::string("-i SOURCE -an -sn -dn ") + kDetect),
                            Ffmpeg(std::string("-i SOURCE ") + kTransform + "NEW.mp4")}));
  EXPECT_EQ(Content(PathOf("steady.mp4")), "written\n");
  EXPECT_EQ(Outputs(), QStringList("steady.mp4"));
}

TEST_F(StabiliserRuns, LeaveNoWorkingFilesExceptForAResultThatIsPlayed) {
  MessageOfSaving(ApplyCaption(), PathOf("steady.mp4"));
  EXPECT_EQ(WorkFiles(), QStringList());
  Click(Test());
  EXPECT_EQ(WorkFiles(), QStringList("work-test.mp4"));
  tools_.FfmpegDoes(QString(kWriteOutput) + "case \"$*\" in *vidstabtransform*) exit 1 ;; esac\n");
  MessageOf(Test());
  EXPECT_EQ(WorkFiles(), QStringList());
  MessageOfSaving(ApplyCaption(), PathOf("new.mp4"));
  EXPECT_EQ(WorkFiles(), QStringList());
}

TEST_F(StabiliserRuns, ApplyStabilisesTheOtherVideoIfOneIsLoaded) {
  const QString other = tools_.MakeFile("other.mp4");
  ClickAndAnswer(Caption("Label12", LoadOther), {TypeFile(other)});
  MessageOfSaving(ApplyCaption(), PathOf("steady.mp4"));
  EXPECT_NE(Lines().front().find(" -i " + other.toStdString() + ' '), std::string::npos);
}

TEST_F(StabiliserRuns, ApplyProbesALoadedVideoAgainIfAnExtractedSectionReplacedIt) {
  const QString part = PathOf("part.mp4");
  MessageOfSaving(Extract(), part);
  ClickAndAnswer(Caption("Label12", LoadOther), {TypeFile(part)});
  ProbeSaysHuge();
  ClickAndAnswer(Extract(), {ReplaceFile(part), PressButton(QMessageBox::Ok)});
  const Texts dialogs = ClickAndAnswer(
      ApplyCaption(), {TypeFile(PathOf("steady.mp4")), PressButton(QMessageBox::Cancel)});
  EXPECT_NE(dialogs.back().find("may need up to 13020834 MB"), std::string::npos) << dialogs.back();
}

TEST_F(StabiliserRuns, ApplySelectsTheSourceAgainIfTheOutputReplacedItThroughAnotherPath) {
  ClickAndAnswer(Caption("Label12", LoadOther), {TypeFile(tools_.MakeFile("other.mp4"))});
  ProbeSays(120);
  const QString folder = PathOf("folder");
  ASSERT_TRUE(QFile::link(tools_.Path(), folder));
  ClickAndAnswer(ApplyCaption(), {ReplaceFile(folder + '/' + QFileInfo(source_).fileName()),
                                  PressButton(QMessageBox::Ok)});
  EXPECT_EQ(Text("Label16", 2), "120");
  EXPECT_EQ(Time(SectionEnd), "00:02:00");
}

TEST_F(StabiliserRuns, TestUsesTheMarkedSectionAgainOnceAnotherVideoIsSelected) {
  Select(60);
  MessageOfSaving(Extract(), PathOf("part.mp4"));
  Select(60, "other.mp4");
  Click(Test());
  EXPECT_NE(Lines().back().find("other.mp4 -ss 0 -t 60 "), std::string::npos) << Lines().back();
}

TEST_F(StabiliserRuns, ANeedleShowsTheVideoOfTheTimeLineAgainAfterATest) {
  Click(Test());
  DragNeedle(StartNeedle, 14);
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), source_);
}

TEST_F(StabiliserRuns, TellIfTheStabilisedVideoIsShorterThanWhatTheFirstPassProcessed) {
  tools_.FfmpegDoes("printf 'frame=9 time=00:01:00.00 bitrate=N/A speed=1x\\r' >&2\n"_L1 +
                    QString(kWriteOutput));
  ProbeSays(50);
  const std::string message = MessageOfSaving(ApplyCaption(), PathOf("steady.mp4"));
  EXPECT_NE(message.find("50.00 seconds long instead of 60.00"), std::string::npos) << message;
  EXPECT_EQ(Outputs(), QStringList("steady.mp4"));
}

// With -copyts, ffmpeg doesn't report the times of the section.
TEST_F(StabiliserRuns, TellNothingOfTheLengthOfASectionThatIsReadWithTheFilesTimeStamps) {
  tools_.StreamProbeDoes(
      "printf '%s\\n' width=640 height=360 avg_frame_rate=25/1 format_name=mpegts start_time=0.0 "
      "duration=60");
  ClickAndAnswer(Caption("Label6", 0), {TypeFile(tools_.MakeFile("clip.ts"))});
  DragNeedle(StartNeedle, 14 * 10);
  tools_.FfmpegDoes("printf 'frame=9 time=00:00:05.00 bitrate=N/A speed=1x\\r' >&2\n"_L1 +
                    QString(kWriteOutput));
  EXPECT_EQ(ClickAndAnswer(Test(), {}), Texts{});
  EXPECT_NE(Lines().front().find("-copyts"), std::string::npos);
}

TEST_F(StabiliserRuns, TellNothingOfALengthThatIsNotStated) {
  tools_.StreamProbeDoes("printf '%s\\n' width=640 height=360 format_name=h264 duration=N/A");
  const std::string message = MessageOfSaving(Extract(), PathOf("part.h264"));
  EXPECT_EQ(message.find("seconds long"), std::string::npos) << message;
}

TEST_F(StabiliserRuns, CaptionsThatActLightUpUnderThePointer) {
  QWidget* const bareGround = form_->findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly);
  QWidget* const player = &Get<PictureBox>("Picture7", 0);
  QWidget* const options = &Get<PictureBox>("Picture7", 3);
  struct Case {
    Label* caption;
    Label* highlight;
    QWidget* beside;
  };
  for (const auto& [caption, highlight, beside] :
       {Case{&Caption("Label6", 0), &Caption("Label6", 1), bareGround},
        Case{&View(), &View(), bareGround},
        Case{&Extract(), &Extract(), &Get<PictureBox>("Picture8")}, Case{&Test(), &Test(), options},
        Case{&ApplyCaption(), &ApplyCaption(), options},
        Case{&Caption("Label10", Play), &Caption("Label10", Play), player}}) {
    MovePointerOver(*caption);
    EXPECT_EQ(highlight->BackColor(), kGrey) << caption->objectName().toStdString();
    MovePointerOver(*beside);
    EXPECT_NE(highlight->BackColor(), kGrey) << caption->objectName().toStdString();
  }
}

TEST_F(StabiliserRuns, AcceptAFileOfMotionsThatIsNotText) {
  tools_.FfmpegDoes(QString(kWriteOutput).replace("echo motions", "printf TRF-motions"));
  EXPECT_NE(MessageOfSaving(ApplyCaption(), PathOf("steady.mp4")).find("has been saved"),
            std::string::npos);
}

TEST_F(StabiliserRuns, AreStartedBySpaceAndEnter) {
  for (const int key : {Qt::Key_Space, Qt::Key_Return}) {
    QTest::keyClick(&View(), static_cast<Qt::Key>(key));
  }
  EXPECT_EQ(Lines().size(), 2U);
}

TEST_F(StabiliserRuns, AskBeforeTheFirstPassIfItsFolderMayLackRoom) {
  ProbeSaysHuge();
  ClickAndAnswer(Caption("Label6", 0), {TypeFile(tools_.MakeFile("huge.mp4"))});
  const Texts dialogs = ClickAndAnswer(Test(), {PressButton(QMessageBox::Cancel)});
  EXPECT_NE(dialogs.back().find("may need up to 13020834 MB"), std::string::npos) << dialogs.back();
  EXPECT_EQ(Lines(), Texts{});
  ClickAndAnswer(Test(), {PressButton(QMessageBox::Ok)});
  EXPECT_EQ(Lines().size(), 2U);
}

TEST_F(StabiliserRuns, ShowTheOptionsThatAreUsed) {
  const auto readOut = [this](int slider) { return Text("Label2", OptionReadOut(slider)); };
  Caption("Label2", OptionReadOut(Shakiness)).setCaption("31");
  Click(Test());
  EXPECT_EQ(readOut(Shakiness), "10");
  EXPECT_EQ(readOut(UnSharpLX), "07");
  EXPECT_EQ(readOut(Zoom), "010");
  EXPECT_NE(Lines().front().find(":shakiness=10:"), std::string::npos);
}

TEST_F(StabiliserRuns, ShowTheirProgressAndThenNone) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.FfmpegDoes(u"printf 'frame=1 time=00:00:07.50 bitrate=N/A speed=1x\\r' >&2\n"_s +
                    QString::fromStdString(gate.WaitCommands()) +
                    u"printf 'frame=2 time=00:01:00.00 bitrate=N/A speed=1x\\r' >&2\n"_s +
                    kWriteOutput);
  struct Case {
    int bar;
    const char* labels;
    int label;
    const char* shown;
  };
  int seen = 0;
  for (const auto& [bar, labels, label, shown] :
       {Case{0, "Label9", 2, "Progress 24.59%"}, Case{1, "Label9", 3, "Progress 24.59%"}}) {
    When([this, labels, label, shown] { return Text(labels, label) == shown; },
         [&, bar] {
           EXPECT_NEAR(Get<ProgressBar>("pbar", bar).Value(), 24.59, 0.01);
           ++seen;
           gate.Open();
         });
  }
  Click(Test());
  When([this] { return Text("Label15", 1) == "24.59%"; },
       [&] {
         EXPECT_NEAR(Get<ProgressBar>("pbar", 2).Value(), 24.59, 0.01);
         ++seen;
         gate.Open();
       });
  MessageOfSaving(Extract(), PathOf("part.mp4"));
  EXPECT_EQ(seen, 3);
  for (int bar = 0; bar < 3; ++bar) EXPECT_EQ(Get<ProgressBar>("pbar", bar).Value(), 0);
  EXPECT_EQ(Text("Label9", 2), "Progress 00.00%");
  EXPECT_EQ(Text("Label9", 3), "Progress 00.00%");
  EXPECT_EQ(Text("Label15", 1), "00.00%");
}

// The tool would sleep on: only Cancel ends it.
TEST_F(StabiliserRuns, AreCancelledByTheirOwnCaptionAloneAndLeaveNothing) {
  QFile former(PathOf("steady.mp4"));
  ASSERT_TRUE(former.open(QIODevice::WriteOnly));
  former.write("former");
  former.close();
  tools_.FfmpegDoes(QString(kWriteOutput) + "exec sleep 1000");
  const QImage enabledLook = Picture(Extract());
  When([this] { return Lines().size() == 1; },
       [&] {
         EXPECT_EQ(ApplyCaption().Caption(), "Cancel");
         for (Label* other : {&Extract(), &View(), &Test(), &Caption("Label6", 0),
                              &Caption("Label12", LoadOther)}) {
           EXPECT_FALSE(other->isEnabled()) << other->objectName().toStdString();
           Click(*other);
         }
         EXPECT_EQ(Lines().size(), 1U);
         EXPECT_NE(Picture(Extract()), enabledLook) << "the caption isn't dimmed";
         Click(ApplyCaption());
       });
  ClickAndAnswer(ApplyCaption(), {ReplaceFile(former.fileName())});
  EXPECT_EQ(ApplyCaption().Caption(), "Apply De-Shake && Stabilize Settings");
  EXPECT_TRUE(Extract().isEnabled());
  EXPECT_EQ(Lines().size(), 1U) << "there was a second pass";
  EXPECT_EQ(WorkFiles(), QStringList());
  EXPECT_EQ(Outputs(), QStringList("steady.mp4"));
  EXPECT_EQ(Content(former.fileName()), "former");
}

TEST_F(StabiliserRuns, AreNotCancelledByADoubleClick) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.FfplayDoes(QString::fromStdString(gate.WaitCommands()));
  When([this] { return Lines().size() == 1; },
       [&] {
         // The events that follow the first release of a double-click.
         QTest::mouseDClick(&View(), Qt::LeftButton);
         QTest::mouseRelease(&View(), Qt::LeftButton);
         EXPECT_EQ(View().Caption(), "Cancel");
         gate.Open();
       });
  Click(View());
  EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(StabiliserRuns, DoNotStartAgainIfTheyEndBetweenPressAndReleaseOfCancel) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.FfplayDoes(QString::fromStdString(gate.WaitCommands()));
  When([this] { return Lines().size() == 1; },
       [&] {
         QTest::mousePress(&View(), Qt::LeftButton);
         gate.Open();
       });
  Click(View());
  QTest::mouseRelease(&View(), Qt::LeftButton);
  EXPECT_EQ(Lines().size(), 1U);
}

TEST_F(StabiliserRuns, TestUsesTheMarkedSectionOnceAStabilisedVideoReplacesTheExtractedOne) {
  const QString part = PathOf("part.mp4");
  MessageOfSaving(Extract(), part);
  MessageOfSaving(ApplyCaption(), PathOf("steady.mp4"));
  Click(Test());
  EXPECT_EQ(Lines().back().find("-ss 10 "), std::string::npos) << "the marked section is tested";
  ClickAndAnswer(ApplyCaption(), {ReplaceFile(part), PressButton(QMessageBox::Ok)});
  Click(Test());
  EXPECT_NE(Lines().back().find("-ss 10 -i SOURCE -t 30.5 "), std::string::npos);
}

// Qt would give the focus to the next control, with a focus frame.
TEST_F(StabiliserRuns, TakeTheFocusFromADimmedCaptionAndGiveItBack) {
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  View().setFocus();
  const Gate gate(tools_.PathOf("gate"));
  tools_.FfmpegDoes(QString::fromStdString(gate.WaitCommands()) + kWriteOutput);
  const QWidget* during = &View();
  When([this] { return !View().isEnabled(); },
       [&] {
         during = form_->focusWidget();
         gate.Open();
         gate.Open();
       });
  Click(Test());
  EXPECT_EQ(during, form_.get());
  EXPECT_EQ(form_->focusWidget(), &View());
}

TEST_F(StabiliserRuns, RefuseDrops) {
  const QString path = tools_.MakeFile("dropped.mp4");
  EXPECT_TRUE(FileDrag(QStringList{path}).Enter(*form_));
  tools_.FfplayDoes("exec sleep 1000\n");
  bool taken = true;
  When([this] { return Lines().size() == 1; },
       [&] {
         taken = FileDrag(QStringList{path}).Enter(*form_);
         Click(View());
       });
  Click(View());
  EXPECT_FALSE(taken);
  EXPECT_TRUE(FileDrag(QStringList{path}).Enter(*form_));
}

TEST(CloseOnSignal, LeavesAloneASignalThatTheProgramIgnores) {
  const auto former = std::signal(SIGHUP, SIG_IGN);
  {
    QWidget window;
    const CloseOnSignal closeOnSignal(window);
    EXPECT_EQ(std::signal(SIGHUP, SIG_IGN), SIG_IGN);
  }
  EXPECT_EQ(std::signal(SIGHUP, former), SIG_IGN);
}

TEST_F(StabiliserRuns, EndWithTheWindow) {
  tools_.FfmpegDoes("exec sleep 1000\n");
  When([this] { return Lines().size() == 1; }, [this] { form_->Unload(); });
  ClickAndAnswer(Extract(), {TypeFile(PathOf("part.mp4"))});
  EXPECT_EQ(Outputs(), QStringList());
}

TEST_F(StabiliserRuns, TellWhatTheToolComplainedOfAndKeepNoOutput) {
  struct Case {
    const char* commands;
    const char* reason;
  };
  for (const auto& [commands, reason] :
       {Case{"echo 'No space left on device' >&2; exit 1", "No space left on device"},
        Case{"echo \"No such filter: 'vidstabdetect'\" >&2; exit 1",
             "lacks the filters vidstabdetect"},
        Case{"kill -KILL $$", "can't be"}}) {
    tools_.FfmpegDoes(QString(kWriteOutput) + commands);
    EXPECT_NE(MessageOfSaving(Extract(), PathOf("part.mp4")).find(reason), std::string::npos)
        << reason;
    EXPECT_NE(MessageOfSaving(ApplyCaption(), PathOf("steady.mp4")).find(reason), std::string::npos)
        << reason;
    EXPECT_EQ(Outputs(), QStringList()) << reason;
  }
}

TEST_F(StabiliserRuns, KeepNoOutputThatHasNoVideo) {
  tools_.StreamProbeDoes("echo format_name=mp3");
  EXPECT_NE(MessageOfSaving(Extract(), PathOf("part.mp4")).find("no video"), std::string::npos);
  EXPECT_EQ(Outputs(), QStringList());
}

TEST_F(StabiliserRuns, TellIfTheOutputCanNotBeGivenTheChosenName) {
  tools_.FfmpegDoes(QString(kWriteOutput) + "mkdir -p \"${output%/*}/part.mp4/full\"");
  const std::string message = MessageOfSaving(Extract(), PathOf("part.mp4"));
  EXPECT_NE(message.find("part.mp4 can't be written"), std::string::npos) << message;
  EXPECT_NE(message.find("exclamation"), std::string::npos) << message;
}

TEST_F(StabiliserRuns, ReplaceNoFileThatAppearedUnderTheChosenNameMeanwhile) {
  tools_.FfmpegDoes(QString(kWriteOutput) + "echo other > \"${output%/*}/part.mp4\"");
  EXPECT_NE(MessageOfSaving(Extract(), PathOf("part.mp4")).find("File exists"), std::string::npos);
  EXPECT_EQ(Content(PathOf("part.mp4")), "other\n");
  EXPECT_EQ(Outputs(), QStringList("part.mp4"));
}

TEST_F(StabiliserRuns, TestUsesTheMarkedSectionIfTheExtractedOneVanished) {
  MessageOfSaving(Extract(), PathOf("part.mp4"));
  ASSERT_TRUE(QFile::remove(PathOf("part.mp4")));
  Click(Test());
  EXPECT_NE(Lines().back().find("-ss 10 -i SOURCE -t 30.5 "), std::string::npos);
}

TEST_F(StabiliserRuns, TellIfTheExtractedSectionIsShorterThanTheMarkedOneAndKeepTheFile) {
  ProbeSays(30.5);
  EXPECT_EQ(MessageOfSaving(Extract(), PathOf("part.mp4")).find("instead"), std::string::npos);
  ProbeSays(29);
  const std::string message = MessageOfSaving(Extract(), PathOf("shorter.mp4"));
  EXPECT_NE(message.find("29.00"), std::string::npos) << message;
  EXPECT_NE(message.find("30.50"), std::string::npos) << message;
  EXPECT_EQ(Outputs(), QStringList({"part.mp4", "shorter.mp4"}));
}

TEST_F(StabiliserRuns, RefuseTheirInputAsOutputUnderAnyName) {
  const QString link = PathOf("link.mp4");
  ASSERT_TRUE(QFile::link(source_, link));
  for (const QString& path : {source_, link}) {
    const Texts dialogs =
        ClickAndAnswer(Extract(), {ReplaceFile(path), PressButton(QMessageBox::Ok)});
    EXPECT_NE(dialogs.back().find("the video that is read"), std::string::npos);
  }
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(Content(source_), "contents");
}

TEST_F(StabiliserRuns, RefuseANameThatSaysNoFormat) {
  EXPECT_NE(MessageOfSaving(Extract(), PathOf("part")).find("extension"), std::string::npos);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(StabiliserRuns, SayWhyANameCanNotBeUsedWhileItIsTyped) {
  for (const auto& [name, expected] :
       {std::pair(PathOf("my part.mp4"), ""),
        {PathOf("part"), "The name needs an extension that says the format, such as .mp4."},
        {PathOf("Holiday 12.07.2024"),
         "The name needs an extension that says the format, such as .mp4."},
        {PathOf("l.m3u8"),
         "This format is a list of several files. Choose another one, such as .mp4."},
        {source_, "This is the video that is read; choose another name."},
        {PathOf("missing/part.mp4"), "No file can be written in this folder."}}) {
    ClickAndAnswer(Extract(), {[&name = name, &expected = expected](QDialog& dialog) {
                     auto* box = dialog.findChild<QLineEdit*>("fileNameEdit");
                     box->setText(name);
                     EXPECT_EQ(box->accessibleDescription(), expected);
                     dialog.reject();
                   }});
  }
}

TEST_F(StabiliserRuns, TellThatAFolderTakesNoFile) {
  EXPECT_NE(MessageOfSaving(Extract(), "/sys/part.mp4").find("part.mp4 can't be written"),
            std::string::npos);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(StabiliserRuns, ResetSetsReadOutsThumbsAndOutlinesAsDesigned) {
  const auto text = [this] {
    std::string all;
    for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
      all += Text("Label2", OptionReadOut(slider)) + ' ';
      all += std::to_string(Get<Label>("Label1", slider).Left()) + ' ';
      all += std::to_string(Get<Shape>("Shape2", slider).Left()) + '\n';
    }
    return all;
  };
  const std::string designed = text();
  for (int slider = StepSize; slider <= UnSharpLY; ++slider) {
    Label& thumb = Get<Label>("Label1", slider);
    thumb.MouseMove({.Index = slider, .Button = kLeftButton, .Shift = 0, .X = 900, .Y = 1});
  }
  EXPECT_NE(text(), designed);
  Click(Caption("Label12", ResetSettings));
  EXPECT_EQ(text(), designed);
}

}  // namespace
}  // namespace kelvane::testing
