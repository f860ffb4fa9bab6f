// The dialogs that ask for a file.
#include "platform/CommonDialog.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QtTest/QTest>
#include <algorithm>
#include <functional>

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
    Touch(far);
    dialog.InitDir = folder.path();
  }

  static void Touch(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  }

  // These show the dialog to `user`, who must close it, and return whether a file was chosen. The
  // test fails if another dialog opens.
  bool Open(const User& user) { return Show(user, &CommonDialog::ShowOpen); }
  bool Save(const User& user) { return Show(user, &CommonDialog::ShowSave); }

  QString TitleOf(bool (CommonDialog::*show)()) {
    const DialogAnswers answers({CancelDialog()});
    (dialog.*show)();
    return QString::fromStdString(answers.seen().at(0));
  }
  QString FirstFolder() {
    QString first;
    Open([&](QFileDialog& shown) {
      first = shown.directory().absolutePath();
      shown.reject();
    });
    return first;
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
    const auto buttons = shown.findChildren<QPushButton*>();
    return **std::find_if(buttons.begin(), buttons.end(),
                          [](const QPushButton* button) { return button->isDefault(); });
  }

  static void TypeAndReturn(const QFileDialog& shown, const QString& path) {
    QTest::keyClicks(&NameOf(shown), path);
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  }
  static void Pick(const QFileDialog& shown, const QString& name) {
    NameOf(shown).clearFocus();  // as a user's click does
    // The list is sorted repeatedly at first, which clears what was picked.
    QListView& list = ListOf(shown);
    EXPECT_TRUE(WaitFor([&] {
      for (const QModelIndex& file : EntriesOf(list)) {
        if (file.data().toString() != name) continue;
        list.scrollTo(file);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(file).center());
      }
      return DefaultButton(shown).isEnabled();
    }));
  }

  // Returns the listed files and folders that the user can pick.
  static QModelIndexList EntriesOf(const QListView& list) {
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
      for (const QModelIndex& file : EntriesOf(ListOf(shown))) names << file.data().toString();
      names.sort();
      return names == expected;
    });
    EXPECT_EQ(names, expected);
  }

  TestForm form;
  CommonDialog dialog{form};
  const QTemporaryDir folder;
  const QStringList everyFile{"clip.mp4", "film.avi", "noextension", "video one.MP4"};
  const QTemporaryDir farFolder;
  const QString far = farFolder.filePath("clip.mp4");

 private:
  bool Show(const User& user, bool (CommonDialog::*show)()) {
    const DialogAnswers answers(
        {[&user](QDialog& shown) { user(dynamic_cast<QFileDialog&>(shown)); }});
    return (dialog.*show)();
  }
};

TEST_F(FileDialog, HasQtsTitleUnlessATitleIsSetForThatOneDialog) {
  const QString open = TitleOf(&CommonDialog::ShowOpen);
  const QString save = TitleOf(&CommonDialog::ShowSave);
  EXPECT_NE(open, QString());
  dialog.DialogTitle = "Save Cropped Video As";
  EXPECT_EQ(TitleOf(&CommonDialog::ShowSave), u"Save Cropped Video As"_s);
  EXPECT_EQ(TitleOf(&CommonDialog::ShowSave), save);
  EXPECT_EQ(TitleOf(&CommonDialog::ShowOpen), open);
}

TEST_F(FileDialog, IsQtsOwnDialogAndModalToItsWindow) {
  Open([this](QFileDialog& shown) {
    EXPECT_TRUE(shown.testOption(QFileDialog::DontUseNativeDialog));
    EXPECT_EQ(shown.parentWidget(), &form);
    EXPECT_TRUE(shown.isModal());
    EXPECT_TRUE(DialogIsOpen());
    shown.reject();
  });
  EXPECT_FALSE(DialogIsOpen());
}

TEST_F(FileDialog, ReturnsTheFileThatWasPicked) {
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
  dialog.FileName = "/tmp/former.mp4";
  EXPECT_FALSE(Open(CancelDialog()));
  EXPECT_FALSE(Save(CancelDialog()));
  EXPECT_EQ(dialog.FileName, u"/tmp/former.mp4"_s);
}

