#pragma once

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <string>

#include "joiner/Form4.h"
#include "platform/App.h"
#include "platform/Menu.h"
#include "support/DialogAnswers.h"
#include "support/OpenWindowTest.h"
#include "support/Pictures.h"

namespace kelvane::testing {

// The joiner window as the user meets it, with recording tools.
class JoinerWindowTest : public OpenWindowTest<Form4> {
 protected:
  template <class Kind>
  bool Has(const char* array, int index) const {
    return form_->findChild<Kind*>(Member(array, index)) != nullptr;
  }

  ListBox& Paths() const { return Get<ListBox>("List1"); }
  ListView& Table() const { return Get<ListView>("ListView1"); }
  PictureBox& Strip(int index) const { return Get<PictureBox>("Picture2", index); }
  std::string Details(int index) const {
    return Get<Label>("Label2", index).Caption().toStdString();
  }
  std::string Shown(JoinerReadOut readOut) const {
    return Get<Label>("Label3", readOut).Caption().toStdString();
  }
  Texts PathsListed() const { return LinesOf(Paths()); }
  static Texts LinesOf(const ListBox& list) {
    Texts lines;
    for (int i = 0; i < list.ListCount(); ++i) lines.push_back(list.List(i).toStdString());
    return lines;
  }
  // "1 | clip.mp4 | 80"
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
  // The places of the strips, from the first one on.
  Texts Strips() const {
    Texts strips;
    for (int index = 2; Has<PictureBox>("Picture2", index); ++index) {
      strips.push_back(PlaceText(Strip(index)));
    }
    return strips;
  }

  // The user releases a button over one of the commands.
  void Give(JoinerCommand command, Qt::MouseButton button = Qt::LeftButton) const {
    Release(Get<Label>("Label1", command), button);
  }
  void Choose(JoinMode mode) const { Get<OptionButton>("Option1", mode).Choose(); }
  // Add Video Section, with that file picked.
  void Add(const QString& file) const {
    const DialogAnswers answers({TypeFile(file)});
    Give(AddVideoSection);
  }
  // A file of that name is picked, of which the tool prints so much.
  QString AddPrinting(const QString& name, const QString& text) const {
    QString file = tools_.File(name);
    tools_.DurationProbeDoes(Print(text));
    Add(file);
    return file;
  }
  QString AddSectionOf(const QString& name, const QString& duration) const {
    return AddPrinting(name, DurationText(duration));
  }
  void AddThree() const {
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"}) AddSectionOf(name, "00:10:00.00");
  }
  static QString DurationText(const QString& duration) {
    return QStringLiteral("  Duration: %1, start: 0.000000, bitrate: 1 kb/s\n").arg(duration);
  }

  // Join All Sections with the answer to the dialog for its output.
  Texts Join(const Answer& answer) const {
    const DialogAnswers answers({answer, PressButton(QMessageBox::Ok)});
    Give(JoinAllSections);
    return answers.seen();
  }
  Texts JoinTo(const QString& output) const { return Join(TypeFile(output)); }
  // The same in the other mode, which asks for no output.
  Texts TranscodeAll() const {
    Choose(TranscodeAllSections);
    const DialogAnswers answers({PressButton(QMessageBox::Ok)});
    Give(JoinAllSections);
    return answers.seen();
  }

  void OpenMenuOn(int strip) const { Release(Strip(strip), Qt::RightButton); }
  void ChooseRemove() const { Get<Menu>("mnu_RemoveSection").Click(); }
  void Remove(int strip) const {
    OpenMenuOn(strip);
    ChooseRemove();
  }

  // The program stands from now on in a folder with a blank in its name; returns that.
  QString MoveToolsToAFolderWithABlank() const {
    QString folder = InFolder(QStringLiteral("my program"));
    EXPECT_TRUE(QDir().mkpath(folder));
    for (const QString& tool : {QStringLiteral("ffmpeg"), QStringLiteral("ffprobe")}) {
      EXPECT_TRUE(QFile::rename(InFolder(tool), folder + QLatin1Char('/') + tool));
    }
    App::setPath(folder.toStdString());
    return folder;
  }

  QString InFolder(const QString& name) const { return tools_.Path() + QLatin1Char('/') + name; }
  std::string Path(const char* name) const { return InFolder(name).toStdString(); }
  static std::string ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(not there)";
  }
};

}  // namespace kelvane::testing
