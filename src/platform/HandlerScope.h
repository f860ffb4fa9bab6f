#pragma once

#include <QPointer>
#include <QWidget>

namespace kelvane {

// The base of all windows. It knows whether the window is loaded, and how many of the window's
// handlers are on the stack.
class HandlerOwner : public QWidget {
  Q_OBJECT
 public:
  ~HandlerOwner() override;

  bool Loaded() const { return loaded_; }
  static bool AnyLoaded();
  // Makes the window delete itself once it is unloaded and none of its handlers runs.
  void DeleteWhenUnloaded() { deleteWhenUnloaded_ = true; }

 protected:
  void SetLoaded();
  void SetUnloaded();

 private:
  friend class HandlerScope;
  void HandlerEnds();

  int handlers_ = 0;  // on the stack
  bool loaded_ = false;
  bool deleteWhenUnloaded_ = false;
};

// Marks, while it exists, that an event handler of a window runs. A window that is unloaded
// meanwhile is deleted only after its last handler has returned, and the program ends only after
// the last handler of all windows has returned. Belongs to the user-interface thread.
class HandlerScope {
 public:
  // `sender` is the window itself or one of its descendants.
  explicit HandlerScope(QObject* sender);
  ~HandlerScope();
  HandlerScope(const HandlerScope&) = delete;
  HandlerScope& operator=(const HandlerScope&) = delete;

 private:
  QPointer<HandlerOwner> owner_;
};

// Calls `handler` in a HandlerScope. Does nothing if `handler` is empty.
template <class Handler, class... Arguments>
void Raise(QObject* sender, const Handler& handler, const Arguments&... arguments) {
  if (!handler) return;
  const HandlerScope scope(sender);
  handler(arguments...);
}

}  // namespace kelvane
