#include "platform/CommonDialog.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStandardPaths>
#include <QUrl>
#include <memory>
#include <utility>

#include "platform/DialogLoop.h"
#include "platform/NameFilters.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// Returns the least size, in pixels, with which the dialog opens if the screen has room for it. It
// is a number of characters and lines, since the dialog's text grows with the screen's density.
QSize MinimumSizeFor(const QFontMetricsF& text) {
  constexpr int kCharacters = 130;
  constexpr int kLines = 30;
  return QSizeF(kCharacters * text.averageCharWidth(), kLines * text.height()).toSize();
}

// Returns the user's folders that exist, and all disks.
QList<QUrl> PlacesOfTheUser() {
  QList<QUrl> places;
  for (const auto location : {QStandardPaths::DesktopLocation, QStandardPaths::MoviesLocation,
                              QStandardPaths::DownloadLocation, QStandardPaths::HomeLocation}) {
    const QString folder = QDir::cleanPath(QStandardPaths::writableLocation(location));
    const QUrl place = QUrl::fromLocalFile(folder);
    if (QFileInfo(folder).isDir() && !places.contains(place)) places << place;
  }
  return places << QUrl(u"file:"_s);
}

// Shows the places in a list wide enough for all: Qt makes it only as wide as the first one needs.
void ShowPlaces(QFileDialog& dialog) {
  dialog.setSidebarUrls(PlacesOfTheUser());
  auto* places = dialog.findChild<QListView*>(u"sidebar"_s);
  places->setMinimumWidth(places->sizeHintForColumn(0) + 2 * places->frameWidth());
}

// Makes the typed name the result. Qt's dialog would select the file of that name in its list and
// return the selected file rather than the typed name. It would deselect the previously selected
// file only while the name's box has the focus. Three files could thus stay selected and be
// returned: one whose name is the beginning of the typed one, since on X11 the box may lose the
// focus when the completions close quickly; one that was selected when the user left its folder,
// typed a name and went back; and one that is renamed while it is selected.
void PreferTypedName(QFileDialog& dialog) {
  const auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
  auto* files = dialog.findChild<QListView*>(u"listView"_s)->selectionModel();
  const auto deselectStale = [name, files] {
    const bool picked = name->text() == files->selectedRows().value(0).data().toString();
    if (!picked) files->clearSelection();
  };
  const auto* folder = dialog.findChild<QFileSystemModel*>();
  const auto deselectStaleFile = [deselectStale, files, folder] {
    const QModelIndex picked = files->selectedRows().value(0);
    if (picked.isValid() && !folder->isDir(picked)) deselectStale();
  };
  // When the user picks a file, Qt has already put its name into the box: the file stays selected.
  QObject::connect(files, &QItemSelectionModel::selectionChanged, files, deselectStaleFile);
  QObject::connect(folder, &QFileSystemModel::fileRenamed, files, deselectStaleFile);
  QObject::disconnect(name, nullptr, &dialog, nullptr);
  QObject::connect(name, &QLineEdit::textChanged, files, [deselectStale, files] {
    deselectStale();
    // Makes the dialog enable or disable its Open or Save button.
    emit files->currentChanged({}, {});
  });
  QObject::connect(name, &QLineEdit::returnPressed, &dialog, [deselectStale, &dialog] {
    deselectStale();
    static_cast<QDialog&>(dialog).accept();  // QFileDialog::accept is protected
  });
}

// A line of text that is cut off with "..." if it is too long, with the whole text as its tool tip.
class RemarkLine : public QLabel {
 public:
  RemarkLine() {
    setObjectName(u"remark"_s);
    setTextFormat(Qt::PlainText);
    // A long text doesn't make the dialog wider.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }
  void SetRemark(const QString& remark) {
    setToolTip(remark.isEmpty() ? QString() : u"<p>%1</p>"_s.arg(remark.toHtmlEscaped()));
    remark_ = QString(remark).replace(u'\n', u' ');
    Elide();
  }

  // Returns at least the height of a line: in some fonts Qt's hint for an empty text is less.
  QSize sizeHint() const override {
    return QLabel::sizeHint().expandedTo({0, fontMetrics().height()});
  }

  // Moves the completions, which Qt shows right below the name, below this line.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show || event->type() == QEvent::Move) {
      auto* completions = static_cast<QWidget*>(watched);
      const QRect place(mapToGlobal(QPoint()), size());
      if (completions->geometry().intersects(place)) {
        completions->move(completions->x(), place.bottom() + 1);
      }
    }
    return QLabel::eventFilter(watched, event);
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    Elide();
  }

 private:
  void Elide() { setText(fontMetrics().elidedText(remark_, Qt::ElideRight, width())); }

  QString remark_;
};

