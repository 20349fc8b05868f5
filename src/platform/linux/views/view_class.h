// The class of plain views and the subclasses of it that the host registers. Main thread.
#pragma once

#include <memory>
#include <utility>

#include "platform/linux/views/objc_runtime.h"
#include "platform/view.h"

namespace platform::backend {

// Returns the class of plain views, whose "dealloc" destroys the view.
Class viewClass();
// Requires viewClass() or a subclass of it.
void setClassOfView(UIView& view, Class cls);

// Creates a view of a class. Requires viewClass() or a subclass of it. When the last reference is
// released, the view is sent "dealloc", so that a replaced method runs.
template <typename View, typename... Arguments>
std::shared_ptr<View> makeViewOfClass(Class cls, Arguments&&... arguments) {
  std::shared_ptr<View> view(new View(std::forward<Arguments>(arguments)...),
                             [](View* dying) { objc_msgSend<void>(dying->object(), "dealloc"); });
  setClassOfView(*view, cls);
  return view;
}

}  // namespace platform::backend
