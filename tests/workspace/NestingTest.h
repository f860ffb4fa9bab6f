#pragma once

#include <QTimer>
#include <functional>
#include <string>
#include <utility>

#include "workspace/MainWindowTest.h"

namespace kelvane::testing {

// What happens when one thing comes inside another: a tool that runs serves the windows at each
// block of its text.
class Nesting : public MainWindowTest {
 protected:
  // To be done at the next DoEvents behind the arrival of that block.
  void AfterBlock(const QString& block, std::function<void()> step) const {
    Get<TextBox>("Text2").Change = [this, block, step = std::move(step)](int) mutable {
      if (step && Store().endsWith(block)) AtNextDoEvents(std::exchange(step, nullptr));
    };
  }
  // More than a pipe holds.
  static constexpr int kMuchText = 400'000;
  // Shell commands: print that much, then make the file.
  static QString MuchTextAndThen(const QString& file) {
    return QStringLiteral("yes | head -c %1\ntouch '%2'\n").arg(kMuchText).arg(file);
  }
  // Shell commands that wait for the file, within reason.
  static QString WaitForFile(const QString& file) {
    return QStringLiteral("timeout 20 sh -c \"until [ -e '%1' ]; do sleep 0.01; done\"\n")
        .arg(file);
  }
  static std::string StatusOf(const Form2& job) {
    return job.Find<Label>(QStringLiteral("Label1(2)")).Caption().toStdString();
  }
  static void Cancel(const Form2& job) { Release(job.Find<Label>(QStringLiteral("Label2"))); }
  // Until the program ends by itself; returns its exit status.
  static int RunProgram() {
    constexpr int kGoodTime = 20000;  // ms
    QTimer deadline;
    QObject::connect(&deadline, &QTimer::timeout, [] {
      ADD_FAILURE() << "the program doesn't end";
      QApplication::exit(1);
    });
    deadline.start(kGoodTime);
    return QApplication::exec();
  }
  float MainBar() const { return Get<ProgressBar>("pbar").Value(); }
};

}  // namespace kelvane::testing
