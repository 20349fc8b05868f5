#include "platform/linux/views/hook_texts.h"

#include <set>

#include <dlfcn.h>

#include "platform/linux/views/objc_class.h"

namespace platform::backend {
namespace {

std::string nameOf(SEL selector) {
  return reinterpret_cast<const char*>(selector);
}

// Only a class has a class of its own here, a metaclass has none.
bool isMetaclass(Class cls) {
  return cls->isa == nullptr;
}

std::string kindOf(Class cls) {
  return isMetaclass(cls) ? "class method " : "method ";
}

// Returns " (my.so)" for the library that contains the address.
std::string origin(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "";
  const std::string path = info.dli_fname;
  return " (" + path.substr(path.rfind('/') + 1) + ")";
}

std::string origin(IMP code) {
  return origin(reinterpret_cast<const void*>(code));
}

template <typename Names>
std::string joined(const Names& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "nothing" : text;
}

// Returns the names of the methods, own and inherited.
std::string methodsOf(Class cls) {
  std::set<std::string> names;
  for (; cls != nullptr; cls = cls->superclass) {
    for (const auto& [selector, code] : cls->methods) names.insert(nameOf(selector));
  }
  return joined(names);
}

// Returns the names of the instance variables, own and inherited.
std::string variablesOf(Class cls) {
  std::set<std::string> names;
  for (; cls != nullptr; cls = cls->superclass) {
    for (const auto& [name, variable] : cls->instanceVariables) names.insert(name);
  }
  return joined(names);
}

// Tells that the class does not have the method, and what it has. other: see the header.
std::string absence(Class cls, Class other, SEL selector) {
  // A class method is easily taken for a method of the instances.
  return "no " + kindOf(cls) + nameOf(selector) + " in " + cls->name +
         "; it has: " + methodsOf(cls) + (isMetaclass(cls) ? "; methods: " : "; class methods: ") +
         methodsOf(other);
}

}  // namespace

std::string textOfReplacedMethod(Class cls, SEL selector, IMP code) {
  return "hook taken: " + kindOf(cls) + nameOf(selector) + " of " + cls->name + origin(code);
}

std::string textOfMissingMethod(Class cls, Class other, SEL selector, IMP code) {
  if (cls == nullptr) return "hook missed: " + nameOf(selector) + " of no class" + origin(code);
  return "hook missed: " + absence(cls, other, selector) + origin(code);
}

std::string textOfMissingMessage(Class cls, Class other, SEL selector, const void* caller) {
  return "message missed: " + absence(cls, other, selector) + origin(caller);
}

std::string textOfAddedMethod(Class cls, SEL selector, IMP code) {
  return "method added: " + nameOf(selector) + " to " + cls->name + origin(code);
}

std::string textOfPresentMethod(Class cls, SEL selector, IMP code) {
  return "method not added: " + cls->name + " has " + nameOf(selector) + origin(code);
}

std::string textOfMissingVariable(Class cls, const std::string& name, const void* caller) {
  return "no variable " + name + " in " + cls->name + "; it has: " + variablesOf(cls) +
         origin(caller);
}

std::string textOfMissingClass(const std::string& name, const std::vector<std::string>& classes,
                               const void* caller) {
  return "no class " + name + "; there are: " + joined(classes) + origin(caller);
}

}  // namespace platform::backend
