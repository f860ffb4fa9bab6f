#include "platform/HandlerScope.h"

#include <QCoreApplication>

namespace kelvane {
namespace {
int handlersOnTheStack = 0;
int loadedWindows = 0;
}  // namespace

HandlerOwner::~HandlerOwner() {
  if (loaded_) --loadedWindows;
}

bool HandlerOwner::AnyLoaded() { return loadedWindows > 0; }

void HandlerOwner::SetLoaded() {
  loaded_ = true;
  ++loadedWindows;
}

void HandlerOwner::SetUnloaded() {
  loaded_ = false;
  --loadedWindows;
}

void HandlerOwner::HandlerEnds() {
  --handlers_;
  if (deleteWhenUnloaded_ && !loaded_ && handlers_ == 0) deleteLater();
}

HandlerScope::HandlerScope(QObject* sender) {
  for (QObject* each = sender; each != nullptr && owner_ == nullptr; each = each->parent()) {
    owner_ = qobject_cast<HandlerOwner*>(each);
  }
  if (owner_ != nullptr) ++owner_->handlers_;
  ++handlersOnTheStack;
}

HandlerScope::~HandlerScope() {
  if (owner_ != nullptr) owner_->HandlerEnds();
  --handlersOnTheStack;
  if (handlersOnTheStack == 0 && !HandlerOwner::AnyLoaded()) QCoreApplication::quit();
}

}  // namespace kelvane
