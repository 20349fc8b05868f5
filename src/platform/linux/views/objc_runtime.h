// The host's side of the object run-time: how its classes, methods and instance variables come into
// being. Classes are made on the main thread before anything looks them up and live for ever.
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

// superclass may be nullptr. The class's own methods and those of its metaclass start empty.
Class registerClass(const char* name, Class superclass);
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
