// Brings an application object into the situation that the command line names, and prints what
// comes of it.
#include <unistd.h>

#include <QApplication>
#include <QFileDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/App.h"
#include "platform/CommonDialog.h"
#include "platform/TestForm.h"
#include "platform/Timer.h"

namespace kelvane {
namespace {

using namespace Qt::StringLiterals;

constexpr ControlDesign kLabel[]{
    {.name = "Label1", .controlClass = ControlClass::kLabel, .place = {}}};

void Print(const QString& text) { std::puts(qPrintable(text)); }

// Prints the C library's locale for numbers, and Qt's decimal point.
int Locale(App& /*app*/) {
  Print(QLatin1String(std::setlocale(LC_NUMERIC, nullptr)) + " and " + QLocale().decimalPoint());
  return 0;
}

int Scale(App& /*app*/) {
  Form form(testing::kPixelForm, kLabel);
  form.Load();
  form.Show();
  Print(u"%1, %2 pixels wide, letters of %3"_s.arg(form.devicePixelRatio())
            .arg(form.grab().toImage().width())
            .arg(QFontInfo(form.Find<Control>("Label1").font()).pixelSize()));
  return 0;
}

int Names(App& /*app*/) {
  Print(QString::fromStdString(App::Path()));
  Print(QGuiApplication::desktopFileName());
  Print(QCoreApplication::arguments().join(u' '));
  return 0;
}

// Prints the text of a button of Qt's, and the direction of the windows.
int Texts(App& /*app*/) {
  const QMessageBox box(QMessageBox::NoIcon, {}, {}, QMessageBox::Cancel);
  const QString cancel = box.button(QMessageBox::Cancel)->text().remove(u'&');
  Print(cancel + (box.isLeftToRight() ? u", left to right"_s : u", right to left"_s));
  return 0;
}

// Returns 0 if all three standard descriptors are the null device, or else 1. It prints nothing,
// since that may be impossible.
int StandardDescriptors(App& /*app*/) {
  for (const int standard : {0, 1, 2}) {
    std::error_code error;
    const auto target =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(standard), error);
    if (target != "/dev/null") return 1;
  }
  return 0;
}

// Shows a dialog for saving, in which a user types a path, and then one for opening, which the user
// cancels, and prints the path. In both the user first changes the folder and the view.
int FileDialogs(App& /*app*/) {
  Form form(testing::kPixelForm, {});
  form.Load();
  form.Show();
  CommonDialog dialog(form);
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, [] {
    auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (shown == nullptr) return;
    shown->setDirectory("/");
    shown->setViewMode(QFileDialog::Detail);
    shown->findChild<QLineEdit*>("fileNameEdit")->setText("/tmp/new.mp4");
    if (shown->acceptMode() == QFileDialog::AcceptSave) {
      static_cast<QDialog*>(shown)->accept();
    } else {
      shown->reject();
    }
  });
  user.start(1);
  dialog.ShowSave();
  dialog.ShowOpen();
  Print(dialog.FileName);
  return 0;
}

int Run(App& app) {
  Form form(testing::kPixelForm, {});
  Timer timer(form, "Timer1", 1);
  timer.Tick = [&form] {
    Print("tick");
    form.Unload();
    Print("unloaded");
  };
  form.Load();
  form.Show();
  timer.setEnabled(true);
  return app.Run();
}

// Its form is unloaded before the event loop begins.
int RunWithoutAForm(App& app) {
  Form form(testing::kPixelForm, {});
  form.Load();
  form.Unload();
  return app.Run();
}

QStringList SortedEnvironment() {
  QStringList variables = QProcess::systemEnvironment();
  variables.sort();
  return variables;
}

int Main(std::string_view situation) {
  if (situation == "standard-descriptors") {
    for (const int standard : {0, 1, 2}) ::close(standard);
  }
  const QStringList environment = SortedEnvironment();
  App app("program");
  if (situation == "environment") {
    Print(SortedEnvironment() == environment ? u"unchanged"_s : u"changed"_s);
    return 0;
  }
  for (const auto& [name, show] : {std::pair<std::string_view, int (*)(App&)>{"locale", Locale},
                                   {"scale", Scale},
                                   {"names", Names},
                                   {"texts", Texts},
                                   {"standard-descriptors", StandardDescriptors},
                                   {"file-dialogs", FileDialogs},
                                   {"run", Run},
                                   {"run-without-a-form", RunWithoutAForm}}) {
    if (name == situation) return show(app);
  }
  return 2;
}

}  // namespace
}  // namespace kelvane

int main(int argc, char** argv) { return argc < 2 ? 2 : kelvane::Main(argv[1]); }
