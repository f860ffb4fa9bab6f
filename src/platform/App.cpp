#include "platform/App.h"

#include <fcntl.h>

#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>
#include <clocale>
#include <csignal>
#include <cstdlib>

#include "platform/Accessibility.h"
#include "platform/HandlerScope.h"
#include "platform/QtStart.h"
#include "platform/WholePixels.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// Opens the null device as each standard descriptor that the program was started without. Otherwise
// a file that the program opens would get the number of that descriptor, and what the program
// prints would be written into the file.
void OpenMissingStandardDescriptors() {
  for (const int standard : {0, 1, 2}) {
    if (::fcntl(standard, F_GETFD) < 0) (void)::open("/dev/null", O_RDWR);
  }
}

// Makes Qt show its own texts, in dialogs and menus, in the user's language. The windows keep the
// left-to-right layout for which they are designed.
void TranslateQt() {
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
  const QLocale user = QLocale::system();
  if (user.language() == QLocale::C || user.language() == QLocale::English) return;
  auto* texts = new QTranslator(qApp);
  if (texts->load(user, u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(texts);
  }
}

}  // namespace

App::App(const char* programName, const QString& title)
    : name_(programName), arguments_{name_.data(), nullptr} {
  title_ = title;
  OpenMissingStandardDescriptors();
  (void)std::signal(SIGCHLD, SIG_DFL);  // if it were ignored, a tool's exit status would be lost
  // Keeps Qt's file dialogs from saving their history in the user's settings.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, u"/dev/null"_s);

  application_ = StartQt(argumentCount_, arguments_.data());
  TranslateQt();
  RoundPointerPositions();
  ServeScreenReaders();
  QApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setDesktopFileName(QString::fromStdString(name_));
  // Qt has set the user's locale for the whole process; libmpv requires "C" for numbers.
  (void)std::setlocale(LC_NUMERIC, "C");
  setPath(QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
}

int App::Run() { return HandlerOwner::AnyLoaded() ? QApplication::exec() : EXIT_SUCCESS; }

void DoEvents() { QCoreApplication::processEvents(); }

}  // namespace kelvane
