// One situation of an application object, by the name on the command line; prints what came of it.
#include <unistd.h>

#include <QApplication>
#include <QFileDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QLocale>
#include <QTimer>
#include <array>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/App.h"
#include "platform/CommonDialog.h"
#include "platform/Form.h"
#include "platform/Timer.h"

namespace kelvane {
namespace {

using namespace Qt::StringLiterals;

constexpr FormDesign kForm{.name = "Form",
                           .caption = "A form",
                           .clientWidth = 4500,
                           .clientHeight = 3000,
                           .backColor = 0,
                           .labelColor = 0,
                           .scale = ScaleMode::kPixels};
constexpr std::array kLabel{
    ControlDesign{.name = "Label1", .controlClass = ControlClass::kLabel, .place = {}}};

void Print(const QString& text) { std::puts(qPrintable(text)); }

int Locale(App& /*app*/) {
  Print(QString::fromLatin1(std::setlocale(LC_NUMERIC, nullptr)));
  return 0;
}

int DecimalPoint(App& /*app*/) {
  Print(QLocale().decimalPoint());
  return 0;
}

int Scale(App& /*app*/) {
  Form form(kForm, kLabel);
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

// What the programs that are started later find.
int Environment(App& /*app*/) {
  for (const char* name :
       {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING",
        "QT_QPA_PLATFORM", "LC_ALL", "LC_CTYPE", "LC_NUMERIC"}) {
    Print(QLatin1String(name) + u' ' + qEnvironmentVariable(name, u"is not set"_s));
  }
  return 0;
}

// Says by its exit status whether all three standard descriptors are the null device, since it may
// have nowhere to print to.
int StandardDescriptors(App& /*app*/) {
  for (const int standard : {0, 1, 2}) {
    std::error_code error;
    const auto target =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(standard), error);
    if (target != "/dev/null") return 1;
  }
  return 0;
}

// Goes into a folder, types a name and accepts it; then opens a dialog once more and cancels.
int FileDialogs(App& /*app*/) {
  Form form(kForm, {});
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
  Form form(kForm, {});
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

// What comes of a start-up form that is unloaded before the event loop begins.
int RunWithoutAForm(App& app) {
  Form form(kForm, {});
  form.Load();
  form.Unload();
  return app.Run();
}

int Main(std::string_view situation) {
  if (situation == "standard-descriptors") {
    for (const int standard : {0, 1, 2}) ::close(standard);
  }
  App app("program");
  for (const auto& [name, show] : {std::pair<std::string_view, int (*)(App&)>{"locale", Locale},
                                   {"decimal-point", DecimalPoint},
                                   {"scale", Scale},
                                   {"names", Names},
                                   {"environment", Environment},
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