TEST_F(FileDialog, SavesUnderTheTypedNameAsItIsWithoutAQuestionAndMakesNoFile) {
  dialog.Filter = "MP4 Files (*.mp4)|*.mp4|All Files (*.*)|*.*";
  for (const int index : {1, 2}) {
    dialog.FilterIndex = index;
    for (const char* name : {"new", "new.mkv", "clip.mp4"}) {
      EXPECT_TRUE(Save(TypeFile(name)));
      EXPECT_EQ(dialog.FileName, folder.filePath(name));
    }
  }
  EXPECT_FALSE(QFile::exists(folder.filePath("new")));
}

TEST_F(FileDialog, AsksBeforeItSavesUnderTheNameOfAFileThatExistsIfItIsToldTo) {
  dialog.OverwritePrompt = true;
  EXPECT_TRUE(Save(TypeFile("new.mp4")));
  EXPECT_TRUE(Open(TypeFile("film.avi")));
  for (const auto button : {QMessageBox::No, QMessageBox::Yes}) {
    const bool saved = Save([&](QFileDialog& shown) {
      const DialogAnswers question({PressButton(button)});
      TypeFile("clip.mp4")(shown);
      ASSERT_TRUE(question.AllGiven());
      EXPECT_NE(question.seen().at(0).find("clip.mp4"), std::string::npos);
      EXPECT_EQ(shown.isVisible(), button == QMessageBox::No);
      shown.close();
    });
    EXPECT_EQ(saved, button == QMessageBox::Yes);
    EXPECT_EQ(dialog.FileName, folder.filePath(saved ? "clip.mp4" : "film.avi"));
  }
}

TEST_F(FileDialog, OffersTheFileTypesOfItsFilterAndBeginsWithTheOneOfItsIndex) {
  const QString three = "MP4 Files (*.mp4)|*.mp4|AVI Files (*.avi)|*.avi|All Files (*.*)|*.*";
  const QStringList all{"MP4 Files (*.mp4)", "AVI Files (*.avi)", "All Files (*.*)"};
  const QStringList mp4Files{"clip.mp4", "video one.MP4"};
  struct Case {
    QString filter;
    int index;
    QStringList offered;
    QString chosen;
    QStringList files;
  };
  for (const Case& given : {Case{three, 1, all, "MP4 Files (*.mp4)", mp4Files},
                            {three, 2, all, "AVI Files (*.avi)", {"film.avi"}},
                            {three, 3, all, "All Files (*.*)", everyFile},
                            {"One|*.mp4|Two|*.avi", 0, {"One", "Two"}, "One", mp4Files},
                            {"One|*.mp4|Two|*.avi", 3, {"One", "Two"}, "One", mp4Files},
                            {"*.*", 1, {"*.*"}, "*.*", everyFile},
                            {"*.avi", 1, {"*.avi"}, "*.avi", {"film.avi"}}}) {
    SCOPED_TRACE(given.filter.toStdString() + " " + std::to_string(given.index));
    dialog.Filter = given.filter;
    dialog.FilterIndex = given.index;
    Save([&](QFileDialog& shown) {
      QStringList offered;
      for (int row = 0; row < TypesOf(shown).count(); ++row) {
        offered << TypesOf(shown).itemText(row);
      }
      EXPECT_EQ(offered, given.offered);
      EXPECT_EQ(TypesOf(shown).currentText(), given.chosen);
      ExpectFiles(shown, given.files);
      shown.reject();
    });
  }
}

TEST_F(FileDialog, ShowsEveryFileAndOffersNoEmptyTypeIfItHasNoFilter) {
  Open([this](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    EXPECT_EQ(TypesOf(shown).findText({}), -1);
    shown.reject();
  });
}

TEST_F(FileDialog, BeginsInItsFolderOrTheHomeFolderWhereThereIsNone) {
  EXPECT_EQ(FirstFolder(), folder.path());
  for (const QString& missing : {folder.filePath("nowhere"), folder.filePath("clip.mp4"), u""_s}) {
    dialog.InitDir = missing;
    EXPECT_EQ(FirstFolder(), QDir::homePath()) << missing.toStdString();
  }
}

