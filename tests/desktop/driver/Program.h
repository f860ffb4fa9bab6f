#pragma once

#include <QHash>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdint>
#include <map>
#include <memory>

#include "desktop/driver/Wait.h"
#include "support/Gate.h"

namespace kelvane::desktop {

// Makes this process one of an ordinary user, who owns nothing but what GiveToOrdinaryUser gives.
// Returns false if that fails. For a child process before its exec.
bool BecomeOrdinaryUser();
// Gives that user the folder and everything in it. Unless the tests run as root, neither of the two
// functions does anything.
void GiveToOrdinaryUser(const QString& folder);

// The program under test: a copy of the built program in a temporary folder, with links to the
// tools there, which a test can replace. It starts with an environment of its own.
class Program {
 public:
  // `builtFolder` holds the program of that name and its tools. The program opens its windows on
  // `display`. Throws std::runtime_error if there is no such program.
  Program(const QString& builtFolder, QString display, const QString& name = "kelvane");
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  // Kills the program and the tools that still run.
  ~Program();

  // The test's temporary folder. Its path has no blank.
  QString Folder() const { return place_.path(); }
  QString PathOf(const QString& file) const { return place_.filePath(file); }
  // The folder of the program and its tools.
  QString ProgramFolder() const { return PathOf("program"); }

  // Replaces the tool by a shell script that logs its arguments and then does what `behaviour`
  // says. In `behaviour`, $real is the path of the replaced tool.
  void ReplaceTool(const QString& tool, const QString& behaviour);
  // The arguments of each run of a replaced tool, in order.
  QList<QStringList> RunsOf(const QString& tool) const;

  // Shell commands that wait until the test calls Open with the same name.
  QString Gate(const QString& name);
  // The same, and the commands print dots meanwhile: the program handles events when a tool prints.
  QString PrintingGate(const QString& name);
  // Lets one script pass its gate, and waits until it has. Returns false if no script comes.
  bool Open(const QString& name);

  // Adds a shell script to the program's PATH, in front of the system's commands.
  void AddCommand(const QString& name, const QString& script) const;

  // The following three are to be called before Start.
  void SetVariable(const QString& name, const QString& value) { variables_.insert(name, value); }
  // For a program whose libraries don't free all their memory at its end: AddressSanitizer then
  // reports no leaks.
  void AllowLeaks() {
    SetVariable("ASAN_OPTIONS", qEnvironmentVariable("ASAN_OPTIONS") + ":detect_leaks=0");
  }
  // Runs the program as an ordinary user, since limits and file permissions don't hold for root.
  // That user then owns the temporary folder.
  void RunAsOrdinaryUser() { asOrdinaryUser_ = true; }

  // Sets the soft limit of a resource, such as RLIMIT_NOFILE, of the running program. Returns false
  // if that fails.
  bool SetLimit(int resource, std::uint64_t limit) const;
  // Raises the soft limit to the hard one. Returns false if that fails.
  bool LiftLimit(int resource) const;

  void Start();
  // Kills the program and the tools that still run.
  void Kill();
  bool Running() const { return process_.state() == QProcess::Running; }
  qint64 Id() const { return process_.processId(); }
  // Waits until the program has ended. Returns its exit code, -1 after a crash, or -2 if it still
  // runs.
  int AwaitExit(std::chrono::milliseconds patience = kPatience);
  // What the program has printed so far.
  QString Printed();

  // The number that the program's next descriptor will have. If RLIMIT_NOFILE is set to this
  // number, the program can't open another descriptor.
  int LowestFreeDescriptor() const;
  // How many threads the program has.
  int Threads() const;
  // The program's resident memory now and at its peak, in KiB.
  qint64 Memory() const { return Memory("VmRSS:"); }
  qint64 PeakMemory() const { return Memory("VmHWM:"); }
  // The processor time of all threads of the program.
  std::chrono::milliseconds ProcessorTime() const;
  // The process ids of the program's children in one of these states, which have the letters of
  // /proc. The default includes Z, a zombie: an ended child that the program hasn't reaped.
  QList<qint64> Children(const QByteArray& states = "RSDTZ") const;

 private:
  testing::Gate& GateNamed(const QString& name);
  QString RealTool(const QString& tool) const { return PathOf("real-" + tool); }
  QString LogOf(const QString& tool) const { return PathOf("log/" + tool); }
  QByteArray FromProc(const char* file) const;
  qint64 Memory(const QByteArray& kind) const;

  QTemporaryDir place_;
  std::map<QString, std::unique_ptr<testing::Gate>> gates_;
  QString display_;
  QString name_;
  QProcess process_;
  QString printed_;
  QHash<QString, QString> variables_;
  bool asOrdinaryUser_ = false;
};

}  // namespace kelvane::desktop
