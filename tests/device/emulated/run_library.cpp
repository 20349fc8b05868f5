// Runs the very bytes of Lumora8.dylib for this processor: its initialiser, and then each of the
// functions that it has put into the host, against a host that only records. usage: run_library
// LIBRARY

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "mach_o_image.h"

namespace {

// What the library asked of its host, in order.
std::vector<std::string> events;

struct FakeString {
  void* isa;
  std::string text;
};
std::set<const void*> strings;

struct Hook {
  std::string place;
  void* code;
};
std::vector<Hook> hooks;

// Classes are told apart by their names; a metaclass is the class of a class.
std::map<std::string, std::string*>& classes() {
  static std::map<std::string, std::string*> all;
  return all;
}

const void* classNamed(const std::string& name) {
  auto& entry = classes()[name];
  if (entry == nullptr) entry = new std::string(name);
  return entry;
}

std::string nameOfClass(const void* cls) {
  return *static_cast<const std::string*>(cls);
}

std::string textOf(const void* object) {
  return strings.count(object) != 0 ? static_cast<const FakeString*>(object)->text : "";
}

void record(const std::string& event) {
  events.push_back(event);
}

// The host's own methods, which every replacement must run.
void ownDealloc(void*, const char*) {
  record("own dealloc");
}
void ownLaunch(void*, const char*, void*) {
  record("own launch");
}
// As wide as an address, like all lengths on the device.
using CGFloat = std::conditional_t<sizeof(void*) == 8, double, float>;

CGFloat ownDefaultHeight(void*, const char*) {
  record("own defaultHeight");
  return 96;
}

void hookMessage(const void* cls, const char* selector, void* replacement, void** previous) {
  const std::string place = nameOfClass(cls) + " " + selector;
  hooks.push_back({place, replacement});
  if (std::strcmp(selector, "dealloc") == 0) *previous = reinterpret_cast<void*>(ownDealloc);
  if (std::strcmp(selector, "defaultHeight") == 0) {
    *previous = reinterpret_cast<void*>(ownDefaultHeight);
  }
  if (std::strcmp(selector, "applicationDidFinishLaunching:") == 0) {
    *previous = reinterpret_cast<void*>(ownLaunch);
  }
}

char addMethod(const void* cls, const char* selector, void* code, const char* types) {
  hooks.push_back({nameOfClass(cls) + " +" + selector + " " + types, code});
  return 1;
}

const void* objectClass(const void* object) {
  return classNamed("meta " + nameOfClass(object));
}

const char* registerName(const char* name) {
  static std::set<std::string> names;
  return names.insert(name).first->c_str();
}

// A host in which nothing exists but texts: every other message to anything gives nil.
const void* sendMessage(const void* receiver, const char* selector, const void* first,
                        std::uintptr_t second, const void* third) {
  const std::string name(selector);
  if (name == "initWithBytes:length:encoding:") {
    auto* made = new FakeString{nullptr, {static_cast<const char*>(first), second}};
    strings.insert(made);
    return made;
  }
  if (name == "UTF8String" && strings.count(receiver) != 0) {
    return static_cast<const FakeString*>(receiver)->text.c_str();
  }
  if (name == "lengthOfBytesUsingEncoding:") {
    return reinterpret_cast<const void*>(textOf(receiver).size());
  }
  if (name == "setObject:forKey:") {
    record("store " + textOf(reinterpret_cast<const void*>(second)));
  } else if (name == "addObserver:selector:name:object:") {
    record(std::string("observe ") + textOf(third) + " with " +
           reinterpret_cast<const char*>(second));
  } else if (name.find("createDirectoryAtPath:") == 0) {
    record("create " + textOf(first));
  }
  return nullptr;
}

void* same(void* object) {
  return object;
}
void nothing() {}
void* nil() {
  return nullptr;
}
char yes() {
  return 1;
}

void observeDarwin(void*, const void*, void*, const void* name, const void*, long) {
  record("hear " + textOf(name));
}

int acquireGuard(char* guard) {
  return *guard == 0 ? 1 : 0;
}
void releaseGuard(char* guard) {
  *guard = 1;
}

void* allocate(std::size_t size) {
  return std::malloc(size);
}

[[noreturn]] void unexpected() {
  std::fprintf(stderr, "the library called something that this host does not have\n");
  std::abort();
}

template <typename Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

void* resolve(const std::string& name) {
  static const std::map<std::string, void*> known = {
      {"_MSHookMessageEx", address(hookMessage)},
      {"_class_addMethod", address(addMethod)},
      {"_objc_getClass", address(+[](const char* cls) { return classNamed(cls); })},
      {"_object_getClass", address(objectClass)},
      {"_class_respondsToSelector", address(yes)},
      {"_sel_registerName", address(registerName)},
      {"_objc_msgSend", address(sendMessage)},
      {"_objc_alloc", address(nil)},
      {"_objc_retain", address(same)},
      {"_objc_autorelease", address(same)},
      {"_objc_release", address(nothing)},
      {"_CFNotificationCenterGetDarwinNotifyCenter", address(nil)},
      {"_CFNotificationCenterAddObserver", address(observeDarwin)},
      {"__Znwm", address(allocate)},
      {"__ZdlPv", address(std::free)},
      {"_memcpy", address(static_cast<void* (*)(void*, const void*, std::size_t)>(std::memcpy))},
      {"_memmove", address(static_cast<void* (*)(void*, const void*, std::size_t)>(std::memmove))},
      {"_memcmp",
       address(static_cast<int (*)(const void*, const void*, std::size_t)>(std::memcmp))},
      {"_memset", address(static_cast<void* (*)(void*, int, std::size_t)>(std::memset))},
      {"__Unwind_SjLj_Register", address(nothing)},
      {"__Unwind_SjLj_Unregister", address(nothing)},
      {"_strlen", address(static_cast<std::size_t (*)(const char*)>(std::strlen))},
      {"_strcmp", address(static_cast<int (*)(const char*, const char*)>(std::strcmp))},
      {"___cxa_guard_acquire", address(acquireGuard)},
      {"___cxa_guard_release", address(releaseGuard)},
      {"__ZNSt3__15mutex4lockEv", address(nothing)},
      {"__ZNSt3__15mutex6unlockEv", address(nothing)},
      {"__ZNSt3__15mutexD1Ev", address(nothing)},
      {"__ZNSt3__119__shared_weak_countD2Ev", address(nothing)},
      {"__ZNSt3__119__shared_weak_count14__release_weakEv", address(nothing)},
  };
  if (const auto at = known.find(name); at != known.end()) return at->second;
  // Classes, tables of types and the like are only pointed at. A function among them ends the run.
  static std::map<std::string, void*> others;
  void*& place = others[name];
  constexpr std::size_t room = 256;
  const bool isData = name.find("_OBJC_") == 0 || name.find("__ZT") == 0 ||
                      name.find("__ZSt7nothrow") == 0 || name.find("___stack_chk_guard") == 0 ||
                      name.find("__NSConcrete") == 0 || name.find("___CFConstant") == 0 ||
                      name.find("__objc_empty_cache") == 0 || name.find("_k") == 0;
  if (place == nullptr) place = isData ? std::calloc(1, room) : address(unexpected);
  return place;
}

int failures = 0;

void expect(const char* what, const std::vector<std::string>& found,
            const std::vector<std::string>& expected) {
  if (found == expected) {
    std::printf("%s: right\n", what);
    return;
  }
  ++failures;
  std::printf("%s: wrong\n", what);
  for (const std::string& each : found) std::printf("  found    %s\n", each.c_str());
  for (const std::string& each : expected) std::printf("  expected %s\n", each.c_str());
}

std::vector<std::string> takeEvents() {
  std::vector<std::string> taken;
  taken.swap(events);
  return taken;
}

template <typename Function>
Function* hook(std::size_t row) {
  return reinterpret_cast<Function*>(hooks.at(row).code);
}

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fprintf(stderr, "usage: run_library LIBRARY\n");
    return 2;
  }
  const MachOImage library(words[1], resolve);
  expect("initialisers", {std::to_string(library.initialise())}, {"1"});
  std::vector<std::string> rows;
  for (const Hook& each : hooks) rows.push_back(each.place);
  expect("rows", rows,
         {"SBFWallpaperView dealloc", "SpringBoard +LumoraDeviceDidRotate: v@:@",
          "SpringBoard applicationDidFinishLaunching:", "meta SBDockView defaultHeight"});
  expect("nothing else at load", takeEvents(), {});
  if (failures > 0) return 1;

  void* const object = std::calloc(1, 64);
  hook<void(void*, const char*)>(0)(object, "dealloc");
  expect("dealloc", takeEvents(), {"own dealloc"});

  hook<void(void*, const char*, void*)>(1)(object, "LumoraDeviceDidRotate:", nullptr);
  expect("rotation without a wallpaper", takeEvents(), {});

  hook<void(void*, const char*, void*)>(2)(object, "applicationDidFinishLaunching:", nullptr);
  const std::string prefix = "hear com.brightfen.lumora.";
  expect("launch", takeEvents(),
         {"own launch", "create /var/mobile/Library/Lumora/", prefix + "wallpaperNeedsUpdating",
          prefix + "removeGIFFromAllWallpapers", prefix + "updateWallpaper",
          prefix + "removeSharedGIFView", prefix + "removeLockscreenGIFView",
          prefix + "removeHomescreenGIFView", prefix + "updateAnimating",
          "observe UIDeviceOrientationDidChangeNotification with LumoraDeviceDidRotate:"});

  const CGFloat height = hook<CGFloat(void*, const char*)>(3)(object, "defaultHeight");
  expect("height passed on", {std::to_string(height)}, {std::to_string(CGFloat{96})});
  expect("height recorded", takeEvents(), {"own defaultHeight", "store DOCK_HEIGHT"});
  return failures == 0 ? 0 : 1;
}
