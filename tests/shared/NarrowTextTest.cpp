#include <gtest/gtest.h>

#include <string>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

TEST(NarrowText, LettersOfEveryKindComeBackAsTheyWere) {
  for (const char* text : {"", "plain.mp4", "\u00D6land.mp4", "\u0444\u0438\u043B\u044C\u043C",
                           "\u6620\u753B \u20AC", "\U0001F3AC"}) {
    const QString wide = QString::fromUtf8(text);
    EXPECT_EQ(ToNarrow(wide), text);
    EXPECT_EQ(FromNarrow(text), wide) << text;
  }
}

TEST(NarrowText, ALetterCutInTwoIsReplacedOnBothSides) {
  const QString replaced(QChar::ReplacementCharacter);
  EXPECT_EQ(FromNarrow("before \xC3"), QStringLiteral("before ") + replaced);
  EXPECT_EQ(FromNarrow("\x84 behind"), replaced + QStringLiteral(" behind"));
}

TEST(NarrowText, ABreakInTheMiddleOfATextStays) {
  EXPECT_EQ(ToNarrow(QStringLiteral("one\r\ntwo\n")), "one\r\ntwo\n");
  EXPECT_EQ(FromNarrow("one\r\ntwo\n"), QStringLiteral("one\r\ntwo\n"));
}

}  // namespace
}  // namespace kelvane
