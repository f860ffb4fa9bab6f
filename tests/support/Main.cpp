#include <gtest/gtest.h>

#include <QLocale>

#include "platform/App.h"
#include "shared/Product.h"

// Tests run on the offscreen platform unless QT_QPA_PLATFORM says otherwise, in the C locale, and
// without the developer's session bus and the system bus.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("LC_ALL", "C.UTF-8");
  qunsetenv("LANGUAGE");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  for (const char* bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) {
    qputenv(bus, "unix:path=/nowhere/bus");
  }
  const kelvane::App app("kelvane", kelvane::kProductName);
  QLocale::setDefault(QLocale::c());
  return RUN_ALL_TESTS();
}