TEST_F(FileDialog, BeginsWhereTheLastFileWasChosenUnlessItIsGivenAFolder) {
  const QString inner = folder.filePath("inner");
  ASSERT_TRUE(QDir().mkpath(inner));
  dialog.InitDir.clear();
  ASSERT_TRUE(Save(TypeFile(inner + "/new.mp4")));
  EXPECT_EQ(FirstFolder(), inner);
  EXPECT_EQ(FirstFolder(), inner) << "a cancelled dialog has changed the folder";
  dialog.InitDir = folder.path();
  EXPECT_EQ(FirstFolder(), folder.path());
  dialog.InitDir.clear();
  ASSERT_TRUE(QDir(inner).removeRecursively());
  EXPECT_EQ(FirstFolder(), QDir::homePath());
}

TEST_F(FileDialog, ShowsBelowTheNameTheRemarkOnThePathThatItWouldReturn) {
  ASSERT_TRUE(QDir(folder.path()).mkdir("inner"));
  const QString inner = folder.filePath("inner");
  dialog.Remark = [](const QString& path) { return "about " + path; };
  Save([&](QFileDialog& shown) {
    const auto& line = *shown.findChild<QLabel*>("remark");
    const auto expect = [&](const QString& remark) {
      EXPECT_EQ(NameOf(shown).accessibleDescription(), remark);
      EXPECT_EQ(line.text().isEmpty(), remark.isEmpty()) << line.text().toStdString();
    };
    const QRect place = line.geometry();
    EXPECT_GE(place.height(), line.fontMetrics().height());
    EXPECT_EQ(place.left(), NameOf(shown).x());
    EXPECT_GT(place.top(), NameOf(shown).geometry().bottom());
    EXPECT_LT(place.bottom(), TypesOf(shown).y());
    expect("");
    for (const auto& [typed, path] : {std::pair("clip.mp4", folder.filePath("clip.mp4")),
                                      {"new.mp4", folder.filePath("new.mp4")},
                                      {"inner/new.mp4", inner + "/new.mp4"},
                                      {"/missing/new.mp4", u"/missing/new.mp4"_s},
                                      {"~/new.mp4", QDir::homePath() + "/new.mp4"}}) {
      NameOf(shown).setText(typed);
      expect("about " + path);
    }
    for (const auto& [typed, path] : {std::pair("\"two words.mp4\"", "two words.mp4"),
                                      {"12\".mp4", ".mp4"},
                                      {"a \"b\" c.mp4", "b"}}) {
      NameOf(shown).setText(typed);
      const QString remaining = folder.filePath(path);
      expect("about " + remaining + " The quotes vanish: " + remaining + '.');
    }
    for (const char* noFile : {"", "inner", ".", "..", "~", "\""}) {
      NameOf(shown).setText(noFile);
      expect("");
    }
    NameOf(shown).setText("new.mp4");
    shown.setDirectory(inner);
    expect("about " + inner + "/new.mp4");
    EXPECT_EQ(line.geometry(), place) << "the line has moved";
    shown.reject();
  });
  Open([](QFileDialog& shown) {
    EXPECT_EQ(shown.findChild<QLabel*>("remark"), nullptr);
    shown.reject();
  });
}

TEST_F(FileDialog, RenewsTheRemarkWhenAFileComesOrGoes) {
  dialog.Remark = [](const QString& path) {
    return QFileInfo::exists(path) ? u"there"_s : u"not there"_s;
  };
  Save([&](QFileDialog& shown) {
    const QString path = folder.filePath("late.mp4");
    const auto says = [&](const QString& remark) {
      return WaitFor([&] { return NameOf(shown).accessibleDescription() == remark; });
    };
    NameOf(shown).setText("late.mp4");
    EXPECT_TRUE(says("not there"));
    Touch(path);
    EXPECT_TRUE(says("there"));
    EXPECT_TRUE(QFile::remove(path));
    EXPECT_TRUE(says("not there"));
    shown.reject();
  });
}

