#include "support/TabOrder.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QStringList>
#include <QtTest/QTest>

#include "support/Wait.h"

namespace kelvane::testing {

std::string TabOrder(QWidget& window) {
  window.activateWindow();
  EXPECT_TRUE(WaitFor([&] { return window.isActiveWindow(); })) << "the window isn't activated";
  QStringList names;
  while (true) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const QWidget* focus = QApplication::focusWidget();
    const QString own = focus->objectName();
    const QString name = own.isEmpty() ? focus->parentWidget()->objectName() : own;
    if (names.contains(name)) return names.join(QLatin1Char('\n')).toStdString();
    names << name;
  }
}

}  // namespace kelvane::testing
