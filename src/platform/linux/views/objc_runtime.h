// The host's side of the object run-time: defines classes, methods and instance variables. Main
// thread, before they are looked up. Classes are never destroyed.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "platform/objc_runtime.h"

struct objc_object {
  objc_class* isa = nullptr;
};

struct objc_ivar {
  std::ptrdiff_t offset = 0;
};

struct objc_class : objc_object {
  std::string name;
  objc_class* superclass = nullptr;
  std::map<platform::SEL, platform::IMP> methods;
  std::map<std::string, objc_ivar> instanceVariables;
};

namespace platform::backend {

// Creates a class without methods of its own; superclass may be nullptr. Requires a new name.
Class registerClass(const char* name, Class superclass);
// Declares an instance variable at an offset in bytes from the start of the object, which must be a
// StrongIvar if viewAtOffset is used for it.
void addInstanceVariable(Class cls, const char* name, std::ptrdiff_t offset);

template <typename Result, typename... Arguments>
void addMethod(Class cls, const char* name, Result (*code)(id, SEL, Arguments...)) {
  class_addMethod(cls, sel_registerName(name), reinterpret_cast<IMP>(code), "");
}

template <typename Result, typename... Arguments>
void addClassMethod(Class cls, const char* name, Result (*code)(id, SEL, Arguments...)) {
  addMethod(object_getClass(classObject(cls)), name, code);
}

}  // namespace platform::backend
