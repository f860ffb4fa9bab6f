#include "support/ScreenReader.h"

#include <gtest/gtest.h>

#include <QMetaEnum>
#include <QWidget>

namespace kelvane::testing {
namespace {

void Hear(const QAccessibleInterface& node, int level, std::string& lines) {
  if (node.state().invisible) return;
  const bool layout = node.role() == QAccessible::Client && node.text(QAccessible::Name).isEmpty();
  if (!layout) lines += std::string(static_cast<std::size_t>(2 * level), ' ') + Heard(node) + '\n';
  for (int i = 0; i < node.childCount(); ++i) {
    const QAccessibleInterface* child = node.child(i);
    ASSERT_NE(child, nullptr) << Heard(node) << " has no child " << i;
    EXPECT_EQ(child->parent(), &node) << Heard(*child) << " names another parent";
    EXPECT_EQ(node.indexOfChild(child), i) << Heard(*child) << " has another index";
    Hear(*child, layout ? level : level + 1, lines);
  }
}

QAccessibleInterface* Find(QAccessibleInterface& node, const std::string& line) {
  if (node.state().invisible) return nullptr;
  if (Heard(node) == line) return &node;
  for (int i = 0; i < node.childCount(); ++i) {
    if (QAccessibleInterface* found = Find(*node.child(i), line)) return found;
  }
  return nullptr;
}

}  // namespace

QAccessibleInterface& NodeOf(QObject& object) {
  return *QAccessible::queryAccessibleInterface(&object);
}

std::string Heard(const QAccessibleInterface& node) {
  std::string line = QMetaEnum::fromType<QAccessible::Role>().valueToKey(node.role());
  line += " \"" + node.text(QAccessible::Name).toStdString() + '"';
  auto& readable = const_cast<QAccessibleInterface&>(node);
  if (QAccessibleValueInterface* value = readable.valueInterface()) {
    line += " = " + value->currentValue().toString().toStdString();
  }
  if (readable.textInterface() != nullptr) {
    line += ": \"" + node.text(QAccessible::Value).toStdString() + '"';
  }
  const std::string description = node.text(QAccessible::Description).toStdString();
  return description.empty() ? line : line + " (" + description + ')';
}

std::string HeardIn(QWidget& window) {
  std::string lines = "\n";
  Hear(NodeOf(window), 0, lines);
  return lines;
}

QAccessibleInterface* FindHeard(QWidget& window, const std::string& line) {
  return Find(NodeOf(window), line);
}

}  // namespace kelvane::testing
