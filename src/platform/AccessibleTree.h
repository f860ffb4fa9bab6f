#pragma once

#include <QList>

class QWidget;

// A window as a screen reader walks through it: what shows and has something to say, in the order
// in which it is read, from left to right and from the top down. Boxes without a meaning are no
// level of their own.
namespace kelvane {

class Control;

// What stands in a form or a control.
QList<QWidget*> SpokenChildren(const QWidget& parent);

// What stands in the control's container by it: itself, its controls where it is no level of its
// own, or nothing.
QList<QWidget*> SpokenParts(Control& control);

// The form or the control that the control stands in.
QWidget* SpokenParent(const Control& control);

}  // namespace kelvane
