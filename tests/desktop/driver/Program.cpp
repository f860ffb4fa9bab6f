#include "desktop/driver/Program.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <utility>

namespace kelvane::desktop {
namespace {

// One whom nothing belongs to but what a test gives him.
constexpr uid_t kOrdinaryUser = 65534;

void WriteScript(const QString& path, const QString& script) {
  QFile::remove(path);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("a script can't be written");
  file.write(script.toUtf8());
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QProcessEnvironment CleanEnvironment(const QString& folder, const QString& display) {
  QProcessEnvironment environment;
  environment.insert(QStringLiteral("PATH"), folder + QStringLiteral("/commands:/usr/bin:/bin"));
  environment.insert(QStringLiteral("HOME"), folder + QStringLiteral("/home"));
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder + QStringLiteral("/runtime"));
  environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
  environment.insert(QStringLiteral("DISPLAY"), display);
  // The machine may have no sound device.
  environment.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy"));
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (qEnvironmentVariableIsSet(name)) {
      environment.insert(QLatin1String(name), qEnvironmentVariable(name));
    }
  }
  return environment;
}

}  // namespace

bool BecomeOrdinaryUser() {
  return geteuid() != 0 ||
         (setgroups(0, nullptr) == 0 && setgid(kOrdinaryUser) == 0 && setuid(kOrdinaryUser) == 0);
}

// Nothing of what is given is a link to follow.
void GiveToOrdinaryUser(const QString& folder) {
  if (geteuid() != 0) return;
  QStringList paths = {folder};
  QDirIterator entries(folder, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  while (entries.hasNext()) paths << entries.next();
  for (const QString& path : paths) {
    if (lchown(QFile::encodeName(path).constData(), kOrdinaryUser, kOrdinaryUser) != 0) {
      throw std::runtime_error("a file can't be given away: " + path.toStdString());
    }
  }
}

Program::Program(const QString& builtFolder, QString display, const QString& name)
    : display_(std::move(display)), name_(QLatin1Char('/') + name) {
  if (!QFile::exists(builtFolder + name_)) {
    throw std::runtime_error("no program in " + builtFolder.toStdString());
  }
  const QDir place(place_.path());
  for (const char* folder : {"program", "home", "commands", "runtime", "log"}) {
    place.mkdir(QLatin1String(folder));
  }
  QFile::setPermissions(place.filePath(QStringLiteral("runtime")),
                        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  QFile::copy(builtFolder + name_, ProgramFolder() + name_);
  for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) {
    const QString real = QFile::symLinkTarget(builtFolder + QLatin1Char('/') + QLatin1String(tool));
    QFile::link(real, ProgramFolder() + QLatin1Char('/') + QLatin1String(tool));
    QFile::link(real, RealTool(QLatin1String(tool)));
  }
  process_.setProcessChannelMode(QProcess::MergedChannels);
}

Program::~Program() { Kill(); }

void Program::Kill() {
  if (const auto group = static_cast<pid_t>(process_.processId()); group > 0) {
    kill(-group, SIGKILL);
  }
  process_.waitForFinished();
}

QString Program::RealTool(const QString& tool) const {
  return place_.filePath(QStringLiteral("real-") + tool);
}

QString Program::LogOf(const QString& tool) const {
  return place_.filePath(QStringLiteral("log/") + tool);
}

void Program::ReplaceTool(const QString& tool, const QString& behaviour) {
  const QString script = QStringLiteral(
                             "#!/bin/sh\n"
                             "real='%1'\n"
                             "{ for argument; do printf ' %s\\n' \"$argument\"; done; echo end; }"
                             " >> '%2'\n"
                             "%3\n")
                             .arg(RealTool(tool), LogOf(tool), behaviour);
  WriteScript(ProgramFolder() + QLatin1Char('/') + tool, script);
}

void Program::RemoveTool(const QString& tool) const {
  QFile::remove(ProgramFolder() + QLatin1Char('/') + tool);
}

QList<QStringList> Program::RunsOf(const QString& tool) const {
  QList<QStringList> runs;
  QFile log(LogOf(tool));
  if (!log.open(QIODevice::ReadOnly)) return runs;
  QStringList arguments;
  const QString text = QString::fromUtf8(log.readAll());
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    if (line.startsWith(QLatin1Char(' '))) {
      arguments << line.mid(1);
    } else if (line == QLatin1String("end")) {
      runs << arguments;
      arguments.clear();
    }
  }
  return runs;
}

testing::Gate& Program::GateNamed(const QString& name) {
  std::unique_ptr<testing::Gate>& gate = gates_[name];
  if (!gate) {
    const QString path = place_.filePath(QStringLiteral("gate-") + name);
    gate = std::make_unique<testing::Gate>(path.toStdString());
  }
  return *gate;
}

QString Program::Gate(const QString& name) {
  return QString::fromStdString(GateNamed(name).Wait());
}

QString Program::TalkingGate(const QString& name) {
  return QStringLiteral(
             "passed=$(mktemp -u)\n"
             "{ %1touch \"$passed\"; } > /dev/null 2>&1 &\n"
             "until [ -e \"$passed\" ]; do echo .; sleep 0.05; done\n"
             "rm \"$passed\"\n")
      .arg(Gate(name));
}

