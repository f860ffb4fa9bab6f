// The dialogs that ask for a file, as the user meets them.
#include "platform/CommonDialog.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
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
#include <QTimer>
#include <QtTest/QTest>
#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "platform/DialogLoop.h"
#include "platform/TestForm.h"
#include "support/Events.h"

namespace kelvane::testing {
namespace {

using User = std::function<void(QFileDialog& dialog)>;

class AFileDialog : public ::testing::Test {
 protected:
  AFileDialog() {
    for (const char* name : {"clip.mp4", "film.avi", "noextension", "video one.MP4"}) {
      QFile file(folder.filePath(QLatin1String(name)));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    dialog.InitDir = folder.path();
    QObject::connect(&look, &QTimer::timeout, [this] { Look(); });
  }

  // Shows the dialog and lets the user do something with it, who is to close it.
  bool Open(const User& user) { return Ask(user, &CommonDialog::ShowOpen); }
  bool Save(const User& user) { return Ask(user, &CommonDialog::ShowSave); }

  static void Cancel(QFileDialog& shown) { shown.reject(); }

  static User Type(const QString& name) {
    return [name](QFileDialog& shown) {
      NameOf(shown).setText(name);
      // As the return key does.
      QMetaObject::invokeMethod(&shown, "accept", Qt::QueuedConnection);
    };
  }

  static QPushButton& DefaultButton(const QFileDialog& shown) {
    const auto buttons = shown.findChildren<QPushButton*>();
    const auto button = std::find_if(buttons.begin(), buttons.end(),
                                     [](QPushButton* each) { return each->isDefault(); });
    if (button == buttons.end()) throw std::logic_error("no default button");
    return **button;
  }

  static QLineEdit& NameOf(const QFileDialog& shown) {
    return *shown.findChild<QLineEdit*>(u"fileNameEdit"_s);
  }

  static void PickOnly(QFileDialog& shown, const QString& name) {
    NameOf(shown).clearFocus();  // as the pointer does
    // The list goes on being put in order for a while, and forgets what is picked.
    auto* list = shown.findChild<QListView*>(u"listView"_s);
    EXPECT_TRUE(PumpUntil([&] {
      for (const QModelIndex& file : FilesOf(*list)) {
        if (file.data().toString() != name) continue;
        list->scrollTo(file);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(file).center());
      }
      return DefaultButton(shown).isEnabled();
    }));
  }
  static void Pick(QFileDialog& shown, const QString& name) {
    PickOnly(shown, name);
    DefaultButton(shown).click();
  }

  // The descriptions to choose from.
  static QStringList Filters(const QFileDialog& shown) {
    const auto* types = shown.findChild<QComboBox*>(u"fileTypeCombo"_s);
    QStringList filters;
    for (int row = 0; row < types->count(); ++row) filters << types->itemText(row);
    return filters;
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
  static QStringList Files(const QFileDialog& shown) {
    QStringList names;
    for (const QModelIndex& file : FilesOf(*shown.findChild<QListView*>(u"listView"_s))) {
      names << file.data().toString();
    }
    names.sort();
    return names;
  }

  void ExpectFiles(const QFileDialog& shown, const QStringList& expected) {
    PumpUntil([&] { return Files(shown) == expected; });
    EXPECT_EQ(Files(shown).join(", "_L1).toStdString(), expected.join(", "_L1).toStdString());
  }

  TestForm form;
  CommonDialog dialog{form};
  QTemporaryDir folder;
  const QStringList everyFile{u"clip.mp4"_s, u"film.avi"_s, u"noextension"_s, u"video one.MP4"_s};
  Events questions;  // that came up on top of the dialog

 private:
  bool Ask(const User& user, bool (CommonDialog::*show)()) {
    waiting = user;
    looks = 0;
    look.start(1);
    const bool accepted = (dialog.*show)();
    look.stop();
    EXPECT_EQ(waiting, nullptr) << "no dialog came up";
    return accepted;
  }

  void Look() {
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* question = qobject_cast<QMessageBox*>(modal)) {
      questions.push_back(question->text().toStdString());
      question->reject();
      return;
    }
    auto* shown = qobject_cast<QFileDialog*>(modal);
    if (shown == nullptr) return;
    if (waiting != nullptr) {
      std::exchange(waiting, nullptr)(*shown);
      return;
    }
    // The user's part is done, and the dialog still there.
    constexpr int kLongEnough = 5000;  // looks
    if (questions.empty() && ++looks < kLongEnough) return;
    if (questions.empty()) ADD_FAILURE() << "the dialog was not closed";
    shown->reject();
  }

