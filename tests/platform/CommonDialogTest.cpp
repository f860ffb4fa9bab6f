// The dialogs that ask for a file, as the user meets them.
#include "platform/CommonDialog.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest/QTest>
#include <algorithm>
#include <functional>
#include <stdexcept>

#include "platform/DialogLoop.h"
#include "platform/TestForm.h"
#include "support/DialogAnswers.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

using User = std::function<void(QFileDialog& dialog)>;

class FileDialog : public ::testing::Test {
 protected:
  FileDialog() {
    for (const QString& name : everyFile) Touch(folder.filePath(name));
    dialog.InitDir = folder.path();
  }

  static void Touch(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }

  // Shows the dialog to a user, who must close it. The test fails if anything is asked on top of
  // it.
  bool Open(const User& user) { return Show(user, &CommonDialog::ShowOpen); }
  bool Save(const User& user) { return Show(user, &CommonDialog::ShowSave); }

  QString TitleAfter(bool (CommonDialog::*show)()) {
    const DialogAnswers answers({CancelDialog()});
    (dialog.*show)();
    return QString::fromStdString(answers.seen().at(0));
  }
  QString FolderAtTheBeginning() {
    QString began;
    Open([&](QFileDialog& shown) {
      began = shown.directory().absolutePath();
      shown.reject();
    });
    return began;
  }

  static QLineEdit& NameOf(const QFileDialog& shown) {
    return *shown.findChild<QLineEdit*>("fileNameEdit");
  }
  static QListView& ListOf(const QFileDialog& shown) {
    return *shown.findChild<QListView*>("listView");
  }
  static QComboBox& TypesOf(const QFileDialog& shown) {
    return *shown.findChild<QComboBox*>("fileTypeCombo");
  }
  static QPushButton& DefaultButton(const QFileDialog& shown) {
    for (QPushButton* button : shown.findChildren<QPushButton*>()) {
      if (button->isDefault()) return *button;
    }
    throw std::logic_error("no default button");
  }

  static void TypeAndReturn(const QFileDialog& shown, const QString& path) {
    QTest::keyClicks(&NameOf(shown), path);
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  }
  static void Pick(const QFileDialog& shown, const QString& name) {
    NameOf(shown).clearFocus();  // as the pointer does
    // The list goes on being sorted for a while, and forgets what is picked.
    QListView& list = ListOf(shown);
    EXPECT_TRUE(WaitFor([&] {
      for (const QModelIndex& file : FilesOf(list)) {
        if (file.data().toString() != name) continue;
        list.scrollTo(file);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(file).center());
      }
      return DefaultButton(shown).isEnabled();
    }));
  }

  // The files that are listed and can be picked.
  static QModelIndexList FilesOf(const QListView& list) {
    QModelIndexList files;
    for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
      const QModelIndex file = list.model()->index(row, 0, list.rootIndex());
      if (file.flags().testFlag(Qt::ItemIsEnabled)) files << file;
    }
    return files;
  }
  static void ExpectFiles(const QFileDialog& shown, const QStringList& expected) {
    QStringList names;
    WaitFor([&] {
      names.clear();
      for (const QModelIndex& file : FilesOf(ListOf(shown))) names << file.data().toString();
      names.sort();
      return names == expected;
    });
    EXPECT_EQ(names.join(u", "_s), expected.join(u", "_s));
  }

  TestForm form;
  CommonDialog dialog{form};
  const QTemporaryDir folder;
  const QStringList everyFile{"clip.mp4", "film.avi", "noextension", "video one.MP4"};

 private:
  bool Show(const User& user, bool (CommonDialog::*show)()) {
    const DialogAnswers answers(
        {[&user](QDialog& shown) { user(dynamic_cast<QFileDialog&>(shown)); }});
    return (dialog.*show)();
  }
};

TEST_F(FileDialog, HasQtsTitleUnlessItIsGivenOneForOnce) {
  const QString open = TitleAfter(&CommonDialog::ShowOpen);
  const QString save = TitleAfter(&CommonDialog::ShowSave);
  EXPECT_NE(open, QString());
  dialog.DialogTitle = "Save Cropped Video As";
  EXPECT_EQ(TitleAfter(&CommonDialog::ShowSave), u"Save Cropped Video As"_s);
  EXPECT_EQ(dialog.DialogTitle, QString());
  EXPECT_EQ(TitleAfter(&CommonDialog::ShowSave), save);
  EXPECT_EQ(TitleAfter(&CommonDialog::ShowOpen), open);
}

