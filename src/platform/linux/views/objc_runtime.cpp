#include "platform/objc_runtime.h"

#include <memory>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include "platform/linux/trace.h"
#include "platform/linux/views/hook_texts.h"
#include "platform/linux/views/objc_runtime.h"
#include "platform/linux/views/strong_ivar.h"

namespace platform {
using namespace backend;

namespace {

struct Runtime {
  std::mutex mutex;
  std::map<std::string, std::unique_ptr<objc_class>> classes;
  std::map<std::string, std::unique_ptr<objc_class>> metaclasses;
  std::set<std::string> selectors;
  // What was looked up in vain, as the trace has told.
  std::set<std::string> misses;
};

Runtime& runtime() {
  static auto* instance = new Runtime;
  return *instance;
}

IMP findMethod(Class cls, SEL selector) {
  for (; cls != nullptr; cls = cls->superclass) {
    auto method = cls->methods.find(selector);
    if (method != cls->methods.end()) return method->second;
  }
  return nullptr;
}

// Returns the metaclass of a class, or the class of a metaclass. These require the lock.
Class counterpartOf(Class cls) {
  if (cls == nullptr || cls->isa != nullptr) return cls == nullptr ? nullptr : cls->isa;
  return runtime().classes.at(cls->name).get();
}

std::vector<std::string> classNames() {
  std::vector<std::string> names;
  for (const auto& [name, cls] : runtime().classes) names.push_back(name);
  return names;
}

// Tells of a name that was looked up in vain, but only once: some are looked up again and again.
void traceMiss(std::string text) {
  std::unique_lock lock(runtime().mutex);
  const bool isNew = runtime().misses.insert(text).second;
  lock.unlock();
  if (isNew) traceHook(std::move(text));
}

}  // namespace

void backend::defineMethod(Class cls, const char* name, IMP code) {
  SEL selector = sel_registerName(name);
  std::lock_guard lock(runtime().mutex);
  cls->methods.emplace(selector, code);
}

Class backend::registerClass(const char* name, Class superclass) {
  std::lock_guard lock(runtime().mutex);
  auto metaclass = std::make_unique<objc_class>();
  metaclass->name = name;
  metaclass->superclass = superclass == nullptr ? nullptr : superclass->isa;
  auto cls = std::make_unique<objc_class>();
  cls->isa = metaclass.get();
  cls->name = name;
  cls->superclass = superclass;
  runtime().metaclasses[name] = std::move(metaclass);
  return (runtime().classes[name] = std::move(cls)).get();
}

void backend::addInstanceVariable(Class cls, const char* name, std::ptrdiff_t offset) {
  std::lock_guard lock(runtime().mutex);
  cls->instanceVariables[name].offset = offset;
}

Class objc_getClass(const char* name) {
  std::unique_lock lock(runtime().mutex);
  auto found = runtime().classes.find(name);
  if (found != runtime().classes.end()) return found->second.get();
  std::string text = textOfMissingClass(name, classNames(), __builtin_return_address(0));
  lock.unlock();
  traceMiss(std::move(text));
  return nullptr;
}

Class object_getClass(id object) {
  return object == nullptr ? nullptr : object->isa;
}

id classObject(Class cls) {
  return cls;
}

SEL sel_registerName(const char* name) {
  std::lock_guard lock(runtime().mutex);
  return reinterpret_cast<SEL>(runtime().selectors.insert(name).first->c_str());
}

Ivar class_getInstanceVariable(Class cls, const char* name) {
  std::unique_lock lock(runtime().mutex);
  for (Class at = cls; at != nullptr; at = at->superclass) {
    auto found = at->instanceVariables.find(name);
    if (found != at->instanceVariables.end()) return &found->second;
  }
  if (cls == nullptr) return nullptr;
  std::string text = textOfMissingVariable(cls, name, __builtin_return_address(0));
  lock.unlock();
  traceMiss(std::move(text));
  return nullptr;
}

std::ptrdiff_t ivar_getOffset(Ivar ivar) {
  return ivar == nullptr ? 0 : ivar->offset;
}

std::shared_ptr<UIView> viewAtOffset(id object, std::ptrdiff_t offset) {
  if (object == nullptr || offset == 0) return nullptr;
  return reinterpret_cast<StrongIvar*>(reinterpret_cast<char*>(object) + offset)->load();
}

IMP class_getMethodImplementation(Class cls, SEL selector) {
  std::unique_lock lock(runtime().mutex);
  const IMP code = findMethod(cls, selector);
  if (code != nullptr || cls == nullptr) return code;
  std::string text =
      textOfMissingMessage(cls, counterpartOf(cls), selector, __builtin_return_address(0));
  lock.unlock();
  traceMiss(std::move(text));
  return nullptr;
}

void class_addMethod(Class cls, SEL selector, IMP implementation, const char* /*types*/) {
  if (cls == nullptr) return;
  std::unique_lock lock(runtime().mutex);
  const bool isNew = cls->methods.emplace(selector, implementation).second;
  lock.unlock();
  traceHook(isNew ? textOfAddedMethod(cls, selector, implementation)
                  : textOfPresentMethod(cls, selector, implementation));
}

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous) {
  std::unique_lock lock(runtime().mutex);
  const IMP method = findMethod(cls, selector);
  std::string text = method == nullptr
                         ? textOfMissingMethod(cls, counterpartOf(cls), selector, replacement)
                         : textOfReplacedMethod(cls, selector, replacement);
  if (method != nullptr) {
    *previous = method;
    cls->methods[selector] = replacement;
  }
  lock.unlock();
  traceHook(std::move(text));
}

}  // namespace platform