TEST_F(FileDialog, RenewsTheRemarkInAFolderThatIsOpenedInTheList) {
  const QString inner = folder.filePath("inner");
  ASSERT_TRUE(QDir().mkdir(inner));
  Touch(inner + "/any.mp4");
  dialog.Remark = [](const QString& path) { return "about " + path; };
  Save([&](QFileDialog& shown) {
    const auto says = [&](const QString& remark) {
      return WaitFor([&] { return NameOf(shown).accessibleDescription() == remark; });
    };
    // The list is sorted repeatedly at first, which clears what was picked.
    const auto openInner = [&] {
      if (ListOf(shown).rootIndex().data() != "inner") {
        Pick(shown, "inner");
        QTest::keyClick(&ListOf(shown), Qt::Key_Return);
      }
      return NameOf(shown).accessibleDescription() == "about " + inner + "/new.mp4";
    };
    NameOf(shown).setText("new.mp4");
    // When the folder is opened for the second time, its files have been listed before.
    for (int time = 0; time < 2; ++time) {
      EXPECT_TRUE(WaitFor(openInner)) << time;
      shown.setDirectory(folder.path());
      EXPECT_TRUE(says("about " + folder.filePath("new.mp4"))) << time;
    }
    Pick(shown, "clip.mp4");
    EXPECT_TRUE(says("about " + folder.filePath("clip.mp4")));
    shown.setDirectory(inner);
    EXPECT_TRUE(says("about " + inner + "/clip.mp4"));
    shown.reject();
  });
}

TEST_F(FileDialog, KeepsTheRemarkOnTheTypedNameWhileAFolderIsPicked) {
  ASSERT_TRUE(QDir().mkdir(folder.filePath("inner")));
  QString remark = "about ";
  dialog.Remark = [&](const QString& path) { return remark + path; };
  const bool saved = Save([&](QFileDialog& shown) {
    NameOf(shown).setText("new.mp4");
    const QItemSelectionModel& picked = *ListOf(shown).selectionModel();
    EXPECT_TRUE(WaitFor([&] {
      Pick(shown, "inner");
      return picked.selectedRows().value(0).data() == "inner";
    }));
    EXPECT_EQ(NameOf(shown).accessibleDescription(), "about " + folder.filePath("new.mp4"));
    remark = "now about ";
    Touch(folder.filePath("coming.mp4"));
    EXPECT_TRUE(WaitFor([&] {
      return NameOf(shown).accessibleDescription() == "now about " + folder.filePath("new.mp4");
    }));
    EXPECT_EQ(picked.selectedRows().value(0).data(), "inner");
    NameOf(shown).setFocus();
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  });
  EXPECT_TRUE(saved);
  EXPECT_EQ(dialog.FileName, folder.filePath("new.mp4"));
}

TEST_F(FileDialog, ReturnsTheTypedNameEvenIfTheBackButtonPicksAFileAgain) {
  const QString inner = folder.filePath("inner");
  ASSERT_TRUE(QDir().mkdir(inner));
  Touch(inner + "/any.mp4");
  dialog.Remark = [](const QString& path) { return "about " + path; };
  const bool saved = Save([&](QFileDialog& shown) {
    shown.setDirectory(inner);
    EXPECT_TRUE(WaitFor([&] {
      Pick(shown, "any.mp4");
      return NameOf(shown).text() == "any.mp4";
    }));
    QTest::mouseClick(shown.findChild<QWidget*>("toParentButton"), Qt::LeftButton);
    NameOf(shown).setFocus();
    NameOf(shown).setText("new.mp4");
    QTest::mouseClick(shown.findChild<QWidget*>("backButton"), Qt::LeftButton);
    EXPECT_EQ(NameOf(shown).accessibleDescription(), "about " + inner + "/new.mp4");
    QTest::mouseClick(&DefaultButton(shown), Qt::LeftButton);
  });
  EXPECT_TRUE(saved);
  EXPECT_EQ(dialog.FileName, inner + "/new.mp4");
}

