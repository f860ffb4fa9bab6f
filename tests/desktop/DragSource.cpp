// A program from which things are dragged. Its arguments are "text" and a text, or "files" and
// addresses. A press in its window, which has the title "Drag source", begins a drag. The program
// prints "begun", then "over" with each new answer of the window under the pointer, and at the end
// "dropped" with the last answer. An answer is "copy", "move", "link" or "refused"; the shape of
// the pointer shows it as well.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <cstdio>

namespace {

const char* NameOf(Qt::DropAction action) {
  switch (action) {
    case Qt::CopyAction:
      return "copy";
    case Qt::MoveAction:
      return "move";
    case Qt::LinkAction:
      return "link";
    default:
      return "refused";
  }
}

void Print(const char* what, Qt::DropAction action) {
  std::printf("%s %s\n", what, NameOf(action));
  std::fflush(stdout);
}

class DragSource : public QWidget {
 protected:
  void mousePressEvent(QMouseEvent* /*event*/) override {
    const QStringList arguments = QCoreApplication::arguments();
    auto* dragged = new QMimeData;
    if (arguments.value(1) == QLatin1String("text")) {
      dragged->setText(arguments.value(2));
    } else {
      QList<QUrl> addresses;
      for (const QString& address : arguments.mid(2)) addresses << QUrl(address);
      dragged->setUrls(addresses);
    }
    auto* drag = new QDrag(this);
    drag->setMimeData(dragged);
    QObject::connect(drag, &QDrag::actionChanged,
                     [](Qt::DropAction action) { Print("over", action); });
    std::puts("begun");
    std::fflush(stdout);
    Print("dropped", drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction));
  }
};

}  // namespace

int main(int argumentCount, char** arguments) {
  const QApplication application(argumentCount, arguments);
  DragSource source;
  source.setWindowTitle(QStringLiteral("Drag source"));
  source.setGeometry(1700, 1000, 200, 150);
  source.show();
  return QApplication::exec();
}