  QTimer look;
  int looks = 0;
  User waiting;
};

TEST_F(AFileDialog, HasQtsTitleUnlessItIsGivenOneForOnce) {
  Events titles;
  const User readTitle = [&](QFileDialog& shown) {
    titles.push_back(shown.windowTitle().toStdString());
    shown.reject();
  };
  Open(readTitle);
  Save(readTitle);
  dialog.DialogTitle = u"Save Cropped Video As"_s;
  Save(readTitle);
  Save(readTitle);
  Open(readTitle);
  ASSERT_EQ(titles.size(), 5U);
  EXPECT_NE(titles[0], "");
  EXPECT_EQ(titles[2], "Save Cropped Video As");
  EXPECT_EQ(titles[3], titles[1]);
  EXPECT_EQ(titles[4], titles[0]);
  EXPECT_EQ(dialog.DialogTitle, QString());
}

TEST_F(AFileDialog, IsQtsOwnAndWaitsForItsWindow) {
  Open([this](QFileDialog& shown) {
    EXPECT_TRUE(shown.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_EQ(shown.parentWidget(), &form);
    EXPECT_TRUE(shown.isModal());
    EXPECT_NE(shown.findChild<QLineEdit*>(u"fileNameEdit"_s), nullptr);
    shown.reject();
  });
}

TEST_F(AFileDialog, CountsAsAnOpenDialogUntilItsAnswerIsReturned) {
  Open([](QFileDialog& shown) {
    EXPECT_TRUE(DialogIsOpen());
    shown.reject();
    EXPECT_TRUE(DialogIsOpen());
  });
  EXPECT_FALSE(DialogIsOpen());
}

TEST_F(AFileDialog, GivesTheFileThatWasTyped) {
  EXPECT_TRUE(Open(Type(u"clip.mp4"_s)));
  EXPECT_EQ(dialog.FileName, folder.filePath(u"clip.mp4"_s));
  EXPECT_TRUE(Open(Type(folder.filePath(u"video one.MP4"_s))));
  EXPECT_EQ(dialog.FileName, folder.filePath(u"video one.MP4"_s));
}

TEST_F(AFileDialog, GivesTheFileThatWasPicked) {
  dialog.Filter = u"*.*"_s;
  EXPECT_TRUE(Open([this](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    Pick(shown, u"noextension"_s);
  }));
  EXPECT_EQ(dialog.FileName, folder.filePath(u"noextension"_s));
}

class ATypedName : public AFileDialog {
 protected:
  ATypedName() {
    EXPECT_TRUE(QDir().mkpath(far));
    QFile file(far + u"/clip.mp4"_s);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }

  // Opens the list of completions by typing the beginning of a path.
  static QAbstractItemView& Complete(QFileDialog& shown, const QString& beginning) {
    QTest::keyClicks(&NameOf(shown), beginning);
    QAbstractItemView& completions = *NameOf(shown).completer()->popup();
    EXPECT_TRUE(PumpUntil([&] { return completions.isVisible(); }));
    return completions;
  }

  const QTemporaryDir farFolder;
  const QString far = farFolder.path();
};

// X tells late that the list of completions has the focus, even after the list has closed again.
TEST_F(ATypedName, IsTakenAtTheFirstReturnWhereTheNameHasLostTheFocus) {
  const QString inner = far + u"/inner"_s;
  ASSERT_TRUE(QDir().mkpath(inner));
  const auto type = [](const QString& path) {
    return [path](QFileDialog& shown) {
      NameOf(shown).clearFocus();
      QTest::keyClicks(&NameOf(shown), path);
      QTest::keyClick(&NameOf(shown), Qt::Key_Return);
    };
  };
  EXPECT_TRUE(Open(type(far + u"/clip.mp4"_s)));
  EXPECT_EQ(dialog.FileName, far + u"/clip.mp4"_s);
  EXPECT_TRUE(Save(type(inner + u"/new.mp4"_s)));
  EXPECT_EQ(dialog.FileName, inner + u"/new.mp4"_s);
}

TEST_F(ATypedName, GoesBeforeWhatWasPickedInTheList) {
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    PickOnly(shown, u"film.avi"_s);
    EXPECT_EQ(NameOf(shown).text(), u"film.avi"_s);
    NameOf(shown).selectAll();
    QTest::keyClicks(&NameOf(shown), far + u"/clip.mp4"_s);
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, far + u"/clip.mp4"_s);
}

TEST_F(ATypedName, GoesBeforeAFolderThatIsSelectedInTheList) {
  const QString inner = u"inner"_s;
  ASSERT_TRUE(QDir(folder.path()).mkdir(inner));
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    auto* list = shown.findChild<QListView*>(u"listView"_s);
    QTest::keyClicks(&NameOf(shown), u"clip.mp4"_s);
    EXPECT_TRUE(PumpUntil([&] {
      for (const QModelIndex& file : FilesOf(*list)) {
        if (file.data().toString() == inner) list->setCurrentIndex(file);
      }
      return list->selectionModel()->hasSelection();
    }));
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, folder.filePath(u"clip.mp4"_s));
}

TEST_F(ATypedName, IsCompletedByTheEntryThatTheArrowKeysChoose) {
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    QAbstractItemView& completions = Complete(shown, far + u"/c"_s);
    QTest::keyClick(&completions, Qt::Key_Down);
    EXPECT_EQ(NameOf(shown).text(), far + u"/clip.mp4"_s);
    QTest::keyClick(&completions, Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, far + u"/clip.mp4"_s);
}

TEST_F(ATypedName, StaysWhereEscapeClosesTheListOfCompletions) {
  EXPECT_FALSE(Open([&](QFileDialog& shown) {
    QAbstractItemView& completions = Complete(shown, far + u"/c"_s);
    QTest::keyClick(&completions, Qt::Key_Escape);
    EXPECT_FALSE(completions.isVisible());
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(NameOf(shown).text(), far + u"/c"_s);
    shown.reject();
  }));
}

TEST_F(ATypedName, EnablesTheButtonWhereThereIsSuchAFile) {
  Open([&](QFileDialog& shown) {
    const QPushButton& open = DefaultButton(shown);
    EXPECT_FALSE(open.isEnabled());
    QTest::keyClicks(&NameOf(shown), u"clip.mp"_s);
    EXPECT_FALSE(open.isEnabled());
    QTest::keyClicks(&NameOf(shown), u"4"_s);
    EXPECT_TRUE(open.isEnabled());
    NameOf(shown).clear();
    EXPECT_FALSE(open.isEnabled());
    shown.reject();
  });
}

TEST_F(AFileDialog, OpensOnlyAFileThatIsThere) {
  EXPECT_FALSE(Open(Type(u"missing.mp4"_s)));
  ASSERT_EQ(questions.size(), 1U);
  EXPECT_NE(questions.front().find("missing.mp4"), std::string::npos);
  EXPECT_EQ(dialog.FileName, QString());
}

TEST_F(AFileDialog, LeavesTheFileNameAsItWasWhenItIsCancelled) {
  EXPECT_FALSE(Open(Cancel));
  EXPECT_EQ(dialog.FileName, QString());
  dialog.FileName = u"/tmp/former.mp4"_s;
  EXPECT_FALSE(Open(Cancel));
  EXPECT_FALSE(Save(Cancel));
  EXPECT_EQ(dialog.FileName, u"/tmp/former.mp4"_s);
}

TEST_F(AFileDialog, SavesOverAFileWithoutAQuestion) {
  EXPECT_TRUE(Save(Type(u"clip.mp4"_s)));
  EXPECT_EQ(dialog.FileName, folder.filePath(u"clip.mp4"_s));
  EXPECT_EQ(questions, Events{});
}

TEST_F(AFileDialog, AddsNoExtension) {
  dialog.Filter = u"MP4 Files (*.mp4)|*.mp4|All Files (*.*)|*.*"_s;
  for (const int index : {1, 2}) {
    dialog.FilterIndex = index;
    EXPECT_TRUE(Save(Type(u"new"_s)));
    EXPECT_EQ(dialog.FileName, folder.filePath(u"new"_s));
    EXPECT_TRUE(Save(Type(u"new.mkv"_s)));
    EXPECT_EQ(dialog.FileName, folder.filePath(u"new.mkv"_s));
  }
  EXPECT_FALSE(QFile::exists(folder.filePath(u"new"_s)));
}

TEST_F(AFileDialog, OffersThePairsOfItsFilterAndBeginsWithTheOneOfItsIndex) {
  dialog.Filter = u"MP4 Files (*.mp4)|*.mp4|AVI Files (*.avi)|*.avi|All Files (*.*)|*.*"_s;
  struct Case {
    int index;
    const char* chosen;
    QStringList files;
  };
  for (const Case& given : {Case{1, "MP4 Files (*.mp4)", {u"clip.mp4"_s, u"video one.MP4"_s}},
                            {2, "AVI Files (*.avi)", {u"film.avi"_s}},
                            {3, "All Files (*.*)", everyFile}}) {
    dialog.FilterIndex = given.index;
    Save([&](QFileDialog& shown) {
      EXPECT_EQ(Filters(shown), (QStringList{u"MP4 Files (*.mp4)"_s, u"AVI Files (*.avi)"_s,
                                             u"All Files (*.*)"_s}));
      EXPECT_EQ(shown.findChild<QComboBox*>(u"fileTypeCombo"_s)->currentText(),
                QLatin1String(given.chosen));
      ExpectFiles(shown, given.files);
      shown.reject();
    });
  }
}

TEST_F(AFileDialog, ShowsABarePatternAsItselfAndEveryFileUnderStarDotStar) {
  dialog.Filter = u"*.*"_s;
  Open([this](QFileDialog& shown) {
    EXPECT_EQ(Filters(shown), QStringList{u"*.*"_s});
    ExpectFiles(shown, everyFile);
    shown.reject();
  });
  dialog.Filter = u"*.avi"_s;
  Open([this](QFileDialog& shown) {
    EXPECT_EQ(Filters(shown), QStringList{u"*.avi"_s});
    ExpectFiles(shown, {u"film.avi"_s});
    shown.reject();
  });
}

TEST_F(AFileDialog, WithoutAFilterShowsEveryFile) {
  Open([this](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    for (const QString& filter : Filters(shown)) EXPECT_NE(filter.trimmed(), QString());
    shown.reject();
  });
}

TEST_F(AFileDialog, BeginsWithTheFirstPairWhereItsIndexIsNone) {
  dialog.Filter = u"One|*.mp4|Two|*.avi"_s;
  for (const int index : {0, 3, -1}) {
    dialog.FilterIndex = index;
    Open([](QFileDialog& shown) {
      EXPECT_EQ(shown.findChild<QComboBox*>(u"fileTypeCombo"_s)->currentText(), u"One"_s);
      shown.reject();
    });
  }
}

TEST_F(AFileDialog, BeginsInItsFolderOrAtHomeWhereThereIsNone) {
  const auto beginning = [this](const QString& folderName) {
    dialog.InitDir = folderName;
    QString began;
    Open([&](QFileDialog& shown) {
      began = shown.directory().absolutePath();
      shown.reject();
    });
    return began;
  };
  EXPECT_EQ(beginning(folder.path()), folder.path());
  EXPECT_EQ(beginning(folder.filePath(u"nowhere"_s)), QDir::homePath());
  EXPECT_EQ(beginning(folder.filePath(u"clip.mp4"_s)), QDir::homePath());
  EXPECT_EQ(beginning(folder.path()), folder.path());
  EXPECT_EQ(beginning(QString()), QDir::homePath());
}

TEST_F(AFileDialog, BeginsWhereTheLastFileWasChosenUnlessItIsToldWhere) {
  const QString inner = folder.filePath(u"inner"_s);
  ASSERT_TRUE(QDir().mkpath(inner));
  const auto beginning = [this] {
    QString began;
    Open([&](QFileDialog& shown) {
      began = shown.directory().absolutePath();
      shown.reject();
    });
    return began;
  };
  dialog.InitDir.clear();
  ASSERT_TRUE(Save(Type(inner + u"/new.mp4"_s)));
  EXPECT_EQ(beginning(), inner);
  EXPECT_EQ(beginning(), inner) << "a cancelled dialog changes nothing";
  dialog.InitDir = folder.path();
  EXPECT_EQ(beginning(), folder.path());
  dialog.InitDir.clear();
  ASSERT_TRUE(QDir(inner).removeRecursively());
  EXPECT_EQ(beginning(), QDir::homePath());
}

}  // namespace
}  // namespace kelvane::testing
