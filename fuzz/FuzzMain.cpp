// A fuzzer of the target KELVANE_FUZZ_TARGET.
#include <QLocale>
#include <QtGlobal>

#include "Target.h"
#include "platform/App.h"

extern "C" int LLVMFuzzerInitialize(int* /*argumentCount*/, char*** /*arguments*/) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static const kelvane::App app("kelvane");
  QLocale::setDefault(QLocale::c());
  return 0;
}

// An uncaught Disagreement ends the fuzzer, which then keeps the input.
extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t count) {
  kelvane::fuzz::KELVANE_FUZZ_TARGET.run({bytes, count});
  return 0;
}
