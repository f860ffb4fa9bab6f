// Files that are dropped on a window.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QMenuBar>
#include <QSysInfo>
#include <QTemporaryDir>

#include "platform/MsgBox.h"
#include "platform/TestForm.h"
#include "platform/TextBox.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"
#include "support/FileDrag.h"

namespace kelvane::testing {
namespace {

class Drops : public ::testing::Test {
 protected:
  Drops() {
    form.Open();
    form.FilesDropped = [this](const QStringList& paths) { dropped << paths; };
  }

  QString MakeFile(const QString& name) const {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return file.fileName();
  }

  const QTemporaryDir folder;
  TestForm form{
      {Design(kTextBox, "Text1", {10, 10, 100, 20}).Editable().Bordered(),
       Design(kTextBox, "Text2", {10, 40, 100, 20}), Design(kListBox, "List1", {10, 70, 100, 40}),
       Design(kListView, "ListView1", {10, 120, 100, 40}),
       Design(kPictureBox, "Picture1", {150, 10, 100, 60}),
       Design(kLabel, "Label1", {5, 5, 50, 20}).In("Picture1"),
       Design(kWindowsMediaPlayer, "wmp", {150, 80, 100, 60}),
       Design(kHScrollBar, "HScroll1", {150, 150, 100, 20})},
      {{.name = "mnu", .caption = "Menu"}}};
  QStringList dropped;
};

TEST_F(Drops, OfExistingRegularFilesAreTakenInTheirOrder) {
  const QString blank = MakeFile(" a blank, 100%23 & \u6771\u4eac.mp4 ");
  const QString plain = MakeFile("b.mp4");
  const QString link = folder.filePath("a link.mp4");
  ASSERT_TRUE(QFile::link(plain, link));
  EXPECT_TRUE(DropFiles(form, {plain, blank, link, plain}));
  EXPECT_TRUE(WaitFor([&] { return !dropped.isEmpty(); }));
  EXPECT_EQ(dropped, (QStringList{plain, blank, link, plain}));
}

TEST_F(Drops, OfFilesWhoseAddressesNameThisMachineAreTaken) {
  const QString path = MakeFile("a.mp4");
  for (const QString& host : {u"localhost"_s, QSysInfo::machineHostName()}) {
    EXPECT_NE(FileDrag(QList{QUrl("file://" + host + path)}).Drop(form), Qt::IgnoreAction);
  }
  EXPECT_TRUE(WaitFor([&] { return dropped.size() == 2; }));
  EXPECT_EQ(dropped, (QStringList{path, path}));
}

TEST_F(Drops, WithoutAnyRegularFileOfThisMachineAreRefused) {
  const QString fifo = folder.filePath("fifo.mp4");
  ASSERT_EQ(mkfifo(fifo.toUtf8().constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(folder.filePath("nothing"), folder.filePath("dangling.mp4")));
  const QString path = MakeFile("a.mp4");
  for (const QUrl& address :
       {QUrl::fromLocalFile(folder.path()), QUrl::fromLocalFile(folder.filePath("missing.mp4")),
        QUrl::fromLocalFile(folder.filePath("dangling.mp4")), QUrl::fromLocalFile(fifo),
        QUrl("https://kelvane.example" + path), QUrl("file://elsewhere.example" + path),
        QUrl("sftp://localhost" + path), QUrl("file:" + QDir().relativeFilePath(path))}) {
    EXPECT_FALSE(FileDrag(QList{address}).Enter(form)) << address.toString().toStdString();
  }
  EXPECT_FALSE(FileDrag(path).Enter(form)) << "a text is taken";
  EXPECT_FALSE(FileDrag(QList<QUrl>()).Enter(form));
}

TEST_F(Drops, OfFilesAndOtherThingsAreTakenWithoutTheOtherThings) {
  const QString path = MakeFile("a.mp4");
  FileDrag mixture(QList{QUrl::fromLocalFile(folder.path()), QUrl("https://kelvane.example/b.mp4"),
                         QUrl::fromLocalFile(path)});
  EXPECT_NE(mixture.Drop(form), Qt::IgnoreAction);
  EXPECT_TRUE(WaitFor([&] { return !dropped.isEmpty(); }));
  EXPECT_EQ(dropped, QStringList{path});
}

TEST_F(Drops, AreTakenOverEveryControlAndTheMenuBarUnlessTheyAreTexts) {
  const QString path = MakeFile("a.mp4");
  QList<QWidget*> parts = form.findChildren<QWidget*>();
  EXPECT_TRUE(parts.contains(form.findChild<QMenuBar*>()));
  for (QWidget* part : parts) {
    if (!part->isVisible()) continue;
    SCOPED_TRACE(part->metaObject()->className());
    dropped.clear();
    EXPECT_TRUE(DropFiles(*part, {path}));
    EXPECT_TRUE(WaitFor([&] { return dropped == QStringList{path}; }));
    EXPECT_FALSE(FileDrag(path).Enter(*part)) << "a text is taken";
  }
  EXPECT_EQ(form.Find<TextBox>("Text1").Text(), "");
}

TEST_F(Drops, AreAnsweredAsCopiesBeforeTheirHandlerRuns) {
  EXPECT_EQ(FileDrag(QStringList{MakeFile("a.mp4")}).Drop(form), Qt::CopyAction);
  EXPECT_TRUE(dropped.isEmpty());
  EXPECT_TRUE(WaitFor([&] { return !dropped.isEmpty(); }));
}

TEST_F(Drops, OfFilesThatCanOnlyBeMovedAreRefused) {
  FileDrag drag(QStringList{MakeFile("a.mp4")});
  drag.Offer(Qt::MoveAction);
  EXPECT_FALSE(drag.Enter(form));
  EXPECT_FALSE(drag.Move(form));
}

TEST_F(Drops, AreRefusedWithoutAHandlerAndWhenTheWindowTakesNone) {
  const QString path = MakeFile("a.mp4");
  bool takes = true;
  form.TakesDrops = [&] { return takes; };
  FileDrag drag(QStringList{path});
  EXPECT_TRUE(drag.Enter(form));
  takes = false;
  EXPECT_FALSE(drag.Move(form)) << "taken although the window takes no drops any more";
  takes = true;
  EXPECT_TRUE(drag.Move(form));
  form.FilesDropped = nullptr;
  EXPECT_FALSE(drag.Enter(form));
}

TEST_F(Drops, BehindADialogAreRefused) {
  const QString path = MakeFile("a.mp4");
  const DialogAnswers answers({[&](QDialog& dialog) {
    EXPECT_FALSE(DropFiles(form, {path}));
    dialog.accept();
  }});
  MsgBox("A question");
  EXPECT_TRUE(DropFiles(form, {path})) << "refused although the dialog is closed";
}

TEST_F(Drops, AreForgottenIfADialogOpensOrTheWindowIsUnloadedBeforeTheirHandlerRuns) {
  const QString path = MakeFile("a.mp4");
  EXPECT_TRUE(DropFiles(form, {path}));
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  MsgBox("A question");
  EXPECT_TRUE(DropFiles(form, {path}));
  form.Unload();
  ServePendingEvents();
  EXPECT_TRUE(dropped.isEmpty());
}

}  // namespace
}  // namespace kelvane::testing
