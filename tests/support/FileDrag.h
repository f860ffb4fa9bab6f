#pragma once

#include <QList>
#include <QMimeData>
#include <QStringList>
#include <QUrl>

class QWidget;

namespace kelvane::testing {

// A drag of files, of addresses or of a text from another program over a shown window. Its events
// are sent to the window's QWindow, so that Qt finds the widget under the pointer.
class FileDrag {
 public:
  explicit FileDrag(const QStringList& paths);
  explicit FileDrag(const QList<QUrl>& addresses) { data_.setUrls(addresses); }
  explicit FileDrag(const QString& text) { data_.setText(text); }

  // From now on the other program offers only these actions; by default it offers all of them.
  void Offer(Qt::DropActions actions) { offered_ = actions; }

  // These return whether the window takes the drag in the middle of the widget.
  bool Enter(QWidget& over);
  bool Move(QWidget& over);
  // Enters, moves and drops. Returns the action with which the window answers the drop, or
  // Qt::IgnoreAction if it refuses the drag or the drop.
  Qt::DropAction Drop(QWidget& over);

 private:
  QMimeData data_;
  Qt::DropActions offered_ = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
};

// Drops the files in the middle of the widget. Returns whether the window takes them.
bool DropFiles(QWidget& over, const QStringList& paths);

}  // namespace kelvane::testing
