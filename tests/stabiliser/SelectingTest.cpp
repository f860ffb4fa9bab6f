// Which video is on the time line, and which one is stabilised.
#include <QFileDialog>
#include <QLineEdit>
#include <QTest>

#include "stabiliser/StabiliserWindowTest.h"
#include "support/FileDrag.h"
#include "support/Pictures.h"

namespace kelvane::testing {
namespace {

class SelectingAVideo : public StabiliserWindowTest {};

TEST_F(SelectingAVideo, ShowsItsLengthItsTimeLineAndItsWholeSpan) {
  const QString path = Select(3723.9);
  EXPECT_EQ(Get<TextBox>("Text1").Text(), path);
  EXPECT_EQ(Get<TextBox>("Text5").Text(), path);
  EXPECT_EQ(SectionSourceShortPath, path);
  EXPECT_EQ(Text("Label16", 0), "Video Duration hh:mm:ss: 01:02:03");
  EXPECT_EQ(Text("Label16", 2), "3723");
  EXPECT_EQ(Strip().Width(), 3726);
  EXPECT_EQ(Strip().Left(), 0);
  EXPECT_EQ(Get<Line>("Line7").X2(), 3723);
  EXPECT_EQ(Time(SectionStart), "00:00:00");
  EXPECT_EQ(Time(SectionEnd), "01:02:03");
  EXPECT_EQ(Time(SectionSpan), "01:02:03");
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), path);
}

TEST_F(SelectingAVideo, ShowsTenthsForAShortVideo) {
  Select(12.34);
  EXPECT_EQ(Text("Label16", 0), "Video Duration hh:mm:ss: 00:00:12");
  EXPECT_EQ(Text("Label16", 2), "12");
  EXPECT_EQ(Time(SectionStart), "00:00:00.0");
  EXPECT_EQ(Time(SectionEnd), "00:00:12.3");
  EXPECT_EQ(Time(SectionSpan), "00:00:12.3");
  constexpr QRgb kTick = 0x808000;
  const QRect lastSecond(static_cast<int>(Strip().Width()) - 70, 0, 70, 1);
  EXPECT_GT(CountOf(Picture(Strip()), lastSecond, kTick), 2);
  Select(0.4);
  EXPECT_EQ(Text("Label16", 2), "1");
}

TEST_F(SelectingAVideo, DrawsATickAtTheEndIfThatIsARoundTime) {
  constexpr QRgb kTick = 0x808000;
  // 12 times a tenth is more than 1.2 in the computer's numbers.
  Select(1.2);
  const auto end = static_cast<int>(Get<Line>("Line7").X2());
  const int bottom = static_cast<int>(Strip().Height()) - 4;
  Get<Line>("Line3", EndNeedle).setVisible(false);  // it covers the tick
  EXPECT_EQ(CountOf(Picture(Strip()), QRect(end - 1, bottom, 3, 1), kTick), 1);
}

TEST_F(SelectingAVideo, DrawsTheTimeLineAnewFromItsStart) {
  Select(60);
  const QImage fresh = Picture(Strip());
  Select(1200);
  Strip().setLeft(-100);
  Select(60);
  EXPECT_EQ(Strip().Left(), 0);
  EXPECT_EQ(Picture(Strip()), fresh);
}

TEST_F(SelectingAVideo, TellsWhyAFileCanNotBeUsedAndChangesNothing) {
  const QString former = Select(60);
  struct Case {
    const char* lines;  // what the probe prints
    const char* reason;
    const char* more;
  };
  for (const auto& [lines, reason, more] :
       {Case{"echo format_name=mp3; echo duration=3.0",
             "This file has no video:", "Choose a video."},
        Case{"echo width=8; echo height=8; echo format_name=png_pipe; echo duration=N/A",
             "This file is a still picture:", "Choose a video."},
        Case{"echo width=8; echo height=8; echo format_name=h264; echo duration=N/A",
             "The length of this video isn't known:", "Make a copy and choose that: "},
        Case{"echo 'x.mp4: Invalid data found'; exit 1",
             "This file can't be read:", "Invalid data found"}}) {
    tools_.StreamProbeDoes(lines);
    const DialogAnswers answers({TypeFile(tools_.MakeFile("x.mp4")), PressButton(QMessageBox::Ok)});
    Click(Caption("Label6", 0));
    ASSERT_EQ(answers.seen().size(), 2U) << reason;
    for (const char* part : {reason, more}) {
      EXPECT_NE(answers.seen().back().find(part), std::string::npos) << answers.seen().back();
    }
    EXPECT_EQ(Get<TextBox>("Text1").Text(), former);
    EXPECT_EQ(Time(SectionEnd), "00:01:00.0");
    EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), former);
  }
}

TEST_F(SelectingAVideo, NamesTheProbeIfItIsMissing) {
  tools_.Remove("ffprobe");
  const DialogAnswers answers({TypeFile(tools_.MakeFile("x.mp4")), PressButton(QMessageBox::Ok)});
  Click(Caption("Label6", 0));
  EXPECT_NE(answers.seen().back().find("ffprobe"), std::string::npos);
}

TEST_F(SelectingAVideo, ChangesNothingIfTheDialogIsCancelled) {
  const QString former = Select(60);
  const DialogAnswers answers({[](QDialog& dialog) {
    EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).nameFilters().join(';'),
              "MP4 Files (*.mp4) (*.mp4);AVI Files (*.avi) (*.avi);All Files (*.*) (*)");
    dialog.reject();
  }});
  Click(Caption("Label6", 0));
  EXPECT_EQ(answers.seen(), Texts{"Extract Section From Video"});
  EXPECT_EQ(Get<TextBox>("Text1").Text(), former);
}

