// One situation of an application object, by the name on the command line; prints what came of it.
#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QFileDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QLocale>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/App.h"
#include "platform/CommonDialog.h"
#include "platform/Form.h"
#include "platform/Timer.h"

namespace kelvane {
namespace {

constexpr FormDesign kForm{.name = "Form",
                           .caption = "A form",
                           .clientWidth = 4500,
                           .clientHeight = 3000,
                           .backColor = 0,
                           .labelColor = 0,
                           .scale = ScaleMode::kPixels};

void Print(const QString& text) { std::puts(qPrintable(text)); }

int Locale() {
  const App app("program");
  Print(QString::fromLatin1(std::setlocale(LC_NUMERIC, nullptr)));
  return 0;
}

int DecimalPoint() {
  const App app("program");
  Print(QLocale().decimalPoint());
  return 0;
}

int Scale() {
  const App app("program");
  constexpr ControlDesign kLabel{
      .name = "Label1", .controlClass = ControlClass::kLabel, .place = {}};
  Form form(kForm, std::span(&kLabel, 1));
  form.Load();
  form.Show();
  Print(QStringLiteral("%1, %2 pixels wide, letters of %3")
            .arg(form.devicePixelRatio())
            .arg(form.grab().toImage().width())
            .arg(QFontInfo(form.Find<Control>("Label1").font()).pixelSize()));
  return 0;
}

int Names() {
  const App app("program");
  Print(QString::fromStdString(App::Path()));
  Print(QGuiApplication::desktopFileName());
  Print(QCoreApplication::arguments().join(QLatin1Char(' ')));
  return 0;
}

// What the programs that are started later find.
int Environment() {
  const App app("program");
  for (const char* name :
       {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING",
        "QT_QPA_PLATFORM", "LC_ALL", "LC_CTYPE", "LC_NUMERIC"}) {
    Print(QStringLiteral("%1 %2").arg(QLatin1String(name), qEnvironmentVariableIsSet(name)
                                                               ? qEnvironmentVariable(name)
                                                               : QStringLiteral("is not set")));
  }
  return 0;
}

// Says by its exit status whether it has all three standard descriptors, since it may have nowhere
// to print to.
int StandardDescriptors() {
  for (const int standard : {0, 1, 2}) ::close(standard);
  const App app("program");
  for (const int standard : {0, 1, 2}) {
    if (::fcntl(standard, F_GETFD) < 0) return 1;
    std::error_code error;
    const auto target =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(standard), error);
    if (target != "/dev/null") return 1;
  }
  return 0;
}

// Goes into a folder, types a name and accepts it; then opens a dialog once more and cancels.
int FileDialogs() {
  const App app("program");
  Form form(kForm, {});
  form.Load();
  form.Show();
  CommonDialog dialog(form);
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, [] {
    auto* shown = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (shown == nullptr) return;
    shown->setDirectory(QStringLiteral("/"));
    shown->setViewMode(QFileDialog::Detail);
    shown->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
        ->setText(QStringLiteral("/tmp/new.mp4"));
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

int Run() {
  App app("program");
  Form form(kForm, {});
  Timer timer(form, "Timer1", 1);
  timer.Tick = [&form] {
    Print(QStringLiteral("tick"));
    form.Unload();
    Print(QStringLiteral("unloaded"));
  };
  form.Load();
  form.Show();
  timer.setEnabled(true);
  return app.Run();
}

// What comes of a start-up form that is unloaded before the message loop begins.
int RunWithoutAForm() {
  App app("program");
  Form form(kForm, {});
  form.Load();
  form.Unload();
  return app.Run();
}

int Main(std::string_view situation) {
  if (situation == "locale") return Locale();
  if (situation == "decimal-point") return DecimalPoint();
  if (situation == "scale") return Scale();
  if (situation == "names") return Names();
  if (situation == "environment") return Environment();
  if (situation == "standard-descriptors") return StandardDescriptors();
  if (situation == "file-dialogs") return FileDialogs();
  if (situation == "run") return Run();
  if (situation == "run-without-a-form") return RunWithoutAForm();
  return 2;
}

}  // namespace
}  // namespace kelvane

int main(int argc, char** argv) { return argc < 2 ? 2 : kelvane::Main(argv[1]); }
