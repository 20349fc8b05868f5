// The run-time of the host's object system: finds classes, methods and instance variables by name
// and replaces methods. Any thread may look things up; class_addMethod and MSHookMessageEx belong
// to the main thread, before other threads use the class.
//
// Nothing except a called method throws. Functions that look up a name return nullptr if it does
// not exist. Given nullptr for a class, an object or a variable, functions return nullptr or 0, or
// do nothing.
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
// An object of the host, not owned. nullptr is nil.
using id = objc_object*;
// A method's code. It takes the receiver, the selector and the method's arguments, and must be cast
// to that type before it is called.
using IMP = void (*)();

Class objc_getClass(const char* name);
// Returns the class of an object, or the metaclass of a class.
Class object_getClass(id object);
// Returns the class as an object, to which its class methods can be sent.
id classObject(Class cls);
// Returns the selector of this name, which it creates if necessary; never nullptr.
SEL sel_registerName(const char* name);

Ivar class_getInstanceVariable(Class cls, const char* name);
// Returns the variable's position in bytes from the start of the object.
std::ptrdiff_t ivar_getOffset(Ivar ivar);
// Returns the view in the instance variable at this offset, retained. Returns nullptr if the
// variable is nil or the offset is 0. Requires the offset of a variable that holds a view.
std::shared_ptr<UIView> viewAtOffset(id object, std::ptrdiff_t offset);

// Returns the code that runs when an object of the class is sent the selector, its own or an
// inherited one.
IMP class_getMethodImplementation(Class cls, SEL selector);
// Adds a method; types is its type string. Does nothing if the class itself has the method; an
// inherited one is overridden.
void class_addMethod(Class cls, SEL selector, IMP implementation, const char* types);
// Replaces a method of the class, its own or an inherited one, and stores the old code in
// *previous. If there is no such method, does nothing and leaves *previous as it was.
void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous);

// Sends a message by name. Returns Result() if the receiver is nil or does not have the method.
// Requires Result and Arguments to be the method's own types; otherwise the behavior is undefined.
// Exceptions of the method pass through.
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
