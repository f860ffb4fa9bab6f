#include "platform/CommonDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>
#include <utility>

namespace kelvane {
namespace {

// The toolkit takes the pattern from the last parentheses, and is told not to show these.
QStringList NameFilters(const QString& filter) {
  if (filter.isEmpty()) return {};
  const QStringList parts = filter.split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype description = 0; description < parts.size(); description += 2) {
    QString pattern = parts[description + 1 < parts.size() ? description + 1 : description];
    if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
    filters << QStringLiteral("%1 (%2)").arg(parts[description], pattern);
  }
  return filters;
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
  if (dialog.exec() != QDialog::Accepted) return false;
  FileName = dialog.selectedFiles().value(0);
  lastFolder_ = QFileInfo(FileName).absolutePath();
  return true;
}

}  // namespace kelvane
