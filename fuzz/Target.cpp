#include "Target.h"

#include <cstdio>

namespace kelvane::fuzz {

std::string Readable(std::string_view bytes) {
  std::string text = "\"";
  for (const char c : bytes) {
    if (c >= ' ' && c <= '~') {
      text += c;
    } else {
      char number[8];
      std::snprintf(number, sizeof(number), "\\x%02X", static_cast<unsigned>(c) & 0xFFU);
      text += number;
    }
  }
  return text + '"';
}

std::string Readable(const QString& text) { return Readable(text.toStdString()); }

void Agree(bool holds, const std::string& what) {
  if (!holds) throw Disagreement(what);
}

}  // namespace kelvane::fuzz
