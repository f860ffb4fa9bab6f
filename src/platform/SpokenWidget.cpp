#include "platform/SpokenWidget.h"

#include <QMenuBar>
#include <algorithm>

namespace kelvane {
namespace {

// Sorts the widgets into lines from top to bottom, and each line from left to right. The widget
// with the highest middle begins a line, which takes in all widgets whose middle isn't below that
// widget's bottom. The remaining widgets form further lines in the same way.
void SortForReading(QList<SpokenWidget*>& widgets) {
  const auto middle = [](const SpokenWidget* widget) { return widget->geometry().center().y(); };
  const auto left = [](const SpokenWidget* widget) { return widget->x(); };
  std::ranges::stable_sort(widgets, {}, middle);
  for (auto first = widgets.begin(); first != widgets.end();) {
    const int bottom = (*first)->geometry().bottom();
    const auto end = std::ranges::find_if(
        std::next(first), widgets.end(), [&](int below) { return below > bottom; }, middle);
    std::ranges::stable_sort(first, end, {}, left);
    first = end;
  }
}

}  // namespace

bool SpokenWidget::IsBar() const {
  return role_ == SpokenRole::kHorizontalBar || role_ == SpokenRole::kVerticalBar;
}

void SpokenWidget::setMeaning(const QString& meaning) {
  setAccessibleName(meaning);
  if (stockWidget_ != nullptr) stockWidget_->setAccessibleName(meaning);
}

void SpokenWidget::setStockWidget(QWidget* stockWidget) {
  stockWidget_ = stockWidget;
  stockWidget_->setAccessibleName(Meaning());
}

bool SpokenWidget::IsNode() const { return role_ != SpokenRole::kBox || !Meaning().isEmpty(); }

// Returns the nodes that stand for this widget in its parent: the widget itself if it is a node, or
// else the nodes in it. Empty if it isn't spoken.
QList<QWidget*> SpokenWidget::Nodes() {
  if (!IsSpoken()) return {};
  return IsNode() ? QList<QWidget*>{this} : NodesIn(*this);
}

QList<QWidget*> SpokenWidget::NodesIn(const QWidget& box) {
  QList<SpokenWidget*> widgets;
  for (QObject* child : box.children()) {
    auto* widget = qobject_cast<SpokenWidget*>(child);
    if (widget != nullptr && !widget->isHidden() && widget->IsSpoken()) widgets << widget;
  }
  SortForReading(widgets);
  QList<QWidget*> nodes;
  for (SpokenWidget* widget : widgets) nodes << widget->Nodes();
  return nodes;
}

QList<QWidget*> SpokenWidget::SpokenChildren(const QWidget& parent) {
  if (const auto* widget = qobject_cast<const SpokenWidget*>(&parent)) {
    if (widget->stockWidget_ != nullptr) return {widget->stockWidget_};
    return NodesIn(*widget);
  }
  QList<QWidget*> children;
  auto* menus = parent.findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly);
  if (menus != nullptr && menus->height() > 0) children << menus;
  return children << NodesIn(parent);
}

QWidget* SpokenWidget::SpokenParent() const {
  QWidget* parent = parentWidget();
  for (; parent != nullptr; parent = parent->parentWidget()) {
    const auto* box = qobject_cast<const SpokenWidget*>(parent);
    if (box == nullptr || box->IsNode()) break;
  }
  return parent;
}

void SpokenWidget::AnnounceValue() {
  if (!QAccessible::isActive()) return;
  const QAccessibleInterface* node = QAccessible::queryAccessibleInterface(this);
  QAccessibleValueChangeEvent event(this, node->text(QAccessible::Value));
  QAccessible::updateAccessibility(&event);
}

void SpokenWidget::AnnounceCaption() {
  if (!QAccessible::isActive()) return;
  QAccessibleEvent event(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&event);
  for (SpokenWidget* widget : window()->findChildren<SpokenWidget*>()) {
    if (widget->ReadOut() == objectName()) widget->AnnounceValue();
  }
}

void SpokenWidget::AnnounceNodes(QAccessible::Event change) {
  if (!QAccessible::isActive() || !window()->isVisible()) return;
  for (QWidget* node : Nodes()) {
    QAccessibleEvent event(node, change);
    QAccessible::updateAccessibility(&event);
  }
}

}  // namespace kelvane
