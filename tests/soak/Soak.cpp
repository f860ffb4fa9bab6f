#include "soak/Soak.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <pthread.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QWidget>
#include <algorithm>
#include <iostream>
#include <map>
#include <string>

#include "media/DOSOutputs.h"
#include "support/Sanitized.h"
#include "support/Wait.h"

namespace kelvane::testing {
namespace {

// All threads share one heap, since a thread's own heap can't be told from other mapped memory.
[[maybe_unused]] const int oneHeap = ::mallopt(M_ARENA_MAX, 1);

using Counts = std::map<std::string, qsizetype>;

QStringList EntriesOf(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
}

// Returns the number of child processes that run or aren't reaped.
qsizetype Children() {
  const QString tasks = QStringLiteral("/proc/self/task/");
  qsizetype children = 0;
  for (const QString& task : EntriesOf(tasks)) {
    QFile list(tasks + task + QLatin1String("/children"));
    // A thread may have ended since the folder was read.
    if (list.open(QIODevice::ReadOnly)) children += list.readAll().count(' ');
  }
  return children;
}

// Runs a tool and returns whether no other child is left then. That tool may end a moment later.
bool ChildrenAreReaped() {
  return WaitFor([] {
    DOSOutputs().ExecuteCommand("/bin/true");
    return Children() <= 1;
  });
}

Counts Count() {
  Counts counts = {{"descriptors", EntriesOf(QStringLiteral("/proc/self/fd")).size()},
                   {"threads", EntriesOf(QStringLiteral("/proc/self/task")).size()},
                   {"widgets", QApplication::allWidgets().size()}};
  QObjectList roots{qApp};
  for (QWidget* window : QApplication::topLevelWidgets()) roots << window;
  const QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
  for (QObject* root : roots) {
    const QObjectList objects = root->findChildren<QObject*>() << root;
    counts["objects"] += objects.size();
    for (QObject* object : objects) {
      counts["running timers"] += dispatcher->registeredTimers(object).size();
    }
  }
  return counts;
}

// Returns the counts once they have stayed the same for a while: threads take time to end.
Counts SettledCount() {
  Counts counts;
  EXPECT_TRUE(WaitFor([&counts] {
    counts = Count();
    return HoldsFor([&counts] { return Count() == counts; }, 200ms);
  }));
  return counts;
}

double BytesOnHeap() {
  const struct mallinfo2 heap = ::mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd);
}

// Returns the length of the writable mapping of a thread's stack: the stack without its guard.
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

// Returns the size of the writable mapped memory without the heap and without the stacks of further
// threads. Count counts those threads instead.
double BytesMapped() {
  const double stack = StackBytes();
  double bytes = 0;
  QFile maps(QStringLiteral("/proc/self/maps"));
  EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
  for (const QByteArray& line : maps.readAll().split('\n')) {
    const QList<QByteArray> fields = line.split(' ');
    if (!fields.value(1).startsWith("rw") || line.endsWith("[heap]")) continue;
    const QList<QByteArray> ends = fields[0].split('-');
    const auto length =
        static_cast<double>(ends[1].toULongLong(nullptr, 16) - ends[0].toULongLong(nullptr, 16));
    if (length != stack) bytes += length;
  }
  return bytes - static_cast<double>(::mallinfo2().hblkhd);
}

void Run(const Soak& soak, int from, int to) {
  for (int number = from; number < to; ++number) {
    soak.round(number);
    ASSERT_FALSE(::testing::Test::HasFailure()) << "in round " << number;
  }
}

}  // namespace

void ExpectFlat(const Soak& soak) {
  ASSERT_NO_FATAL_FAILURE(Run(soak, 0, soak.warmUp));
  ASSERT_TRUE(ChildrenAreReaped());
  const Counts before = SettledCount();
  const double heapBefore = BytesOnHeap();
  const double mappedBefore = BytesMapped();

  ASSERT_NO_FATAL_FAILURE(Run(soak, soak.warmUp, soak.warmUp + soak.rounds));
  EXPECT_TRUE(ChildrenAreReaped()) << Children() << " children";
  Counts after;
  EXPECT_TRUE(WaitFor([&] {
    after = SettledCount();
    return std::ranges::all_of(
        after, [&](const auto& count) { return count.second <= before.at(count.first); });
  }));
  const double heap = (BytesOnHeap() - heapBefore) / soak.rounds;
  const double mapped = (BytesMapped() - mappedBefore) / soak.rounds;
  std::cout << "before: " << ::testing::PrintToString(before)
            << "\nafter: " << ::testing::PrintToString(after) << "\na round took " << heap
            << " bytes of the heap and " << mapped << " bytes mapped outside of it\n";
  if (kSanitized) return;
  EXPECT_LT(heap, soak.mostBytesPerRound);
  EXPECT_LT(mapped, soak.mostBytesPerRound);
}

}  // namespace kelvane::testing
