#include "support/FileDrag.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QWidget>
#include <QWindow>

namespace kelvane::testing {
namespace {

QPoint PlaceOf(const QWidget& over) { return over.mapTo(over.window(), over.rect().center()); }

bool Send(const QWidget& over, QDropEvent& event) {
  event.setDropAction(Qt::MoveAction);  // as file managers propose
  event.ignore();
  QCoreApplication::sendEvent(over.window()->windowHandle(), &event);
  return event.isAccepted();
}

}  // namespace

FileDrag::FileDrag(const QStringList& paths) {
  QList<QUrl> addresses;
  for (const QString& path : paths) addresses << QUrl::fromLocalFile(path);
  data_.setUrls(addresses);
}

bool FileDrag::Enter(QWidget& over) {
  QDragEnterEvent event(PlaceOf(over), offered_, &data_, Qt::LeftButton, Qt::NoModifier);
  return Send(over, event);
}

bool FileDrag::Move(QWidget& over) {
  QDragMoveEvent event(PlaceOf(over), offered_, &data_, Qt::LeftButton, Qt::NoModifier);
  return Send(over, event);
}

Qt::DropAction FileDrag::Drop(QWidget& over) {
  if (!Enter(over) || !Move(over)) return Qt::IgnoreAction;
  QDropEvent event(PlaceOf(over), offered_, &data_, Qt::LeftButton, Qt::NoModifier);
  return Send(over, event) ? event.dropAction() : Qt::IgnoreAction;
}

bool DropFiles(QWidget& over, const QStringList& paths) {
  return FileDrag(paths).Drop(over) != Qt::IgnoreAction;
}

}  // namespace kelvane::testing
