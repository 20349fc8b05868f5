// The classes of views: plain ones, and those that the host registers below them. Main thread.
#pragma once

#include <memory>
#include <utility>

#include "platform/linux/views/objc_runtime.h"
#include "platform/view.h"

namespace platform::backend {

// The class of plain views. Its "dealloc" ends the view.
Class viewClass();
void setClassOfView(UIView& view, Class cls);

// Makes a view. Requires viewClass() or a class below it. When its last reference goes, the view
// is sent "dealloc", so that a replaced method runs.
template <typename View, typename... Arguments>
std::shared_ptr<View> makeViewOfClass(Class cls, Arguments&&... arguments) {
  std::shared_ptr<View> view(new View(std::forward<Arguments>(arguments)...),
                             [](View* dying) { objc_msgSend<void>(dying->object(), "dealloc"); });
  setClassOfView(*view, cls);
  return view;
}

}  // namespace platform::backend
