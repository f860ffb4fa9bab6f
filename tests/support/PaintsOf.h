#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QString>

namespace kelvane::testing {

// Counts, from this object's construction on, the paint events of the control of that name.
class PaintsOf : public QObject {
 public:
  explicit PaintsOf(const QString& name) : name_(name) { qApp->installEventFilter(this); }
  int Count() const { return count_; }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->objectName() == name_) ++count_;
    return false;
  }

 private:
  QString name_;
  int count_ = 0;
};

}  // namespace kelvane::testing