// Adds a RemarkLine below the name. The line is updated at each change of the name, of the folder
// and of the files in the folder.
void AddRemark(QFileDialog& dialog, const std::function<QString(const QString& path)>& remarkOn) {
  auto* layout = qobject_cast<QGridLayout*>(dialog.layout());
  auto* types = dialog.findChild<QWidget*>(u"fileTypeCombo"_s);
  int typesRow = 0;
  int column = 0;
  int span = 0;
  layout->getItemPosition(layout->indexOf(types), &typesRow, &column, &span, &span);
  layout->addWidget(dialog.findChild<QWidget*>(u"fileTypeLabel"_s), typesRow + 1, 0);
  layout->addWidget(types, typesRow + 1, column);
  auto* line = new RemarkLine;
  layout->addWidget(line, typesRow, column);

  auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
  const auto* folder = dialog.findChild<QFileSystemModel*>();
  const auto* files = dialog.findChild<QListView*>(u"listView"_s)->selectionModel();
  const auto path = std::make_shared<QString>();
  const auto update = [&dialog, remarkOn, name, line, folder, files, path] {
    const QString typed = name->text();
    const QModelIndex picked = files->selectedRows().value(0);
    // While a folder is picked, selectedFiles returns the folder, but Enter in the name's box
    // returns the name.
    if (!picked.isValid() || !folder->isDir(picked)) {
      *path = typed.isEmpty() ? QString() : dialog.selectedFiles().value(0);
    }
    const bool isFile = !path->isEmpty() && !QFileInfo(*path).isDir();
    QString remark = isFile ? remarkOn(*path) : QString();
    // Qt drops double quotes from a name that wasn't picked in the list. The path may fill the
    // line, so the remark, which may warn of the loss of a file, comes first.
    if (isFile && typed.contains(u'"') && !path->endsWith(u'/' + typed)) {
      remark = u"%1 The quotes vanish: %2."_s.arg(remark, *path).trimmed();
    }
    line->SetRemark(remark);
    name->setAccessibleDescription(remark);
  };
  name->completer()->popup()->installEventFilter(line);
  QObject::connect(name, &QLineEdit::textChanged, line, update);
  QObject::connect(folder, &QFileSystemModel::rootPathChanged, line, update);
  // Qt clears the selection after a change of the folder.
  QObject::connect(files, &QItemSelectionModel::selectionChanged, line, update);
  // Files may come and go meanwhile.
  QObject::connect(folder, &QFileSystemModel::rowsInserted, line, update);
  QObject::connect(folder, &QFileSystemModel::rowsRemoved, line, update);
}

}  // namespace

bool CommonDialog::ShowOpen() {
  const QString chosen = std::exchange(chosen_, QString());
  if (chosen.isEmpty()) return Show(Purpose::kOpen);
  DialogTitle.clear();
  Take(chosen);
  return true;
}

bool CommonDialog::ShowSave() { return Show(Purpose::kSave); }

void CommonDialog::RunWithFile(const QString& file, const std::function<void()>& command) {
  const QScopedValueRollback<QString> chosen(chosen_, file);
  command();
}

void CommonDialog::Take(const QString& file) {
  FileName = file;
  lastFolder_ = QFileInfo(file).absolutePath();
}

bool CommonDialog::Show(Purpose purpose) {
  const bool opens = purpose == Purpose::kOpen;
  QFileDialog dialog(&window_);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !OverwritePrompt);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setAcceptMode(opens ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(opens ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  ShowPlaces(dialog);
  const QString title = std::exchange(DialogTitle, QString());
  if (!title.isEmpty()) dialog.setWindowTitle(title);
  const QStringList filters = NameFilters(Filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(FilterIndex - 1));
  const QString& begin = InitDir.isEmpty() ? lastFolder_ : InitDir;
  dialog.setDirectory(!begin.isEmpty() && QDir(begin).exists() ? begin : QDir::homePath());
  PreferTypedName(dialog);
  if (!opens && Remark) AddRemark(dialog, Remark);
  dialog.resize(dialog.sizeHint()
                    .expandedTo(MinimumSizeFor(QFontMetricsF(dialog.font())))
                    .boundedTo(dialog.screen()->availableSize()));
  if (RunDialog(dialog) != QDialog::Accepted) return false;
  Take(dialog.selectedFiles().value(0));
  return true;
}

}  // namespace kelvane
