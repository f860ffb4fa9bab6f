#pragma once

#include <QPointer>

class QObject;

namespace kelvane {

class Form;

// Stands on the stack while an event handler of a form runs. A form that is unloaded meanwhile is
// deleted no earlier than when its last handler has returned, and the program ends no earlier than
// when the last handler of all has.
class HandlerScope {
 public:
  // `sender` is the form itself or anything that lives in it.
  explicit HandlerScope(QObject* sender);
  ~HandlerScope();
  HandlerScope(const HandlerScope&) = delete;
  HandlerScope& operator=(const HandlerScope&) = delete;

 private:
  QPointer<Form> form_;
};

// Runs `handler` if one is wired.
template <class Handler, class... Arguments>
void Raise(QObject* sender, const Handler& handler, const Arguments&... arguments) {
  if (!handler) return;
  const HandlerScope scope(sender);
  handler(arguments...);
}

}  // namespace kelvane
