// The host's side of the object run-time: how its classes, methods and instance variables come into
// being. Classes are made on the main thread before anything looks them up and live for ever.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "platform/objc_runtime.h"
#include "platform/view.h"

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

namespace platform {

// An instance variable that holds a view strongly and may be read on any thread.
class StrongIvar {
 public:
  std::shared_ptr<UIView> load() const;
  void store(std::shared_ptr<UIView> view);

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<UIView> view_;
};

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

// The class of plain views. Its "dealloc" ends the view.
Class viewClass();
void setClassOfView(UIView& view, Class cls);

// Makes a view of a class registered under viewClass(). When its last reference goes, it is sent
// "dealloc", so that a replaced method runs.
template <typename View, typename... Arguments>
std::shared_ptr<View> makeViewOfClass(Class cls, Arguments&&... arguments) {
  std::shared_ptr<View> view(new View(std::forward<Arguments>(arguments)...),
                             [](View* dying) { objc_msgSend<void>(dying->object(), "dealloc"); });
  setClassOfView(*view, cls);
  return view;
}

}  // namespace platform