TEST_F(SelectingAVideo, IsAlsoDoneByATypedPath) {
  const QString path = tools_.MakeFile("typed.mp4");
  auto* const line = Get<TextBox>("Text1").findChild<QLineEdit*>();
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  line->setFocus();
  QTest::keyClicks(line, path);
  EXPECT_EQ(Text("Label16", 2), "1825");
  QTest::keyClick(line, Qt::Key_Return);
  EXPECT_EQ(Text("Label16", 2), "60");
  const QString other = tools_.MakeFile("other.mp4");
  line->setText(other);
  QTest::keyClick(line, Qt::Key_Tab);
  EXPECT_TRUE(WaitFor([&] { return Get<TextBox>("Text5").Text() == other; }));
  line->setFocus();
  line->setText("/missing.mp4");
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  QTest::keyClick(line, Qt::Key_Return);
  EXPECT_EQ(Get<TextBox>("Text1").Text(), other);
}

TEST_F(SelectingAVideo, KeepsANameThatEndsInABlankWhenACommandIsClicked) {
  const QString path = Select(60, "clip.mp4 ");
  Click(Caption("Label10", Play));
  EXPECT_EQ(Get<TextBox>("Text1").Text(), path);
}

// So the key that opened the window, if it is still held, gives no command.
TEST_F(SelectingAVideo, NoControlHasTheFocusWhenTheWindowOpens) {
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  EXPECT_EQ(form_->focusWidget(), form_.get()) << "a control has the focus";
}

class ADroppedVideo : public StabiliserWindowTest {
 protected:
  void Drop(const QStringList& paths) {
    EXPECT_TRUE(DropFiles(*form_, paths));
    EXPECT_TRUE(WaitFor([&] { return Get<TextBox>("Text1").Text() == paths.front(); }));
  }
};

TEST_F(ADroppedVideo, IsSelectedAsIfItHadBeenChosen) {
  const QString path = tools_.MakeFile("dropped.mp4");
  Drop({path, tools_.MakeFile("ignored.mp4")});
  EXPECT_EQ(Text("Label16", 2), "60");
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), path);
}

TEST_F(ADroppedVideo, ReplacesAPathThatIsBeingTyped) {
  auto* const line = Get<TextBox>("Text1").findChild<QLineEdit*>();
  line->setFocus();
  line->setText("/missing.mp4");
  const QString path = tools_.MakeFile("dropped.mp4");
  Drop({path});
  EXPECT_EQ(line->text(), path);
}

class LoadingTheOtherVideo : public StabiliserWindowTest {};

TEST_F(LoadingTheOtherVideo, LeavesTheTimeLineAlone) {
  const QString source = Select(60);
  const QString other = tools_.MakeFile("other.mp4");
  ProbeSays(30);
  const DialogAnswers answers({TypeFile(other)});
  Click(Caption("Label12", LoadOther));
  EXPECT_EQ(answers.seen(), Texts{"Load Video"});
  EXPECT_EQ(Get<TextBox>("Text5").Text(), other);
  EXPECT_EQ(Get<TextBox>("Text1").Text(), source);
  EXPECT_EQ(Text("Label16", 2), "60");
  Select(20, "next.mp4");
  EXPECT_EQ(Get<TextBox>("Text5").Text(), other) << "the new source has replaced the other video";
}

TEST_F(LoadingTheOtherVideo, ByATypedPathWithoutAFileIsRefusedAndStopsTheClickedCommand) {
  const QString source = Select(60);
  Get<TextBox>("Text5").findChild<QLineEdit*>()->setText("/missing.mp4");
  EXPECT_NE(MessageOf(Caption("Label12", Apply)).find("no such file"), std::string::npos);
  EXPECT_EQ(Get<TextBox>("Text5").Text(), source);
  EXPECT_EQ(Runs(), Texts{});
}

TEST_F(LoadingTheOtherVideo, IsAlsoDoneByATypedPathOnEnterOrOnceItsBoxIsLeft) {
  Select(60);
  auto* const line = Get<TextBox>("Text5").findChild<QLineEdit*>();
  form_->activateWindow();
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  for (const auto& [key, name] :
       {std::pair(Qt::Key_Return, "entered.mp4"), {Qt::Key_Tab, "left.mp4"}}) {
    const auto probes = tools_.Runs().size();
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, tools_.MakeFile(name));
    QTest::keyClick(line, key);
    EXPECT_TRUE(WaitFor([&] { return tools_.Runs().size() == probes + 1; })) << name;
    EXPECT_NE(tools_.Runs().back().find(name), std::string::npos);
  }
}

TEST_F(LoadingTheOtherVideo, IsAlsoDoneByATypedPathBeforeTheCommandThatIsClicked) {
  Select(60);
  const QString other = tools_.MakeFile("other.mp4");
  Get<TextBox>("Text5").findChild<QLineEdit*>()->setText(other);
  const QString output = tools_.Path() + "/steady.mp4";
  const DialogAnswers answers({TypeFile(output), PressButton(QMessageBox::Ok)});
  Click(Caption("Label12", Apply));
  EXPECT_EQ(answers.seen().size(), 2U);
  EXPECT_NE(Runs().back().find(other.toStdString()), std::string::npos);
}

}  // namespace
}  // namespace kelvane::testing
