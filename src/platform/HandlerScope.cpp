#include "platform/HandlerScope.h"

#include <QCoreApplication>

#include "platform/Form.h"

namespace kelvane {
namespace {
int handlersOnTheStack = 0;
}

HandlerScope::HandlerScope(QObject* sender) {
  for (QObject* object = sender; object != nullptr && form_ == nullptr; object = object->parent()) {
    form_ = qobject_cast<Form*>(object);
  }
  if (form_ != nullptr) form_->HandlerBegins();
  ++handlersOnTheStack;
}

HandlerScope::~HandlerScope() {
  if (form_ != nullptr) form_->HandlerEnds();
  --handlersOnTheStack;
  if (handlersOnTheStack == 0 && !Form::AnyLoaded()) QCoreApplication::quit();
}

}  // namespace kelvane
