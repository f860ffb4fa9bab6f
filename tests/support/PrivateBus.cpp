#include "support/PrivateBus.h"

#include <sys/prctl.h>

#include <QProcessEnvironment>
#include <csignal>
#include <stdexcept>

#include "support/Wait.h"

namespace kelvane::testing {

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus(const QString& folder) {
  QProcessEnvironment environment;
  environment.insert("PATH", "/usr/bin:/bin");
  environment.insert("HOME", folder);
  environment.insert("XDG_RUNTIME_DIR", folder);
  environment.insert("GSETTINGS_BACKEND", "memory");
  environment.insert("LANG", "C.UTF-8");
  daemon_.setProcessEnvironment(environment);
  daemon_.setStandardErrorFile(QProcess::nullDevice());
  daemon_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
  daemon_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address=1",
                                u"--address=unix:path=%1/bus"_s.arg(folder)});
  WaitFor([this] {
    daemon_.waitForReadyRead(0);
    return daemon_.canReadLine() || daemon_.state() == QProcess::NotRunning;
  });
  address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  if (address_.isEmpty()) throw std::runtime_error("the bus doesn't start");
}

PrivateBus::~PrivateBus() {
  daemon_.terminate();
  daemon_.waitForFinished();
}

}  // namespace kelvane::testing