TEST_F(FileDialog, ReturnsTheNameInItsBoxEvenIfThePickedFileIsRenamed) {
  dialog.Remark = [](const QString& path) {
    return path + (QFileInfo::exists(path) ? " exists" : " is new");
  };
  const bool saved = Save([&](QFileDialog& shown) {
    EXPECT_TRUE(WaitFor([&] {
      Pick(shown, "clip.mp4");
      return NameOf(shown).text() == "clip.mp4";
    }));
    EXPECT_EQ(NameOf(shown).accessibleDescription(), folder.filePath("clip.mp4") + " exists");
    QListView& list = ListOf(shown);
    list.model()->setData(list.selectionModel()->selectedRows().value(0), "other.mp4");
    EXPECT_EQ(NameOf(shown).accessibleDescription(), folder.filePath("clip.mp4") + " is new");
    QTest::mouseClick(&DefaultButton(shown), Qt::LeftButton);
  });
  EXPECT_TRUE(saved);
  EXPECT_EQ(dialog.FileName, folder.filePath("clip.mp4"));
}

TEST_F(FileDialog, CutsALongRemarkWithAnEllipsisAndShowsAllOfItInTheToolTip) {
  const QString remark = QString(u"long remark "_s).repeated(30) + "<&>";
  dialog.Remark = [&](const QString&) { return remark; };
  Save([&](QFileDialog& shown) {
    const auto& line = *shown.findChild<QLabel*>("remark");
    NameOf(shown).setText("new.mp4");
    EXPECT_TRUE(line.text().endsWith(u'\u2026')) << line.text().toStdString();
    const auto fits = [&line] {
      return line.fontMetrics().horizontalAdvance(line.text()) <= line.width();
    };
    EXPECT_TRUE(fits());
    QTextDocument tip;
    tip.setHtml(line.toolTip());
    EXPECT_EQ(tip.toPlainText(), remark);
    const qsizetype former = line.text().size();
    shown.resize(shown.width() * 3 / 4, shown.height());
    EXPECT_TRUE(WaitFor([&] { return line.text().size() < former && fits(); }));
    NameOf(shown).clear();
    EXPECT_EQ(line.toolTip(), QString());
    shown.reject();
  });
}

TEST_F(FileDialog, BeginsWhereTheLastFileWasChosenInAnyOfTheProgramsDialogs) {
  TestForm otherForm;
  CommonDialog other(otherForm);
  other.InitDir = farFolder.path();
  {
    const DialogAnswers answers({TypeFile(far)});
    ASSERT_TRUE(other.ShowOpen());
  }
  dialog.InitDir.clear();
  EXPECT_EQ(FirstFolder(), farFolder.path());
}

TEST_F(FileDialog, ListsTheUsersExistingFoldersAtItsSide) {
  const QByteArray formerHome = qgetenv("HOME");
  const QByteArray formerSettings = qgetenv("XDG_CONFIG_HOME");
  const QTemporaryDir home;
  const auto inHome = [&home](const char* name) {
    return QUrl::fromLocalFile(home.filePath(QLatin1String(name)));
  };
  for (const char* name : {"Desktop", "Films", "config"}) {
    ASSERT_TRUE(QDir(home.path()).mkdir(QLatin1String(name)));
  }
  // The downloads are in a folder that doesn't exist.
  QFile settings(home.filePath("config/user-dirs.dirs"));
  ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
  const auto set = [&settings](const QByteArray& videos) {
    settings.resize(0);
    settings.seek(0);
    settings.write("XDG_VIDEOS_DIR=\"$HOME" + videos + "\"\nXDG_DOWNLOAD_DIR=\"$HOME/Loads\"\n");
    settings.flush();
  };
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
  const QUrl disks("file:");
  const QUrl own = QUrl::fromLocalFile(home.path());
  for (const auto& [videos, expected] :
       {std::pair("/Films", QList<QUrl>{inHome("Desktop"), inHome("Films"), own, disks}),
        {"/", {inHome("Desktop"), own, disks}}}) {
    set(videos);
    Save([&expected = expected](QFileDialog& shown) {
      EXPECT_EQ(shown.sidebarUrls(), expected);
      const auto& places = *shown.findChild<QListView*>("sidebar");
      EXPECT_GE(places.viewport()->width(), places.sizeHintForColumn(0)) << "a name is cut";
      shown.reject();
    });
  }
  qputenv("HOME", formerHome);
  formerSettings.isNull() ? qunsetenv("XDG_CONFIG_HOME")
                          : qputenv("XDG_CONFIG_HOME", formerSettings);
}

