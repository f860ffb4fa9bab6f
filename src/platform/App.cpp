#include "platform/App.h"

#include <QDesktopServices>
#include <QFile>
#include <QSettings>
#include <QUrl>
#include <clocale>
#include <cstdlib>

#include "platform/Form.h"

namespace kelvane {
namespace {

std::string& PathStore() {
  static std::string path;
  return path;
}

}  // namespace

App::App(const char* programName) : name_(programName), arguments_{name_.data(), nullptr} {
  // A pixel is a pixel of the screen.
  qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
  for (const char* scale : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) qunsetenv(scale);
  // The toolkit's file dialogs keep their history in the user's settings: there is no such place.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));

  application_ = std::make_unique<QApplication>(argumentCount_, arguments_.data());
  QApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setDesktopFileName(QString::fromStdString(name_));
  // The toolkit has set the user's locale for the whole process; media libraries count on this one.
  (void)std::setlocale(LC_NUMERIC, "C");
  setPath(QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
}

App::~App() = default;

int App::Run() { return Form::AnyLoaded() ? QApplication::exec() : EXIT_SUCCESS; }

const std::string& App::Path() { return PathStore(); }

void App::setPath(const std::string& path) { PathStore() = path; }

QString App::Title() { return QStringLiteral("Kelvane"); }

void App::OpenWebPage(const QString& address) { QDesktopServices::openUrl(QUrl(address)); }

void DoEvents() { QCoreApplication::processEvents(); }

}  // namespace kelvane
