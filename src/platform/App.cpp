#include "platform/App.h"

#include <fcntl.h>
#include <langinfo.h>

#include <QByteArray>
#include <QDesktopServices>
#include <QEvent>
#include <QFile>
#include <QHash>
#include <QList>
#include <QScreen>
#include <QSettings>
#include <QUrl>
#include <QWidget>
#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Form.h"
#include "platform/WaylandOutputs.h"
#include "platform/WholePixels.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

std::string& PathStore() {
  static std::string path;
  return path;
}

QString& TitleStore() {
  static QString title;
  return title;
}

// What Qt shall find in the environment when it starts. At the end of its life everything
// is as it was: what the program starts later is none of Qt's.
class StartEnvironment {
 public:
  StartEnvironment() = default;
  StartEnvironment(const StartEnvironment&) = delete;
  StartEnvironment& operator=(const StartEnvironment&) = delete;
  ~StartEnvironment() {
    for (auto each = former_.rbegin(); each != former_.rend(); ++each) {
      Set(each->first, each->second);
    }
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

// Qt takes the bytes of file names for UTF-8 in every locale, and complains on the console of one
// that says otherwise. What else the user's locale says stays.
void StartInUtf8(StartEnvironment& environment) {
  if (std::setlocale(LC_CTYPE, "") != nullptr && qstrcmp(::nl_langinfo(CODESET), "UTF-8") == 0) {
    return;
  }
  const QByteArray all = qgetenv("LC_ALL");
  if (!all.isEmpty()) {
    for (const char* category :
         {"LC_ADDRESS", "LC_COLLATE", "LC_IDENTIFICATION", "LC_MEASUREMENT", "LC_MESSAGES",
          "LC_MONETARY", "LC_NAME", "LC_NUMERIC", "LC_PAPER", "LC_TELEPHONE", "LC_TIME"}) {
      environment.Override(category, all);
    }
    environment.Override("LC_ALL", {});
  }
  constexpr const char* kUtf8 = "C.UTF-8";
  environment.Override("LC_CTYPE", kUtf8);
  // It holds as well where Qt can't set the user's locale, which may not be installed.
  (void)std::setlocale(LC_CTYPE, kUtf8);
}

// What Qt shall multiply by for a pixel of its own to be one of the screen: a Wayland compositor's
// scale comes in whatever the switch for dense screens says.
struct ScaleFactors {
  QByteArray common;   // on every output
  QByteArray outputs;  // and on each of them besides; Qt takes none that is less than 1
};

QByteArray FactorText(double factor) {
  constexpr int kDigits = 17;  // as many as tell every factor from its neighbours
  return QByteArray::number(factor, 'g', kDigits);
}

// std::nullopt where no output has a scale.
std::optional<ScaleFactors> FactorsThatUndoScales() {
  const QList<QScreen*> screens = QGuiApplication::screens();
  const auto isPlain = [](const QScreen* screen) { return screen->devicePixelRatio() == 1; };
  if (std::ranges::all_of(screens, isPlain)) return std::nullopt;
  const QHash<QString, QSize> pixels =
      UnderACompositor() ? PixelsOfWaylandOutputs() : QHash<QString, QSize>();
  std::vector<double> scales;
  for (const QScreen* screen : screens) {
    scales.push_back(
        ScaleOfOutput(pixels.value(screen->name()), screen->size(), screen->devicePixelRatio()));
  }
  const double largest = *std::ranges::max_element(scales);
  ScaleFactors factors{.common = FactorText(1 / largest), .outputs = {}};
  for (qsizetype i = 0; i < screens.size(); ++i) {
    const double factor = largest / scales[static_cast<std::size_t>(i)];
    factors.outputs += screens[i]->name().toUtf8() + '=' + FactorText(factor) + ';';
  }
  return factors;
}

// Repaints windows as wholes. Where a unit of the compositor's is several pixels, Qt
// rounds a part that is to be painted to whole units after it has been told what to paint in it,
// and would leave a seam of blank pixels around the part.
class WholeRepaints : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest && watched->isWidgetType()) {
      auto* window = static_cast<QWidget*>(watched);
      window->update();
      // An opaque part isn't painted with what lies behind it.
      for (QWidget* part : window->findChildren<QWidget*>()) {
        if (part->window() == window) part->update();
      }
    }
    return false;
  }
};

std::unique_ptr<QApplication> MakeApplication(int& argumentCount, char** arguments) {
  StartEnvironment environment;
  StartInUtf8(environment);
  // A pixel is a pixel of the screen.
  environment.Override("QT_ENABLE_HIGHDPI_SCALING", "0");
  environment.Override("QT_SCALE_FACTOR", {});
  environment.Override("QT_SCREEN_SCALE_FACTORS", {});
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    environment.Override("QT_QPA_PLATFORM", "xcb;wayland");
  }
  auto application = std::make_unique<QApplication>(argumentCount, arguments);
  const std::optional<ScaleFactors> factors = FactorsThatUndoScales();
  if (!factors) return application;
  // Qt takes factors at its start alone.
  application.reset();
  environment.Override("QT_SCALE_FACTOR", factors->common);
  environment.Override("QT_SCREEN_SCALE_FACTORS", factors->outputs);
  application = std::make_unique<QApplication>(argumentCount, arguments);
  application->installEventFilter(new WholeRepaints(application.get()));
  return application;
}

}  // namespace

App::App(const char* programName, const QString& title)
    : name_(programName), arguments_{name_.data(), nullptr} {
  TitleStore() = title;
  KeepStandardDescriptors();
  // Qt's file dialogs keep their history in the user's settings: there is no such place.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, u"/dev/null"_s);

  application_ = MakeApplication(argumentCount_, arguments_.data());
  RoundPointerDown(*application_);
  ServeScreenReaders();
  QApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setDesktopFileName(QString::fromStdString(name_));
  // Qt has set the user's locale for the whole process; media libraries count on this one.
  (void)std::setlocale(LC_NUMERIC, "C");
  setPath(QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
}

App::~App() = default;

int App::Run() { return Form::AnyLoaded() ? QApplication::exec() : EXIT_SUCCESS; }

const std::string& App::Path() { return PathStore(); }

void App::setPath(const std::string& path) { PathStore() = path; }

QString App::Title() { return TitleStore(); }

void App::OpenWebPage(const QString& address) { QDesktopServices::openUrl(QUrl(address)); }

void DoEvents() { QCoreApplication::processEvents(); }

}  // namespace kelvane
