#include "support/DialogAnswers.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QStringList>
#include <utility>

namespace kelvane::testing {
namespace {

QString Icon(const QMessageBox& box) {
  switch (box.icon()) {
    case QMessageBox::NoIcon:
      return QStringLiteral("no icon");
    case QMessageBox::Warning:
      return QStringLiteral("exclamation");
    default:
      return QStringLiteral("icon %1").arg(static_cast<int>(box.icon()));
  }
}

QString Buttons(const QMessageBox& box) {
  QStringList names;
  for (const auto& [button, name] : {std::pair(QMessageBox::Yes, "Yes"),
                                     {QMessageBox::No, "No"},
                                     {QMessageBox::Ok, "OK"},
                                     {QMessageBox::Cancel, "Cancel"}}) {
    if (box.standardButtons().testFlag(button)) names << QLatin1String(name);
  }
  return names.join(QLatin1Char(' '));
}

DialogAnswers* innermost = nullptr;

std::string Describe(const QDialog& dialog) {
  QStringList parts(dialog.windowTitle());
  if (const auto* box = qobject_cast<const QMessageBox*>(&dialog)) {
    parts << box->text() << Icon(*box) << Buttons(*box);
  }
  return parts.join(QStringLiteral(" | ")).toStdString();
}

}  // namespace

Answer TypeFile(const QString& path) {
  return [path](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(name, nullptr) << "not a file dialog: " << Describe(dialog);
    name->setText(path);
    dialog.accept();
  };
}

Answer CancelDialog() {
  return [](QDialog& dialog) { dialog.reject(); };
}

Answer PressButton(QMessageBox::StandardButton button) {
  return [button](QDialog& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    ASSERT_NE(box, nullptr) << "not a message box: " << Describe(dialog);
    ASSERT_NE(box->button(button), nullptr) << "no such button: " << Describe(dialog);
    box->button(button)->click();
  };
}

DialogAnswers::DialogAnswers(std::initializer_list<Answer> answers)
    : answers_(answers), outer_(std::exchange(innermost, this)) {
  constexpr int kLook = 2;  // ms
  QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
  timer_.start(kLook);
}

DialogAnswers::~DialogAnswers() {
  innermost = outer_;
  EXPECT_TRUE(answers_.empty()) << answers_.size() << " more dialogs should have come up";
}

void DialogAnswers::Look() {
  if (innermost != this) return;
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr || !dialog->isVisible()) return;
  seen_.push_back(Describe(*dialog));
  if (answers_.empty()) {
    ADD_FAILURE() << "a dialog that nobody expected: " << seen_.back();
    dialog->reject();
    return;
  }
  const Answer answer = std::move(answers_.front());
  answers_.pop_front();
  answer(*dialog);
  if (dialog->isVisible()) {
    ADD_FAILURE() << "the answer didn't close the dialog: " << seen_.back();
    dialog->reject();
  }
}

}  // namespace kelvane::testing
