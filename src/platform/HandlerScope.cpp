#include "platform/HandlerScope.h"

#include "platform/Form.h"

namespace kelvane {

HandlerScope::HandlerScope(QObject* sender) {
  for (QObject* object = sender; object != nullptr && form_ == nullptr; object = object->parent()) {
    form_ = qobject_cast<Form*>(object);
  }
  if (form_ != nullptr) ++form_->handlers_;
}

HandlerScope::~HandlerScope() {
  if (form_ == nullptr) return;
  --form_->handlers_;
  form_->DeleteIfIdle();
}

}  // namespace kelvane
