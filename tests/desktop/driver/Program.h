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

// Where the tests are root's, makes this process an ordinary user's. For children, before what they
// shall run.
bool BecomeOrdinaryUser();
// Gives him the folder with all that is in it, likewise.
void GiveToOrdinaryUser(const QString& folder);

// The program under test: a copy of the built folder in a place of its own, so that single tools in
// it can be exchanged, started with an environment that holds nothing of the tester's.
class Program {
 public:
  // `builtFolder` holds the program of that name with its tools, `display` is where it opens its
  // windows. Throws std::runtime_error if there is no program.
  Program(const QString& builtFolder, QString display,
          const QString& name = QStringLiteral("kelvane"));
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  // Ends the program and every tool that it left behind.
  ~Program();

  // A folder for the test's files, gone with the object. Its path has no blank in it.
  QString Folder() const { return place_.path(); }
  QString PathOf(const QString& file) const { return place_.filePath(file); }
  // The folder of the program and its tools.
  QString ProgramFolder() const { return place_.filePath(QStringLiteral("program")); }

  // Puts a shell script in the tool's place that notes its arguments and goes on with `behaviour`.
  // In it, $real names the tool that it stands for.
  void ReplaceTool(const QString& tool, const QString& behaviour);
  void RemoveTool(const QString& tool) const;
  // The arguments of each run of a replaced tool, in order.
  QList<QStringList> RunsOf(const QString& tool) const;

  // Lines of shell script that wait until Open of the same name, once for each run of them.
  QString Gate(const QString& name);
  // The same, printing a little all the while: the program's windows live while a tool prints.
  QString TalkingGate(const QString& name);
  // Lets one script through, and waits until it has come to its gate. False if none comes.
  bool Open(const QString& name);

  // Programs of the desktop, found before the system's own.
  void AddCommand(const QString& name, const QString& script) const;

  // To be called before the start: a variable of the program's environment.
  void SetVariable(const QString& name, const QString& value) { variables_.insert(name, value); }
  // To be called before the start: the program shall run as an ordinary user to whom everything in
  // its place belongs. Limits and rights of files mean nothing to root.
  void RunAsOrdinaryUser() { asOrdinaryUser_ = true; }
  // Sets the running program's limit of a resource, RLIMIT_NOFILE or the like, as far as it may be
  // set back. False if that can't be done.
  bool SetLimit(int resource, std::uint64_t limit) const;
  bool LiftLimit(int resource) const;

  void Start();
  // Ends the program and every tool that it left behind, as the object's own end does.
  void Kill();
  bool Running() const { return process_.state() == QProcess::Running; }
  qint64 Id() const { return process_.processId(); }
  // Waits for the program's own end; its exit code, -1 for a crash, -2 if it goes on running.
  int AwaitExit(std::chrono::milliseconds patience = kPatience);
  // What the program has printed so far.
  QString Printed();

  int OpenDescriptors() const;
  // The number that the program's next descriptor gets: as a limit, it lets none be opened.
  int LowestFreeDescriptor() const;
  // What the program has in memory, and what it has had at most, in KiB.
  qint64 Memory() const { return Memory("VmRSS:"); }
  qint64 MostMemory() const { return Memory("VmHWM:"); }
  // What the program has reserved, in memory or not, in KiB: what RLIMIT_AS counts.
  qint64 AddressSpace() const { return Memory("VmSize:"); }
  // How long the program's threads have been at work on a processor.
  std::chrono::milliseconds ProcessorTime() const;
  // Whether the program has a file of this path in its memory, as it has the libraries in use.
  bool HasInMemory(const QString& path) const;
  // The numbers of the program's child processes whose state is one of `states`, as in "ZRS".
  QList<qint64> Children(const QByteArray& states) const;

 private:
  testing::Gate& GateNamed(const QString& name);
  QString RealTool(const QString& tool) const;
  QString LogOf(const QString& tool) const;
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
