#include "platform/objc_runtime.h"

#include <objc/runtime.h>
#import <substrate.h>

#import "platform/ios/native_view.h"

namespace platform {
namespace {

::SEL native(SEL selector) {
  return (::SEL)selector;
}

// For a method that does not exist, the platform would return a function that forwards messages.
bool hasMethod(Class cls, SEL selector) {
  return cls != nullptr && selector != nullptr &&
         class_respondsToSelector((::Class)cls, native(selector));
}

}  // namespace

Class objc_getClass(const char* name) {
  return (Class)(void*)::objc_getClass(name);
}

Class object_getClass(id object) {
  return (Class)(void*)::object_getClass((::id)object);
}

id classObject(Class cls) {
  return (id)(void*)cls;
}

SEL sel_registerName(const char* name) {
  return (SEL)(void*)::sel_registerName(name);
}

Ivar class_getInstanceVariable(Class cls, const char* name) {
  return cls == nullptr ? nullptr : ::class_getInstanceVariable((::Class)cls, name);
}

std::ptrdiff_t ivar_getOffset(Ivar ivar) {
  return ivar == nullptr ? 0 : ::ivar_getOffset(ivar);
}

std::shared_ptr<UIView> viewAtOffset(id object, std::ptrdiff_t offset) {
  // The class is at offset 0, so there is no variable there.
  if (object == nullptr || offset == 0) return nullptr;
  char* const start = (char*)(void*)object;
  return viewOfNative(*(::UIView**)(void*)(start + offset));
}

IMP class_getMethodImplementation(Class cls, SEL selector) {
  if (!hasMethod(cls, selector)) return nullptr;
  return (IMP)::class_getMethodImplementation((::Class)cls, native(selector));
}

void class_addMethod(Class cls, SEL selector, IMP implementation, const char* types) {
  if (cls == nullptr) return;
  ::class_addMethod((::Class)cls, native(selector), (::IMP)implementation, types);
}

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous) {
  if (!hasMethod(cls, selector)) return;
  ::MSHookMessageEx((::Class)cls, native(selector), (::IMP)replacement, (::IMP*)previous);
}

}  // namespace platform
