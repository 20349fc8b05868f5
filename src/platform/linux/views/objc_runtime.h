// The host's side of the object run-time: defines classes, methods and instance variables. Main
// thread, before they are looked up. Classes are never destroyed.
#pragma once

#include <cstddef>

#include "platform/linux/views/objc_class.h"
#include "platform/objc_runtime.h"

namespace platform::backend {

// Defines a method without a trace.
void defineMethod(Class cls, const char* name, IMP code);

// Creates a class without methods of its own; superclass may be nullptr. Requires a new name.
Class registerClass(const char* name, Class superclass);
// Declares an instance variable at an offset in bytes from the start of the object, which must be a
// StrongIvar if viewAtOffset is used for it.
void addInstanceVariable(Class cls, const char* name, std::ptrdiff_t offset);

template <typename Result, typename... Arguments>
void addMethod(Class cls, const char* name, Result (*code)(id, SEL, Arguments...)) {
  defineMethod(cls, name, reinterpret_cast<IMP>(code));
}

template <typename Result, typename... Arguments>
void addClassMethod(Class cls, const char* name, Result (*code)(id, SEL, Arguments...)) {
  addMethod(object_getClass(classObject(cls)), name, code);
}

}  // namespace platform::backend
