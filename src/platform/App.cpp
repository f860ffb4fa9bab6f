#include "platform/App.h"

#include <fcntl.h>

#include <QByteArray>
#include <QDesktopServices>
#include <QFile>
#include <QSettings>
#include <QUrl>
#include <clocale>
#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Form.h"

// Resources of a static library are taken in by name.
static void TakeInIcons() { Q_INIT_RESOURCE(icons); }

namespace kelvane {
namespace {

std::string& PathStore() {
  static std::string path;
  return path;
}

// What the toolkit shall find in the environment when it starts. At the end of its life everything
// is as it was: what the program starts later is none of the toolkit's.
class StartEnvironment {
 public:
  StartEnvironment() = default;
  StartEnvironment(const StartEnvironment&) = delete;
  StartEnvironment& operator=(const StartEnvironment&) = delete;
  ~StartEnvironment() {
    for (const auto& [name, value] : former_) Set(name, value);
  }

  // A null value is none.
  void Override(const char* name, const QByteArray& value) {
    former_.emplace_back(name, qEnvironmentVariableIsSet(name) ? qgetenv(name) : QByteArray());
    Set(name, value);
  }

 private:
  static void Set(const char* name, const QByteArray& value) {
    if (value.isNull()) {
      qunsetenv(name);
    } else {
      qputenv(name, value);
    }
  }

  std::vector<std::pair<const char*, QByteArray>> former_;
};

// Under the numbers of standard descriptors that the program was started without, what it opens
// would be taken for them.
void KeepStandardDescriptors() {
  for (const int standard : {0, 1, 2}) {
    if (::fcntl(standard, F_GETFD) < 0) (void)::open("/dev/null", O_RDWR);
  }
}

std::unique_ptr<QApplication> MakeApplication(int& argumentCount, char** arguments) {
  StartEnvironment environment;
  // A pixel is a pixel of the screen. An X server gives it; a compositor may have a scale of its
  // own.
  environment.Override("QT_ENABLE_HIGHDPI_SCALING", "0");
  environment.Override("QT_SCALE_FACTOR", {});
  environment.Override("QT_SCREEN_SCALE_FACTORS", {});
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    environment.Override("QT_QPA_PLATFORM", "xcb;wayland");
  }
  return std::make_unique<QApplication>(argumentCount, arguments);
}

}  // namespace

App::App(const char* programName) : name_(programName), arguments_{name_.data(), nullptr} {
  KeepStandardDescriptors();
  // The toolkit's file dialogs keep their history in the user's settings: there is no such place.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));

  application_ = MakeApplication(argumentCount_, arguments_.data());
  ServeScreenReaders();
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

QIcon App::Icon() {
  TakeInIcons();
  QIcon icon;
  for (const char* size : {"16", "32", "48", "128"}) {
    icon.addFile(QStringLiteral(":/icons/kelvane-%1.png").arg(QLatin1String(size)));
  }
  return icon;
}

void App::OpenWebPage(const QString& address) { QDesktopServices::openUrl(QUrl(address)); }

void DoEvents() { QCoreApplication::processEvents(); }

}  // namespace kelvane
