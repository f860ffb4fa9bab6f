#include "soak/Soak.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <QWidget>
#include <iostream>

#include "media/DOSOutputs.h"
#include "platform/Timer.h"
#include "support/Events.h"
#include "support/Sanitized.h"

namespace kelvane::testing {
namespace {

struct Counts {
  qsizetype descriptors = 0;
  qsizetype threads = 0;
  qsizetype children = 0;  // alive, or ended and not reaped
  qsizetype timers = 0;
  qsizetype widgets = 0;

  bool NoMoreThan(const Counts& other) const {
    return descriptors <= other.descriptors && threads <= other.threads &&
           children <= other.children && timers <= other.timers && widgets <= other.widgets;
  }
  friend std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    return out << counts.descriptors << " descriptors, " << counts.threads << " threads, "
               << counts.children << " children, " << counts.timers << " timers, " << counts.widgets
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

Counts Count() {
  DOSOutputs::ReapEndedChildren();
  Counts counts{.descriptors = EntriesOf(QStringLiteral("/proc/self/fd")).size(),
                .threads = EntriesOf(QStringLiteral("/proc/self/task")).size(),
                .children = Children(),
                .timers = qApp->findChildren<QTimer*>().size(),
                .widgets = QApplication::allWidgets().size()};
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    counts.timers += window->findChildren<QTimer*>().size() + window->findChildren<Timer*>().size();
  }
  return counts;
}

double ResidentMiB() {
  const double pages = ContentOf(QStringLiteral("/proc/self/statm")).split(' ').value(1).toDouble();
  return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1024 / 1024;
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
  constexpr double kMostOfARound = 512;
  ASSERT_NO_FATAL_FAILURE(Run(soak, 0, soak.warmUp));
  ASSERT_TRUE(PumpUntil([] { return Count().children == 0; }));
  PumpOnce();
  const Counts before = Count();
  const double bytesBefore = BytesNet(soak);
  const double residentBefore = ResidentMiB();

  ASSERT_NO_FATAL_FAILURE(Run(soak, soak.warmUp, soak.warmUp + soak.rounds));
  // Threads and tools may take a moment to be gone, and some of them were there before.
  EXPECT_TRUE(PumpUntil([&before] { return Count().NoMoreThan(before); }));
  const double grown = (BytesNet(soak) - bytesBefore) / soak.rounds;
  std::cout << "after " << soak.warmUp << " rounds: " << before << ", " << bytesBefore / 1024 / 1024
            << " MiB in use, " << residentBefore << " MiB resident\nafter " << soak.rounds
            << " more: " << Count() << ", " << BytesNet(soak) / 1024 / 1024 << " MiB in use, "
            << ResidentMiB() << " MiB resident; " << grown << " bytes a round\n";
  if (!kSanitized) {
    EXPECT_LT(grown, kMostOfARound);
  }
}

}  // namespace kelvane::testing
