// Files that are dropped on the window.
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QSysInfo>
#include <QUrl>
#include <utility>

#include "platform/DialogLoop.h"
#include "platform/Form.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

bool IsThisMachine(const QString& host) {
  return host.isEmpty() || host == "localhost"_L1 ||
         host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) == 0;
}

QStringList RegularFiles(const QMimeData& dragged) {
  QStringList paths;
  for (const QUrl& url : dragged.urls()) {
    if (!url.isLocalFile() || !IsThisMachine(url.host())) continue;
    const QFileInfo file(url.path(QUrl::FullyDecoded));
    if (file.isAbsolute() && file.isFile()) paths << file.filePath();
  }
  return paths;
}

}  // namespace

bool Form::DropsAreTaken() const {
  return Loaded() && FilesDropped && (!TakesDrops || TakesDrops()) && !DialogIsOpen();
}

// Accepts the drag or drop, or refuses it, and returns whether it is accepted. It is accepted as a
// copy: a source that is told that its files were moved may delete them. A drag that offers no copy
// is refused, since Qt would answer it with a move.
bool Form::AnswerDrag(QDropEvent& event) const {
  const bool taken = event.possibleActions().testFlag(Qt::CopyAction) && !draggedFiles_.isEmpty() &&
                     DropsAreTaken();
  event.setDropAction(taken ? Qt::CopyAction : Qt::IgnoreAction);
  event.setAccepted(taken);
  return taken;
}

// Reads the paths once for the whole drag: reading them may need an answer of the other program.
void Form::dragEnterEvent(QDragEnterEvent* event) {
  draggedFiles_ = FilesDropped ? RegularFiles(*event->mimeData()) : QStringList();
  AnswerDrag(*event);
}

void Form::dragMoveEvent(QDragMoveEvent* event) { AnswerDrag(*event); }

void Form::dropEvent(QDropEvent* event) {
  if (!AnswerDrag(*event)) return;
  const auto raise = [this, paths = std::exchange(draggedFiles_, {})] {
    if (DropsAreTaken()) Raise(this, FilesDropped, paths);
  };
  QMetaObject::invokeMethod(this, raise, Qt::QueuedConnection);
}

}  // namespace kelvane
