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

using namespace Qt::StringLiterals;

DialogAnswers* innermost = nullptr;

// "title | text | icon | buttons" of a message box, "title" of any other dialog.
std::string Describe(const QDialog& dialog) {
  QStringList parts(dialog.windowTitle());
  if (const auto* box = qobject_cast<const QMessageBox*>(&dialog)) {
    const auto icon = box->icon();
    parts << box->text()
          << (icon == QMessageBox::NoIcon    ? u"no icon"_s
              : icon == QMessageBox::Warning ? u"exclamation"_s
                                             : u"icon %1"_s.arg(static_cast<int>(icon)));
    QStringList buttons;
    for (const auto& [button, name] : {std::pair(QMessageBox::Yes, "Yes"),
                                       {QMessageBox::No, "No"},
                                       {QMessageBox::Ok, "OK"},
                                       {QMessageBox::Cancel, "Cancel"}}) {
      if (box->standardButtons().testFlag(button)) buttons << QLatin1String(name);
    }
    parts << buttons.join(u' ');
  }
  return parts.join(u" | "_s).toStdString();
}

}  // namespace

Answer TypeFile(const QString& path) {
  return [path](QDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
    ASSERT_NE(name, nullptr) << "not a file dialog: " << Describe(dialog);
    name->setText(path);
    dialog.accept();
  };
}

Answer TypeNameInFolder(const QString& path, QString& remark) {
  return [path, &remark](QDialog& dialog) {
    const QFileInfo file(path);
    if (file.dir().exists()) dynamic_cast<QFileDialog&>(dialog).setDirectory(file.dir());
    auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
    name->setText(file.dir().exists() ? file.fileName() : path);
    remark = name->accessibleDescription();
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
  constexpr int kInterval = 2;  // ms
  QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
  timer_.start(kInterval);
}

DialogAnswers::~DialogAnswers() {
  innermost = outer_;
  EXPECT_TRUE(answers_.empty()) << answers_.size() << " more dialogs were expected";
}

void DialogAnswers::Look() {
  if (innermost != this) return;
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr || !dialog->isVisible()) return;
  seen_.push_back(Describe(*dialog));
  if (answers_.empty()) {
    ADD_FAILURE() << "an unexpected dialog: " << seen_.back();
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