TEST_F(FileDialog, IsQtsAndModalToItsWindow) {
  Open([this](QFileDialog& shown) {
    EXPECT_TRUE(shown.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_EQ(shown.parentWidget(), &form);
    EXPECT_TRUE(shown.isModal());
    EXPECT_TRUE(DialogIsOpen());
    shown.reject();
  });
  EXPECT_FALSE(DialogIsOpen());
}

TEST_F(FileDialog, GivesTheFileThatWasTyped) {
  EXPECT_TRUE(Open(TypeFile("clip.mp4")));
  EXPECT_EQ(dialog.FileName, folder.filePath("clip.mp4"));
  EXPECT_TRUE(Open(TypeFile(folder.filePath("video one.MP4"))));
  EXPECT_EQ(dialog.FileName, folder.filePath("video one.MP4"));
}

TEST_F(FileDialog, GivesTheFileThatWasPicked) {
  dialog.Filter = "*.*";
  EXPECT_TRUE(Open([this](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    Pick(shown, "noextension");
    DefaultButton(shown).click();
  }));
  EXPECT_EQ(dialog.FileName, folder.filePath("noextension"));
}

TEST_F(FileDialog, OpensOnlyAFileThatExists) {
  EXPECT_FALSE(Open([](QFileDialog& shown) {
    const DialogAnswers complaint({PressButton(QMessageBox::Ok)});
    TypeFile("missing.mp4")(shown);
    EXPECT_NE(complaint.seen().at(0).find("missing.mp4"), std::string::npos);
    EXPECT_TRUE(shown.isVisible());
    shown.reject();
  }));
  EXPECT_EQ(dialog.FileName, QString());
}

TEST_F(FileDialog, KeepsTheFileNameWhenItIsCancelled) {
  EXPECT_FALSE(Open(CancelDialog()));
  EXPECT_EQ(dialog.FileName, QString());
  dialog.FileName = "/tmp/former.mp4";
  EXPECT_FALSE(Open(CancelDialog()));
  EXPECT_FALSE(Save(CancelDialog()));
  EXPECT_EQ(dialog.FileName, u"/tmp/former.mp4"_s);
}

TEST_F(FileDialog, SavesOverAFileWithoutAQuestion) {
  EXPECT_TRUE(Save(TypeFile("clip.mp4")));
  EXPECT_EQ(dialog.FileName, folder.filePath("clip.mp4"));
}

TEST_F(FileDialog, AddsNoExtensionAndMakesNoFile) {
  dialog.Filter = "MP4 Files (*.mp4)|*.mp4|All Files (*.*)|*.*";
  for (const int index : {1, 2}) {
    dialog.FilterIndex = index;
    for (const char* name : {"new", "new.mkv"}) {
      EXPECT_TRUE(Save(TypeFile(name)));
      EXPECT_EQ(dialog.FileName, folder.filePath(name));
    }
  }
  EXPECT_FALSE(QFile::exists(folder.filePath("new")));
}

TEST_F(FileDialog, OffersThePairsOfItsFilterFromTheOneOfItsIndexOn) {
  const QString three = "MP4 Files (*.mp4)|*.mp4|AVI Files (*.avi)|*.avi|All Files (*.*)|*.*";
  const QString two = "One|*.mp4|Two|*.avi";
  const QStringList mp4Files{"clip.mp4", "video one.MP4"};
  const QStringList aviFiles{"film.avi"};
  struct Case {
    QString filter;
    int index;
    QString chosen;
    QStringList files;
    QString offered;
  };
  const QString all = "MP4 Files (*.mp4), AVI Files (*.avi), All Files (*.*)";
  for (const Case& given : {Case{three, 1, "MP4 Files (*.mp4)", mp4Files, all},
                            {three, 2, "AVI Files (*.avi)", aviFiles, all},
                            {three, 3, "All Files (*.*)", everyFile, all},
                            {two, 0, "One", mp4Files, "One, Two"},
                            {two, 3, "One", mp4Files, "One, Two"},
                            {two, -1, "One", mp4Files, "One, Two"},
                            {"*.*", 1, "*.*", everyFile, "*.*"},
                            {"*.avi", 1, "*.avi", aviFiles, "*.avi"}}) {
    SCOPED_TRACE(given.filter.toStdString() + " " + std::to_string(given.index));
    dialog.Filter = given.filter;
    dialog.FilterIndex = given.index;
    Save([&](QFileDialog& shown) {
      const QComboBox& types = TypesOf(shown);
      QStringList offered;
      for (int row = 0; row < types.count(); ++row) offered << types.itemText(row);
      EXPECT_EQ(offered.join(u", "_s), given.offered);
      EXPECT_EQ(types.currentText(), given.chosen);
      ExpectFiles(shown, given.files);
      shown.reject();
    });
  }
}

TEST_F(FileDialog, WithoutAFilterShowsEveryFileAndNoBlankFilter) {
  Open([this](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    EXPECT_LE(TypesOf(shown).count(), 1);
    EXPECT_EQ(TypesOf(shown).findText({}), -1);
    shown.reject();
  });
}

TEST_F(FileDialog, BeginsInItsFolderOrAtHomeWhereThereIsNone) {
  for (const QString& missing : {folder.filePath("nowhere"), folder.filePath("clip.mp4"), u""_s}) {
    EXPECT_EQ(FolderAtTheBeginning(), folder.path());
    dialog.InitDir = missing;
    EXPECT_EQ(FolderAtTheBeginning(), QDir::homePath()) << missing.toStdString();
    dialog.InitDir = folder.path();
  }
}

TEST_F(FileDialog, BeginsWhereTheLastFileWasChosenUnlessItIsGivenAFolder) {
  const QString inner = folder.filePath("inner");
  ASSERT_TRUE(QDir().mkpath(inner));
  dialog.InitDir.clear();
  ASSERT_TRUE(Save(TypeFile(inner + "/new.mp4")));
  EXPECT_EQ(FolderAtTheBeginning(), inner);
  EXPECT_EQ(FolderAtTheBeginning(), inner) << "a cancelled dialog changes nothing";
  dialog.InitDir = folder.path();
  EXPECT_EQ(FolderAtTheBeginning(), folder.path());
  dialog.InitDir.clear();
  ASSERT_TRUE(QDir(inner).removeRecursively());
  EXPECT_EQ(FolderAtTheBeginning(), QDir::homePath());
}

class TypedName : public FileDialog {
 protected:
  TypedName() { Touch(far); }

  // Opens the list of completions by typing the beginning of a path.
  static QAbstractItemView& Complete(const QFileDialog& shown, const QString& beginning) {
    QTest::keyClicks(&NameOf(shown), beginning);
    QAbstractItemView& completions = *NameOf(shown).completer()->popup();
    EXPECT_TRUE(WaitFor([&] { return completions.isVisible(); }));
    return completions;
  }

  const QTemporaryDir farFolder;
  const QString far = farFolder.filePath("clip.mp4");
  const QString beginningOfFar = farFolder.filePath("c");
};

// X tells late that the list of completions has the focus, even after the list has closed again.
TEST_F(TypedName, IsTakenAtTheFirstReturnWhereTheNameHasLostTheFocus) {
  const auto type = [](const QString& path) {
    return [path](QFileDialog& shown) {
      NameOf(shown).clearFocus();
      TypeAndReturn(shown, path);
    };
  };
  EXPECT_TRUE(Open(type(far)));
  EXPECT_EQ(dialog.FileName, far);
  const QString inner = farFolder.filePath("inner");
  ASSERT_TRUE(QDir().mkpath(inner));
  EXPECT_TRUE(Save(type(inner + "/new.mp4")));
  EXPECT_EQ(dialog.FileName, inner + "/new.mp4");
}

TEST_F(TypedName, OverridesAFileThatWasPickedInTheList) {
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    Pick(shown, "film.avi");
    EXPECT_EQ(NameOf(shown).text(), u"film.avi"_s);
    NameOf(shown).selectAll();
    TypeAndReturn(shown, far);
  }));
  EXPECT_EQ(dialog.FileName, far);
}

