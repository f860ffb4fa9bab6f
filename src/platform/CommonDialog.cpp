#include "platform/CommonDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QScreen>
#include <utility>

#include "platform/NameFilters.h"

namespace kelvane {

namespace {

// The dialog's text grows with the density of the screen, and what it has room for shall not
// shrink.
QSize RoomFor(const QFontMetrics& text) {
  constexpr int kLetters = 104;
  constexpr int kLines = 28;
  return {kLetters * text.averageCharWidth(), kLines * text.height()};
}

}  // namespace

bool CommonDialog::ShowOpen() { return Show(Purpose::kOpen); }

bool CommonDialog::ShowSave() { return Show(Purpose::kSave); }

bool CommonDialog::Show(Purpose purpose) {
  const bool opens = purpose == Purpose::kOpen;
  QFileDialog dialog(&window_);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setAcceptMode(opens ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(opens ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  const QString title = std::exchange(DialogTitle, QString());
  if (!title.isEmpty()) dialog.setWindowTitle(title);
  const QStringList filters = NameFilters(Filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(FilterIndex - 1));
  const QString& begin = InitDir.isEmpty() ? lastFolder_ : InitDir;
  dialog.setDirectory(!begin.isEmpty() && QDir(begin).exists() ? begin : QDir::homePath());
  dialog.resize(dialog.sizeHint()
                    .expandedTo(RoomFor(dialog.fontMetrics()))
                    .boundedTo(dialog.screen()->availableSize()));
  if (dialog.exec() != QDialog::Accepted) return false;
  FileName = dialog.selectedFiles().value(0);
  lastFolder_ = QFileInfo(FileName).absolutePath();
  return true;
}

}  // namespace kelvane
