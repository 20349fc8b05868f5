// The run-time of the host's object system: classes, methods and instance variables found by name,
// and the hooking loader's method replacement. Any thread may look up; classes are changed on the
// main thread, before other threads use them. A name that does not exist gives nullptr, and a
// nullptr passed on gives nullptr, 0 or nothing.
#pragma once

#include <cstddef>
#include <memory>

struct objc_class;
struct objc_ivar;
struct objc_object;
struct objc_selector;

namespace platform {

class UIView;

using Class = objc_class*;
using Ivar = objc_ivar*;
using SEL = const objc_selector*;
// An object of the host. Never owned here; nullptr is nil.
using id = objc_object*;
// A method's code. It takes the receiver, the selector and then the method's arguments; callers
// cast it to that type.
using IMP = void (*)();

Class objc_getClass(const char* name);
// The class of an object; of a class, its metaclass.
Class object_getClass(id object);
id classObject(Class cls);
SEL sel_registerName(const char* name);

Ivar class_getInstanceVariable(Class cls, const char* name);
// Bytes from the start of the object.
std::ptrdiff_t ivar_getOffset(Ivar ivar);
// The view that the instance variable at this offset holds, retained; nullptr if it holds none.
std::shared_ptr<UIView> viewAtOffset(id object, std::ptrdiff_t offset);

IMP class_getMethodImplementation(Class cls, SEL selector);
// Adds a method that the class does not have yet; types is the method's type string.
void class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);
// Puts replacement in the place of a method and stores the code that stood there in *previous.
// Changes nothing where there is no such method.
void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous);

// Sends a message by name. A nil receiver, or one without the method, gives a zero result.
template <typename Result, typename... Arguments>
Result objc_msgSend(id receiver, const char* name, Arguments... arguments) {
  if (receiver == nullptr) return Result();
  SEL selector = sel_registerName(name);
  IMP code = class_getMethodImplementation(object_getClass(receiver), selector);
  if (code == nullptr) return Result();
  return reinterpret_cast<Result (*)(id, SEL, Arguments...)>(code)(receiver, selector,
                                                                   arguments...);
}

}  // namespace platform
