#include <gtest/gtest.h>

#include <QLocale>

#include "platform/App.h"
#include "shared/Product.h"

// The windows under test stand on Qt's own screen that isn't there, and read and write
// numbers with a comma between the thousands unless a test says otherwise.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const kelvane::App app("kelvane", kelvane::kProductName);
  QLocale::setDefault(QLocale::c());
  return RUN_ALL_TESTS();
}