TEST_F(TypedName, OverridesAFolderThatIsSelectedInTheList) {
  ASSERT_TRUE(QDir(folder.path()).mkdir("inner"));
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    QListView& list = ListOf(shown);
    QTest::keyClicks(&NameOf(shown), "clip.mp4");
    EXPECT_TRUE(WaitFor([&] {
      for (const QModelIndex& file : FilesOf(list)) {
        if (file.data().toString() == u"inner"_s) list.setCurrentIndex(file);
      }
      return list.selectionModel()->hasSelection();
    }));
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, folder.filePath("clip.mp4"));
}

TEST_F(TypedName, IsCompletedByTheEntryThatTheArrowKeysChoose) {
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    QAbstractItemView& completions = Complete(shown, beginningOfFar);
    QTest::keyClick(&completions, Qt::Key_Down);
    EXPECT_EQ(NameOf(shown).text(), far);
    QTest::keyClick(&completions, Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, far);
}

TEST_F(TypedName, StaysWhereEscapeClosesTheListOfCompletions) {
  EXPECT_FALSE(Open([&](QFileDialog& shown) {
    QAbstractItemView& completions = Complete(shown, beginningOfFar);
    QTest::keyClick(&completions, Qt::Key_Escape);
    EXPECT_FALSE(completions.isVisible());
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(NameOf(shown).text(), beginningOfFar);
    shown.reject();
  }));
}

TEST_F(TypedName, EnablesTheButtonWhereThereIsSuchAFile) {
  Open([&](QFileDialog& shown) {
    const QPushButton& open = DefaultButton(shown);
    EXPECT_FALSE(open.isEnabled());
    QTest::keyClicks(&NameOf(shown), "clip.mp");
    EXPECT_FALSE(open.isEnabled());
    QTest::keyClicks(&NameOf(shown), "4");
    EXPECT_TRUE(open.isEnabled());
    NameOf(shown).clear();
    EXPECT_FALSE(open.isEnabled());
    shown.reject();
  });
}

}  // namespace
}  // namespace kelvane::testing
