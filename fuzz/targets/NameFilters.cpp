// The filter text of a file dialog becomes Qt's name filters, and the dialog shows its
// descriptions.
#include "platform/NameFilters.h"

#include <QComboBox>
#include <QFileDialog>

#include "Target.h"

namespace kelvane::fuzz {
namespace {

struct Filter {
  QString description;
  QString pattern;
};

// Bar for bar, from the left.
std::vector<Filter> Read(const QString& text) {
  std::vector<Filter> filters;
  QString part;
  bool inPattern = false;
  for (const QChar c : text + QLatin1Char('|')) {
    if (c != u'|') {
      part += c;
      continue;
    }
    if (inPattern) {
      filters.back().pattern = part;
    } else {
      filters.push_back({part, part});
    }
    inPattern = !inPattern;
    part.clear();
  }
  return filters;
}

// Whether Qt reads the text as a pattern, and leaves it out of what it shows.
bool IsPattern(const QString& text) {
  const QString signs = QStringLiteral("_.,*? +;#-[]@{}/!<>$%&=^~:");
  for (const QChar c : text) {
    const bool plain = (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') ||
                       (c >= u'A' && c <= u'Z') || signs.contains(c);
    if (!plain) return false;
  }
  return true;
}

// Whether it is shown as it is in one line.
bool IsPlain(const QString& text) {
  for (const QChar c : text) {
    if (c < u' ' || c > u'~') return false;
  }
  return true;
}

// One dialog for all inputs. It is never on show.
QFileDialog& Dialog() {
  static auto* const dialog = [] {
    auto* made = new QFileDialog;
    made->setOption(QFileDialog::DontUseNativeDialog);
    made->setOption(QFileDialog::HideNameFilterDetails);
    return made;
  }();
  return *dialog;
}

void Run(std::string_view input) {
  const QString text = QString::fromUtf8(input.data(), static_cast<qsizetype>(input.size()));
  const QStringList filters = NameFilters(text);
  if (text.isEmpty()) return Agree(filters.isEmpty(), "filters of no text");

  const std::vector<Filter> expected = Read(text);
  AgreeOn("number of filters of " + Readable(text), static_cast<std::size_t>(filters.size()),
          expected.size());
  bool plain = true;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const auto& [description, pattern] = expected[i];
    const QString shownPattern = pattern == u"*.*" ? QStringLiteral("*") : pattern;
    AgreeOn("filter of " + Readable(text), filters[static_cast<qsizetype>(i)],
            description + QLatin1String(" (") + shownPattern + QLatin1Char(')'));
    plain = plain && IsPlain(description) && IsPattern(shownPattern);
  }
  if (!plain) return;

  Dialog().setNameFilters(filters);
  const auto* const shown = Dialog().findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
  AgreeOn("shown filters of " + Readable(text), static_cast<std::size_t>(shown->count()),
          expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    AgreeOn("shown description", shown->itemText(static_cast<int>(i)).simplified(),
            expected[i].description.simplified());
  }
}

}  // namespace

const Target kNameFilters = {"NameFilters", Run};

}  // namespace kelvane::fuzz
