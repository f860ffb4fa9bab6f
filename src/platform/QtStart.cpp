#include "platform/QtStart.h"

#include <langinfo.h>

#include <QByteArray>
#include <QEvent>
#include <QThread>
#include <QWidget>
#include <chrono>
#include <clocale>
#include <cstdlib>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "platform/WaylandOutputs.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

QtMessageHandler formerMessageHandler = nullptr;

// A message handler. If the connection to a Wayland compositor breaks, Qt prints a message on the
// thread that notices it and then calls _exit. If QT_WAYLAND_RECONNECT is set, Qt 6.8 connects
// again instead. Before Qt calls _exit, this function makes the user-interface thread call
// std::exit, as Qt does when it loses an X server, so that the tools that must end with the program
// are killed and its temporary files are removed.
void ExitWithoutCompositor(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  formerMessageHandler(type, context, text);
  if (qApp == nullptr || !text.startsWith("The Wayland connection "_L1) ||
      qEnvironmentVariableIsSet("QT_WAYLAND_RECONNECT")) {
    return;
  }
  const auto exit = [] { std::exit(EXIT_FAILURE); };
  if (QThread::currentThread() == qApp->thread()) exit();
  QMetaObject::invokeMethod(qApp, exit, Qt::QueuedConnection);
  constexpr std::chrono::seconds kPatience(5);  // that thread may be waiting for the compositor
  std::this_thread::sleep_for(kPatience);
}

// Changes the environment for Qt's start. The destructor undoes the changes, so that child
// processes don't see them.
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

  // Sets the variable, or removes it if `value` is null.
  void Override(const char* name, const QByteArray& value) {
    former_.emplace_back(name, qgetenv(name));
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

// Makes Qt start in UTF-8 if the user's locale has another encoding: Qt treats file names as UTF-8
// in every locale, but would print a warning. Of the user's locale, only LC_CTYPE is changed.
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
  // If the user's locale isn't installed, Qt's own call of setlocale fails and leaves this one.
  (void)std::setlocale(LC_CTYPE, kUtf8);
}

// Turns each repaint into one of the whole window. If a compositor's unit is several pixels, Qt
// rounds the region that it sends to whole units, but only after the widgets have painted the
// unrounded one, which leaves a seam of blank pixels around the region.
class WholeRepaints : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest && watched->isWidgetType()) {
      auto* window = static_cast<QWidget*>(watched);
      window->update();
      // Updating the parent of an opaque widget doesn't repaint that widget.
      for (QWidget* part : window->findChildren<QWidget*>()) {
        if (part->window() == window) part->update();
      }
    }
    return false;
  }
};

}  // namespace

std::unique_ptr<QApplication> StartQt(int& argumentCount, char** arguments) {
  if (formerMessageHandler == nullptr) {
    formerMessageHandler = qInstallMessageHandler(ExitWithoutCompositor);
  }
  StartEnvironment environment;
  StartInUtf8(environment);
  // Makes a Qt pixel a screen pixel, except under a Wayland compositor with a scale.
  environment.Override("QT_ENABLE_HIGHDPI_SCALING", "0");
  environment.Override("QT_SCALE_FACTOR", {});
  environment.Override("QT_SCREEN_SCALE_FACTORS", {});
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY")) {
    environment.Override("QT_QPA_PLATFORM", "xcb;wayland");
  }
  auto application = std::make_unique<QApplication>(argumentCount, arguments);
  const std::optional<ScaleFactors> factors = FactorsThatUndoScales();
  if (!factors) return application;
  // Qt reads the factors only at its start.
  application.reset();
  environment.Override("QT_SCALE_FACTOR", factors->common);
  environment.Override("QT_SCREEN_SCALE_FACTORS", factors->outputs);
  application = std::make_unique<QApplication>(argumentCount, arguments);
  application->installEventFilter(new WholeRepaints(application.get()));
  return application;
}

}  // namespace kelvane
