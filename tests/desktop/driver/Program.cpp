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

using namespace Qt::StringLiterals;

namespace {

// The id of the user "nobody" and of his group.
constexpr uid_t kOrdinaryUser = 65534;

constexpr auto kForOwnerAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

void WriteScript(const QString& path, const QString& script) {
  QFile::remove(path);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("a script can't be written");
  file.write("#!/bin/sh\n" + script.toUtf8());
  file.setPermissions(kForOwnerAlone);
}

QProcessEnvironment CleanEnvironment(const QString& folder, const QString& display) {
  QProcessEnvironment environment;
  environment.insert("PATH", folder + "/commands:/usr/bin:/bin");
  environment.insert("HOME", folder + "/home");
  environment.insert("XDG_RUNTIME_DIR", folder + "/runtime");
  environment.insert("LANG", "C.UTF-8");
  environment.insert("DISPLAY", display);
  environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus");
  // The machine may have no sound device.
  environment.insert("SDL_AUDIODRIVER", "dummy");
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (qEnvironmentVariableIsSet(name)) environment.insert(name, qEnvironmentVariable(name));
  }
  return environment;
}

}  // namespace

bool BecomeOrdinaryUser() {
  return geteuid() != 0 ||
         (setgroups(0, nullptr) == 0 && setgid(kOrdinaryUser) == 0 && setuid(kOrdinaryUser) == 0);
}

// Links are given away themselves, not the files that they lead to.
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
    : display_(std::move(display)), name_(name) {
  if (!QFile::exists(builtFolder + '/' + name_)) {
    throw std::runtime_error("no program in " + builtFolder.toStdString());
  }
  for (const char* folder : {"program", "home", "commands", "runtime", "log"}) {
    QDir(Folder()).mkdir(folder);
  }
  QFile::setPermissions(PathOf("runtime"), kForOwnerAlone);
  QFile::copy(builtFolder + '/' + name_, ProgramFolder() + '/' + name_);
  for (const QString tool : {"ffmpeg", "ffprobe", "ffplay"}) {
    const QString real = QFile::symLinkTarget(builtFolder + '/' + tool);
    QFile::link(real, ProgramFolder() + '/' + tool);
    QFile::link(real, RealTool(tool));
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

void Program::ReplaceTool(const QString& tool, const QString& behaviour) {
  const QString script =
      u"real='%1'\n"
      "{ for argument; do printf ' %s\\n' \"$argument\"; done; echo end; } >> '%2'\n"
      "%3\n"_s.arg(RealTool(tool), LogOf(tool), behaviour);
  WriteScript(ProgramFolder() + '/' + tool, script);
}

QList<QStringList> Program::RunsOf(const QString& tool) const {
  QList<QStringList> runs;
  QFile log(LogOf(tool));
  if (!log.open(QIODevice::ReadOnly)) return runs;
  QStringList arguments;
  for (const QString& line : QString::fromUtf8(log.readAll()).split('\n')) {
    if (line.startsWith(' ')) {
      arguments << line.mid(1);
    } else if (line == "end") {
      runs << std::exchange(arguments, {});
    }
  }
  return runs;
}

testing::Gate& Program::GateNamed(const QString& name) {
  std::unique_ptr<testing::Gate>& gate = gates_[name];
  if (!gate) gate = std::make_unique<testing::Gate>(PathOf("gate-" + name).toStdString());
  return *gate;
}

QString Program::Gate(const QString& name) {
  return QString::fromStdString(GateNamed(name).WaitCommands());
}

QString Program::PrintingGate(const QString& name) {
  return u"passed=$(mktemp -u)\n"
         "{ %1touch \"$passed\"; } > /dev/null 2>&1 &\n"
         "until [ -e \"$passed\" ]; do echo .; sleep 0.05; done\n"
         "rm \"$passed\"\n"_s.arg(Gate(name));
}

bool Program::Open(const QString& name) {
  const testing::Gate& gate = GateNamed(name);
  gate.Open();
  return WaitFor([&] { return gate.IsPassed(); });
}

void Program::AddCommand(const QString& name, const QString& script) const {
  WriteScript(PathOf("commands/" + name), script);
}

// Sets the limit from a child process, which becomes the program's user: in a container not even
// root may set the limits of another user's process.
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
  QProcessEnvironment environment = CleanEnvironment(Folder(), display_);
  for (const auto& [name, value] : variables_.asKeyValueRange()) environment.insert(name, value);
  process_.setProcessEnvironment(environment);
  if (asOrdinaryUser_) GiveToOrdinaryUser(Folder());
  process_.setWorkingDirectory(Folder());
  // The program gets a process group of its own, which Kill kills with the tools in it.
  process_.setChildProcessModifier([asOrdinaryUser = asOrdinaryUser_] {
    constexpr int kNotStarted = 127;
    setpgid(0, 0);
    // The tests may have been started by nohup.
    (void)std::signal(SIGHUP, SIG_DFL);
    if (asOrdinaryUser && !BecomeOrdinaryUser()) _exit(kNotStarted);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
  });
  process_.start(ProgramFolder() + '/' + name_, QStringList());
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

int Program::LowestFreeDescriptor() const {
  int number = 0;
  while (QFileInfo(u"/proc/%1/fd/%2"_s.arg(Id()).arg(number)).isSymLink()) ++number;
  return number;
}

int Program::Threads() const {
  const QDir threads(u"/proc/%1/task"_s.arg(Id()));
  return static_cast<int>(threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size());
}

QByteArray Program::FromProc(const char* file) const {
  QFile text(u"/proc/%1/%2"_s.arg(Id()).arg(file));
  return text.open(QIODevice::ReadOnly) ? text.readAll() : QByteArray();
}

qint64 Program::Memory(const QByteArray& kind) const {
  const QByteArray status = FromProc("status");
  const qsizetype line = status.indexOf(kind);
  return line < 0 ? 0 : status.mid(line).simplified().split(' ').value(1).toLongLong();
}

std::chrono::milliseconds Program::ProcessorTime() const {
  // Counted from 0 after the name, which stands in brackets, fields 11 and 12 are the times in the
  // program and in the system.
  const QByteArray status = FromProc("stat");
  const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
  const qint64 ticks = fields.value(11).toLongLong() + fields.value(12).toLongLong();
  return std::chrono::milliseconds(ticks * 1000 / sysconf(_SC_CLK_TCK));
}

QList<qint64> Program::Children(const QByteArray& states) const {
  QList<qint64> found;
  const QDir threads(u"/proc/%1/task"_s.arg(Id()));
  for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile list(threads.filePath(thread + "/children"));
    if (!list.open(QIODevice::ReadOnly)) continue;
    for (const QByteArray& child : list.readAll().simplified().split(' ')) {
      QFile status("/proc/" + child + "/stat");
      if (child.isEmpty() || !status.open(QIODevice::ReadOnly)) continue;
      // The state follows the name, which stands in brackets.
      const QByteArray line = status.readAll();
      if (states.contains(line.at(line.lastIndexOf(')') + 2))) found << child.toLongLong();
    }
  }
  return found;
}

}  // namespace kelvane::desktop
