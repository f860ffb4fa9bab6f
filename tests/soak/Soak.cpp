#include "soak/Soak.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <pthread.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QWidget>
#include <iostream>

#include "media/DOSOutputs.h"
#include "support/Events.h"
#include "support/Sanitized.h"

namespace kelvane::testing {
namespace {

// One heap for all threads: those of others lie in memory that looks like anybody's.
[[maybe_unused]] const int oneHeap = ::mallopt(M_ARENA_MAX, 1);

struct Counts {
  qsizetype descriptors = 0;
  qsizetype threads = 0;
  qsizetype timers = 0;   // that run
  qsizetype objects = 0;  // of Qt's, widgets and all that hangs on them
  qsizetype widgets = 0;

  bool NoMoreThan(const Counts& other) const {
    return descriptors <= other.descriptors && threads <= other.threads && timers <= other.timers &&
           objects <= other.objects && widgets <= other.widgets;
  }
  friend bool operator==(const Counts&, const Counts&) = default;
  friend std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    return out << counts.descriptors << " descriptors, " << counts.threads << " threads, "
               << counts.timers << " timers, " << counts.objects << " objects, " << counts.widgets
               << " widgets";
  }
};

QStringList EntriesOf(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
}

QByteArray ContentOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

// Alive, or ended and not reaped.
qsizetype Children() {
  const QString tasks = QStringLiteral("/proc/self/task/");
  qsizetype children = 0;
  for (const QString& task : EntriesOf(tasks)) {
    QFile list(tasks + task + QLatin1String("/children"));
    // A thread may have gone since the folder was read.
    if (list.open(QIODevice::ReadOnly)) children += list.readAll().count(' ');
  }
  return children;
}

// Whether the runner takes leave of all that it has started, as it does at the end of each run. The
// tool of the run itself may end a moment later, and then stays until the next.
bool ChildrenAreReaped() {
  return WaitFor([] {
    DOSOutputs().ExecuteCommand("/bin/true");
    return Children() <= 1;
  });
}

Counts Count() {
  Counts counts{.descriptors = EntriesOf(QStringLiteral("/proc/self/fd")).size(),
                .threads = EntriesOf(QStringLiteral("/proc/self/task")).size(),
                .widgets = QApplication::allWidgets().size()};
  QObjectList roots{qApp};
  for (QWidget* window : QApplication::topLevelWidgets()) roots << window;
  const QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
  for (QObject* root : roots) {
    const QObjectList objects = root->findChildren<QObject*>() << root;
    counts.objects += objects.size();
    for (QObject* object : objects) counts.timers += dispatcher->registeredTimers(object).size();
  }
  return counts;
}

// Once the threads that are ending have gone.
Counts Settled() {
  constexpr auto kQuiet = 200ms;
  Counts counts;
  EXPECT_TRUE(WaitFor([&counts] {
    counts = Count();
    return HoldsFor([&counts] { return Count() == counts; }, kQuiet);
  }));
  return counts;
}

double ResidentMiB() {
  const double pages = ContentOf(QStringLiteral("/proc/self/statm")).split(' ').value(1).toDouble();
  return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1024 / 1024;
}

// Of a thread's stack, as mapped beside its guard.
double StackBytes() {
  pthread_attr_t attributes;
  ::pthread_getattr_default_np(&attributes);
  std::size_t whole = 0;
  std::size_t guard = 0;
  ::pthread_attr_getstacksize(&attributes, &whole);
  ::pthread_attr_getguardsize(&attributes, &guard);
  ::pthread_attr_destroy(&attributes);
  return static_cast<double>(whole - guard);
}

// Of memory that is mapped to be written to and is neither the heap's nor a stack: threads are
// counted by themselves, and the stacks of those that have gone are kept for others.
double BytesMapped() {
  const double stack = StackBytes();
  double bytes = 0;
  for (const QByteArray& line : ContentOf(QStringLiteral("/proc/self/maps")).split('\n')) {
    const QList<QByteArray> fields = line.split(' ');
    if (!fields.value(1).startsWith("rw") || line.endsWith("[heap]")) continue;
    const QList<QByteArray> ends = fields[0].split('-');
    const auto length =
        static_cast<double>(ends[1].toULongLong(nullptr, 16) - ends[0].toULongLong(nullptr, 16));
    if (length != stack) bytes += length;
  }
  return bytes - static_cast<double>(::mallinfo2().hblkhd);
}

double BytesNet(const Soak& soak) {
  const std::size_t kept = soak.keptOnPurpose ? soak.keptOnPurpose() : 0;
  return static_cast<double>(BytesInUse()) - static_cast<double>(kept);
}

void Run(const Soak& soak, int from, int to) {
  for (int number = from; number < to; ++number) {
    soak.round(number);
    ASSERT_FALSE(::testing::Test::HasFailure()) << "in round " << number;
  }
}

}  // namespace

std::size_t BytesInUse() {
  if (kSanitized) return 0;
  const struct mallinfo2 heap = ::mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

void ExpectFlat(const Soak& soak) {
  ASSERT_NO_FATAL_FAILURE(Run(soak, 0, soak.warmUp));
  ASSERT_TRUE(ChildrenAreReaped());
  const Counts before = Settled();
  const double bytesBefore = BytesNet(soak);
  const double mappedBefore = BytesMapped();
  const double residentBefore = ResidentMiB();

  ASSERT_NO_FATAL_FAILURE(Run(soak, soak.warmUp, soak.warmUp + soak.rounds));
  EXPECT_TRUE(ChildrenAreReaped()) << Children() << " children";
  Counts after;
  EXPECT_TRUE(WaitFor([&] {
    after = Settled();
    return after.NoMoreThan(before);
  }));
  const double grown = (BytesNet(soak) - bytesBefore) / soak.rounds;
  const double mapped = (BytesMapped() - mappedBefore) / soak.rounds;
  std::cout << "after " << soak.warmUp << " rounds: " << before << ", " << bytesBefore / 1024 / 1024
            << " MiB in use, " << residentBefore << " MiB resident\nafter " << soak.rounds
            << " more: " << after << ", " << BytesNet(soak) / 1024 / 1024 << " MiB in use, "
            << ResidentMiB() << " MiB resident; " << grown << " bytes a round, and " << mapped
            << " mapped\n";
  if (!kSanitized) {
    EXPECT_LT(grown, soak.mostOfARound);
    EXPECT_LT(mapped, soak.mostOfARound);
  }
}

}  // namespace kelvane::testing
