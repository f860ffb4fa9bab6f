#pragma once

#include <QFile>
#include <QStringList>
#include <functional>
#include <string>
#include <utility>

#include "joiner/Form4.h"
#include "platform/Menu.h"
#include "support/DialogAnswers.h"
#include "support/OpenWindowTest.h"
#include "support/Pictures.h"

namespace kelvane::testing {

constexpr const char* kSuccess =
    "Kelvane | Your Videos have been joined successfully. | exclamation | OK Cancel";

// The open joiner window, with RecordingTools in place of the media tools.
class JoinerWindowTest : public OpenWindowTest<Form4> {
 protected:
  // The controls.
  ListBox& Paths() const { return Get<ListBox>("List1"); }
  ListView& Table() const { return Get<ListView>("ListView1"); }
  PictureBox& TimeChart() const { return Get<PictureBox>("Picture1", Chart); }
  PictureBox& Strip(int index) const { return Get<PictureBox>("Picture2", index); }
  bool Has(const char* array, int index) const {
    return form_->findChild<Control*>(Member(array, index)) != nullptr;
  }

  // What the controls show.
  std::string Details(int index) const {
    return Get<Label>("Label2", index).Caption().toStdString();
  }
  std::string Shown(JoinerReadOut readOut) const {
    return Get<Label>("Label3", readOut).Caption().toStdString();
  }
  static Texts LinesOf(const ListBox& list) {
    Texts lines;
    for (int i = 0; i < list.ListCount(); ++i) lines.push_back(list.List(i).toStdString());
    return lines;
  }
  Texts PathsListed() const { return LinesOf(Paths()); }
  // The rows of the table, such as "1 | clip.mp4 | 80".
  Texts Rows() const {
    Texts rows;
    for (int number = 1; number <= Table().ListItems.Count(); ++number) {
      const ListView::ListItem row = Table().ListItems(number);
      rows.push_back(QStringList{row.Text(), row.SubItems(1), row.SubItems(2)}
                         .join(QStringLiteral(" | "))
                         .toStdString());
    }
    return rows;
  }
  // "left,top widthxheight"
  static std::string PlaceText(const Control& control) {
    return QStringLiteral("%1,%2 %3x%4")
        .arg(static_cast<double>(control.Left()))
        .arg(static_cast<double>(control.Top()))
        .arg(static_cast<double>(control.Width()))
        .arg(static_cast<double>(control.Height()))
        .toStdString();
  }
  // The places of all strips.
  Texts Strips() const {
    Texts strips;
    for (int index = 2; Has("Picture2", index); ++index) strips.push_back(PlaceText(Strip(index)));
    return strips;
  }

  // What the user does. A command is given by the release of a mouse button.
  void Give(JoinerCommand command, Qt::MouseButton button = Qt::LeftButton) const {
    Release(Get<Label>("Label1", command), button);
  }
  void Choose(JoinMode mode) const { Get<OptionButton>("Option1", mode).Choose(); }
  void Add(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(AddVideoSection);
  }
  // Makes a file, lets the probe print `text`, and adds the file. Returns its path.
  QString AddPrinting(const QString& name, const QString& text) const {
    QString file = tools_.MakeFile(name);
    tools_.DurationProbeDoes(PrintCommands(text));
    Add(file);
    return file;
  }
  QString AddSectionOf(const QString& name, const QString& duration = "00:10:00.00") const {
    return AddPrinting(name, QStringLiteral("  Duration: %1, start: 0.000000\n").arg(duration));
  }
  void AddThree() const {
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"}) AddSectionOf(name);
  }
  void OpenMenuOn(int strip) const { Release(Strip(strip), Qt::RightButton); }
  void ChooseRemove() const { Get<Menu>("mnu_RemoveSection").Click(); }
  void Remove(int strip) const {
    OpenMenuOn(strip);
    ChooseRemove();
  }
  // Joins by copy, with `answer` to the dialog for the new file. Returns the dialogs seen.
  Texts Join(const Answer& answer) const {
    const DialogAnswers answers({answer, PressButton(QMessageBox::Ok)});
    Give(JoinAllSections);
    return answers.seen();
  }
  Texts JoinTo(const QString& output) const { return Join(TypeFile(output)); }
  // Gives the join command in the other mode, which makes transport streams, doesn't join them, and
  // asks for no new file. Returns the dialogs seen.
  Texts TranscodeAll() const {
    Choose(TranscodeAllSections);
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Give(JoinAllSections);
    return answers.seen();
  }

  // Files.
  QString InFolder(const QString& name) const { return tools_.Path() + QLatin1Char('/') + name; }
  std::string Path(const char* name) const { return InFolder(name).toStdString(); }
  static std::string ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(not there)";
  }
  std::string ListFile() const { return ContentOf(InFolder("files.txt")); }
  std::string ListLine(const char* name) const { return "file '" + Path(name) + "'\r\n"; }

  // The runs of ffmpeg: those of joins and those that make transport streams.
  Texts FfmpegRuns() const {
    Texts runs;
    for (const std::string& run : tools_.Runs()) {
      if (run.starts_with("ffmpeg")) runs.push_back(run);
    }
    return runs;
  }
  std::string CopyRun(const std::string& output) const {
    return "ffmpeg | -f | concat | -safe | 0 | -i | " + Path("files.txt") + " | -c | copy | -y" +
           (output.empty() ? "" : " | " + output);
  }

  // Appends to `captions` each caption that the process line takes from now on.
  void RecordCaptions(Texts& captions) const {
    Get<Label>("Label3", ProcessLine).Change = [&](int) { captions.push_back(Shown(ProcessLine)); };
  }
  // Runs `step` once, in the first DoEvents of the wait before the next join.
  void DuringTheWait(std::function<void()> step) const {
    Get<Label>("Label3", ProcessLine).Change = [this, step = std::move(step)](int) mutable {
      if (step && Shown(ProcessLine) == "Process: Joining Your Videos...") {
        AtNextDoEvents(std::exchange(step, nullptr));
      }
    };
  }
};

}  // namespace kelvane::testing