bool Program::Open(const QString& name) {
  const testing::Gate& gate = GateNamed(name);
  gate.Open();
  return WaitFor([&] { return gate.IsPassed(); });
}

void Program::AddCommand(const QString& name, const QString& script) const {
  WriteScript(place_.filePath(QStringLiteral("commands/") + name),
              QStringLiteral("#!/bin/sh\n") + script);
}

// Only the user of a process may do so, and not even root where it is kept in a container.
bool Program::SetLimit(int resource, std::uint64_t limit) const {
  const auto program = static_cast<pid_t>(Id());
  const pid_t child = fork();
  if (child == 0) {
    const auto kind = static_cast<__rlimit_resource>(resource);
    rlimit limits{};
    if ((asOrdinaryUser_ && !BecomeOrdinaryUser()) ||
        prlimit(program, kind, nullptr, &limits) != 0) {
      _exit(EXIT_FAILURE);
    }
    limits.rlim_cur = std::min<rlim_t>(limit, limits.rlim_max);
    _exit(prlimit(program, kind, &limits, nullptr) == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
  }
  int status = -1;
  return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

bool Program::LiftLimit(int resource) const {
  return SetLimit(resource, std::numeric_limits<std::uint64_t>::max());
}

void Program::Start() {
  QProcessEnvironment environment = CleanEnvironment(place_.path(), display_);
  for (const auto& [name, value] : variables_.asKeyValueRange()) environment.insert(name, value);
  process_.setProcessEnvironment(environment);
  if (asOrdinaryUser_) GiveToOrdinaryUser(place_.path());
  process_.setWorkingDirectory(place_.path());
  // A group of its own, so that its tools can be ended with it.
  process_.setChildProcessModifier([asOrdinaryUser = asOrdinaryUser_] {
    constexpr int kNotStarted = 127;
    setpgid(0, 0);
    if (asOrdinaryUser && !BecomeOrdinaryUser()) _exit(kNotStarted);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
  });
  const QString program = ProgramFolder() + name_;
  process_.start(program, QStringList());
  if (!process_.waitForStarted()) throw std::runtime_error("the program can't be started");
}

int Program::AwaitExit(std::chrono::milliseconds patience) {
  if (!WaitFor([this] { return process_.state() == QProcess::NotRunning; }, patience)) return -2;
  return process_.exitStatus() == QProcess::CrashExit ? -1 : process_.exitCode();
}

QString Program::Printed() {
  if (process_.isOpen()) printed_ += QString::fromUtf8(process_.readAll());
  return printed_;
}

int Program::OpenDescriptors() const {
  const QDir descriptors(QStringLiteral("/proc/%1/fd").arg(Id()));
  return static_cast<int>(
      descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

int Program::LowestFreeDescriptor() const {
  int number = 0;
  while (QFileInfo(QStringLiteral("/proc/%1/fd/%2").arg(Id()).arg(number)).isSymLink()) ++number;
  return number;
}

qint64 Program::Memory(const QByteArray& kind) const {
  QFile status(QStringLiteral("/proc/%1/status").arg(Id()));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  const QByteArray text = status.readAll();
  const qsizetype line = text.indexOf(kind);
  return line < 0 ? 0 : text.mid(line).simplified().split(' ').value(1).toLongLong();
}

std::chrono::milliseconds Program::ProcessorTime() const {
  QFile status(QStringLiteral("/proc/%1/stat").arg(Id()));
  if (!status.open(QIODevice::ReadOnly)) return {};
  // Behind the name in its brackets, and ten more numbers: in the program, and for it in the
  // system.
  const QByteArray line = status.readAll();
  const QList<QByteArray> numbers = line.mid(line.lastIndexOf(')') + 2).split(' ');
  const qint64 ticks = numbers.value(11).toLongLong() + numbers.value(12).toLongLong();
  return std::chrono::milliseconds(ticks * 1000 / sysconf(_SC_CLK_TCK));
}

bool Program::HasInMemory(const QString& path) const {
  QFile areas(QStringLiteral("/proc/%1/maps").arg(Id()));
  return areas.open(QIODevice::ReadOnly) &&
         areas.readAll().contains(' ' + QFile::encodeName(path) + '\n');
}

QList<qint64> Program::Children(const QByteArray& states) const {
  QList<qint64> found;
  const QDir threads(QStringLiteral("/proc/%1/task").arg(Id()));
  for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile list(threads.filePath(thread + QStringLiteral("/children")));
    if (!list.open(QIODevice::ReadOnly)) continue;
    for (const QByteArray& child : list.readAll().simplified().split(' ')) {
      QFile status(QStringLiteral("/proc/%1/stat").arg(QString::fromUtf8(child)));
      if (child.isEmpty() || !status.open(QIODevice::ReadOnly)) continue;
      // The state follows the name in its brackets.
      const QByteArray line = status.readAll();
      const char state = line.at(line.lastIndexOf(')') + 2);
      if (states.contains(state)) found << child.toLongLong();
    }
  }
  return found;
}

}  // namespace kelvane::desktop
