// What the desktop is told of a long job.
#include "platform/LongJob.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QGuiApplication>
#include <cstring>
#include <future>
#include <utility>

#include "support/SessionServices.h"
#include "support/Wait.h"

namespace kelvane::testing {
namespace {

// Sets the addresses of this process's buses and the name of its desktop file; the destructor
// restores them.
class Buses {
 public:
  Buses(const QString& session, const QString& system) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", session.toUtf8());
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", system.toUtf8());
    QGuiApplication::setDesktopFileName("kelvane-joiner");
  }
  Buses(const Buses&) = delete;
  Buses& operator=(const Buses&) = delete;
  ~Buses() {
    Restore("DBUS_SESSION_BUS_ADDRESS", session_);
    Restore("DBUS_SYSTEM_BUS_ADDRESS", system_);
    QGuiApplication::setDesktopFileName(desktopFile_);
  }

 private:
  static void Restore(const char* name, const QByteArray& value) {
    value.isNull() ? qunsetenv(name) : qputenv(name, value);
  }

  const QByteArray session_ = qgetenv("DBUS_SESSION_BUS_ADDRESS");
  const QByteArray system_ = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
  const QString desktopFile_ = QGuiApplication::desktopFileName();
};

constexpr const char* kPurpose = "Joining videos";
const QString kPortalsCall = "portal: 4, Joining videos";
const QString kLogindsCall = "logind: sleep, Kelvane, Joining videos, block";

class LongJobTest : public ::testing::Test {
 protected:
  bool AwaitInhibited() const {
    return WaitFor([this] { return services.Inhibited(); });
  }
  bool AwaitAllowed() const {
    return WaitFor([this] { return !services.Inhibited(); });
  }

  SessionServices services;
  const Buses buses{services.SessionAddress(), services.SystemAddress()};
};

TEST_F(LongJobTest, AsksThePortalToKeepTheSessionFromBeingSuspendedUntilItEnds) {
  services.OfferPortal();
  services.OfferLogind();
  {
    const LongJob job(kPurpose);
    EXPECT_TRUE(AwaitInhibited());
    EXPECT_EQ(services.SystemBusConnections(), 0);
  }
  EXPECT_TRUE(AwaitAllowed());
  EXPECT_EQ(services.Asked(), QStringList{kPortalsCall});
}

TEST_F(LongJobTest, AsksLogindWhereThereIsNoPortal) {
  services.OfferLogind();
  {
    const LongJob job(kPurpose);
    EXPECT_TRUE(AwaitInhibited());
  }
  EXPECT_TRUE(AwaitAllowed());
  EXPECT_EQ(services.Asked(), QStringList{kLogindsCall});
}

TEST_F(LongJobTest, AsksLogindWhereThePortalIsSilent) {
  services.OfferPortal();
  services.KeepThePortalSilent();
  services.OfferLogind();
  const LongJob job(kPurpose);
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_EQ(services.Asked(), (QStringList{kPortalsCall, kLogindsCall}));
}

// The portal has answered the call before its backend refuses.
TEST_F(LongJobTest, AsksLogindWhereThePortalsBackendRefuses) {
  services.OfferPortal();
  services.LetThePortalRefuse();
  services.OfferLogind();
  const LongJob job(kPurpose);
  EXPECT_TRUE(AwaitInhibited());
  EXPECT_EQ(services.Asked(), (QStringList{kPortalsCall, kLogindsCall}));
}

TEST_F(LongJobTest, AsksLogindWhereThereIsNoSessionBus) {
  services.OfferLogind();
  const Buses withoutSession("unix:path=/nowhere/session", services.SystemAddress());
  const LongJob job(kPurpose);
  EXPECT_TRUE(AwaitInhibited());
}

TEST_F(LongJobTest, EndsWithoutEndingAnother) {
  services.OfferLogind();
  LongJob first(kPurpose);
  EXPECT_TRUE(WaitFor([&] { return services.Asked().size() == 1; }));
  {
    const LongJob second(kPurpose);
    EXPECT_TRUE(WaitFor([&] { return services.SystemBusConnections() == 2; }));
  }
  EXPECT_TRUE(WaitFor([&] { return services.SystemBusConnections() == 1; }));
}

TEST_F(LongJobTest, ShowsItsProgressInTheProgramsEntryOfALauncher) {
  {
    LongJob job(kPurpose);
    for (const auto& [part, percent] :
         {std::pair(0.0, "0%"), {0.429, "42%"}, {7.0, "100%"}, {-1.0, "0%"}, {0.5, "50%"}}) {
      job.SetProgress(part);
      const QString shown = QStringLiteral("application://kelvane-joiner.desktop ") + percent;
      EXPECT_TRUE(WaitFor([&] { return services.Progress() == shown; })) << shown.toStdString();
    }
    job.SetProgress(0.509);  // the same whole percent
  }
  EXPECT_TRUE(WaitFor([&] { return services.Progress().isEmpty(); }));
  EXPECT_EQ(services.ProgressSoFar().size(), 5);
}

// A bus that takes a connection and never sends anything.
class SilentBus {
 public:
  explicit SilentBus(const QString& path) : socket_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.toUtf8().constData(), sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(socket_, 1), 0);
  }
  SilentBus(const SilentBus&) = delete;
  SilentBus& operator=(const SilentBus&) = delete;
  ~SilentBus() {
    ::close(connection_);
    ::close(socket_);
  }
  // Waits for a connection.
  void Accept() { connection_ = ::accept(socket_, nullptr, nullptr); }

 private:
  int socket_;
  int connection_ = -1;
};

TEST(LongJobOnSilentBuses, EndsWithoutWaitingAndPrintsNothing) {
  const QTemporaryDir folder;
  SilentBus session(folder.filePath("session"));
  SilentBus system(folder.filePath("system"));
  const Buses buses("unix:path=" + folder.filePath("session"),
                    "unix:path=" + folder.filePath("system"));
  ::testing::internal::CaptureStderr();
  const std::future<void> ended = std::async(std::launch::async, [&] {
    LongJob job(kPurpose);
    session.Accept();
    system.Accept();  // the job asks logind when the portal hasn't answered for a while
    job.SetProgress(0.5);
  });
  EXPECT_EQ(ended.wait_for(kPatience), std::future_status::ready);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(LongJobWithoutBuses, PrintsNothing) {
  const Buses buses("unix:path=/nowhere/session", "unix:path=/nowhere/system");
  ::testing::internal::CaptureStderr();
  {
    LongJob job(kPurpose);
    job.SetProgress(0.5);
  }
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace kelvane::testing