TEST_F(FileDialog, ShowsItsCompletionsBelowItsRemark) {
  dialog.Remark = [](const QString&) { return u"remark"_s; };
  Save([this](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    const auto& line = *shown.findChild<QLabel*>("remark");
    const QRect place(line.mapToGlobal(QPoint()), line.size());
    const QAbstractItemView& completions = *NameOf(shown).completer()->popup();
    const auto isBelow = [&] {
      return completions.isVisible() && completions.geometry().top() == place.bottom() + 1;
    };
    QTest::keyClicks(&NameOf(shown), "cli");
    EXPECT_TRUE(WaitFor(isBelow));
    NameOf(shown).completer()->complete();
    EXPECT_TRUE(isBelow()) << "not below the remark after Qt has placed them again";
    shown.reject();
  });
}

// On X, the name's box may lose the focus when the list of completions closes.
TEST_F(FileDialog, TakesATypedNameAtTheFirstReturnEvenIfItsBoxHasNoFocus) {
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

TEST_F(FileDialog, PrefersATypedNameToAFileThatWasPicked) {
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    ExpectFiles(shown, everyFile);
    Pick(shown, "film.avi");
    EXPECT_EQ(NameOf(shown).text(), u"film.avi"_s);
    NameOf(shown).selectAll();
    TypeAndReturn(shown, far);
  }));
  EXPECT_EQ(dialog.FileName, far);
}

TEST_F(FileDialog, PrefersATypedNameToAFolderThatIsSelected) {
  ASSERT_TRUE(QDir(folder.path()).mkdir("inner"));
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    QListView& list = ListOf(shown);
    QTest::keyClicks(&NameOf(shown), "clip.mp4");
    EXPECT_TRUE(WaitFor([&] {
      for (const QModelIndex& file : EntriesOf(list)) {
        if (file.data().toString() == u"inner"_s) list.setCurrentIndex(file);
      }
      return list.selectionModel()->hasSelection();
    }));
    QTest::keyClick(&NameOf(shown), Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, folder.filePath("clip.mp4"));
}

TEST_F(FileDialog, CompletesATypedNameByArrowKeysAndKeepsItAtEscape) {
  const QString beginning = farFolder.filePath("c");
  const auto complete = [&](const QFileDialog& shown) -> QAbstractItemView& {
    QTest::keyClicks(&NameOf(shown), beginning);
    QAbstractItemView& completions = *NameOf(shown).completer()->popup();
    EXPECT_TRUE(WaitFor([&] { return completions.isVisible(); }));
    return completions;
  };
  EXPECT_TRUE(Open([&](QFileDialog& shown) {
    QAbstractItemView& completions = complete(shown);
    QTest::keyClick(&completions, Qt::Key_Down);
    EXPECT_EQ(NameOf(shown).text(), far);
    QTest::keyClick(&completions, Qt::Key_Return);
  }));
  EXPECT_EQ(dialog.FileName, far);
  EXPECT_FALSE(Open([&](QFileDialog& shown) {
    QAbstractItemView& completions = complete(shown);
    QTest::keyClick(&completions, Qt::Key_Escape);
    EXPECT_FALSE(completions.isVisible());
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(NameOf(shown).text(), beginning);
    shown.reject();
  }));
}

TEST_F(FileDialog, EnablesItsButtonOnlyWhileTheTypedNameIsThatOfAFile) {
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

TEST_F(FileDialog, IsNotOpenedByACommandThatRunsWithAGivenFileButIsByTheNextCommand) {
  const QString chosen = folder.filePath(everyFile.at(0));
  dialog.DialogTitle = "A title";
  dialog.RunWithFile(chosen, [&] { EXPECT_TRUE(dialog.ShowOpen()); });
  EXPECT_EQ(dialog.FileName, chosen);
  EXPECT_EQ(dialog.DialogTitle, "");
  dialog.RunWithFile(far, [] {});
  EXPECT_FALSE(Open([](QFileDialog& shown) { shown.reject(); })) << "the file outlived its command";
  EXPECT_EQ(dialog.FileName, chosen);
}

}  // namespace
}  // namespace kelvane::testing
