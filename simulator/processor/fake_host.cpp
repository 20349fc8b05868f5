#include "fake_host.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>
#include <type_traits>

#include "byte_tables.h"
#include "cxx_library.h"
#include "functions.h"
#include "unwinding.h"

namespace {

std::vector<std::string> events;
std::vector<Hook> hooked;
bool raisesAtRedraw = false;

void record(const std::string& event) {
  events.push_back(event);
}

// The classes of the host, identified by name. A metaclass is the class of a class.
std::map<std::string, std::string*>& classes() {
  static std::map<std::string, std::string*> all;
  return all;
}

const void* classNamed(const std::string& name) {
  auto& entry = classes()[name];
  if (entry == nullptr) entry = new std::string(name);
  return entry;
}

// Large enough for the instance variables of the library's classes.
struct Object {
  const void* cls;
  char variables[512];
  const Object* superview;
  const void* wallpaper;
};
constexpr std::ptrdiff_t wallpaperOffset = offsetof(Object, wallpaper);
std::set<const void*> objects;

Object* makeObject(const void* cls) {
  auto* object = static_cast<Object*>(std::calloc(1, sizeof(Object)));
  object->cls = cls;
  objects.insert(object);
  return object;
}

Object* makeObject(const char* name) {
  return makeObject(classNamed(name));
}

struct Text {
  const void* cls;
  std::string characters;
};
std::map<const void*, Text*> texts;

const void* makeText(const std::string& characters) {
  auto* text = new Text{classNamed("NSString"), characters};
  texts[text] = text;
  return text;
}

// A constant string of the compiler consists of a class, a word of flags, characters and length.
std::string textOf(const void* object) {
  if (object == nullptr) return "";
  if (const auto at = texts.find(object); at != texts.end()) return at->second->characters;
  const auto* words = static_cast<const std::uintptr_t*>(object);
  if (words[0] != reinterpret_cast<std::uintptr_t>(resolve("___CFConstantStringClassReference"))) {
    return "";
  }
  return {reinterpret_cast<const char*>(words[2]), words[3]};
}

// The host's original methods, which every replacement must call.
void ownDealloc(void*, const char*) {
  record("own dealloc");
}
void ownLaunch(void*, const char*, void*) {
  record("own launch");
}
// As large as an address, like all lengths on the device.
using CGFloat = std::conditional_t<sizeof(void*) == 8, double, float>;
CGFloat ownDefaultHeight(void*, const char*) {
  record("own defaultHeight");
  return 96;
}

std::string nameOfClass(const void* cls) {
  return *static_cast<const std::string*>(cls);
}

void hookMessage(const void* cls, const char* selector, void* replacement, void** previous) {
  hooked.push_back({nameOfClass(cls) + " " + selector, replacement});
  if (std::strcmp(selector, "dealloc") == 0) *previous = reinterpret_cast<void*>(ownDealloc);
  if (std::strcmp(selector, "defaultHeight") == 0) {
    *previous = reinterpret_cast<void*>(ownDefaultHeight);
  }
  if (std::strcmp(selector, "applicationDidFinishLaunching:") == 0) {
    *previous = reinterpret_cast<void*>(ownLaunch);
  }
}

char addMethod(const void* cls, const char* selector, void* code, const char* types) {
  hooked.push_back({nameOfClass(cls) + " +" + selector + " " + types, code});
  return 1;
}

const void* objectClass(const void* object) {
  if (objects.count(object) != 0) return static_cast<const Object*>(object)->cls;
  return classNamed("meta " + nameOfClass(object));
}

const char* registerName(const char* name) {
  static std::set<std::string> names;
  return names.insert(name).first->c_str();
}

// The methods of the library's own classes, by class and selector.
std::map<std::pair<const void*, std::string>, void*> methods;

void* methodOf(const void* receiver, const char* selector) {
  if (objects.count(receiver) == 0) return nullptr;
  const auto at = methods.find({static_cast<const Object*>(receiver)->cls, selector});
  return at == methods.end() ? nullptr : at->second;
}

const void* send(const void* receiver, const char* selector) {
  return sendMessage(receiver, selector, nullptr, nullptr, nullptr, nullptr);
}

const void* allocateObject(const void* cls) {
  Object* object = makeObject(cls);
  // Constructs the C++ objects among the instance variables.
  if (methodOf(object, ".cxx_construct") != nullptr) send(object, ".cxx_construct");
  return object;
}

// The compiler's layout of a block. Captured variables follow.
struct Block {
  const void* cls;
  std::int32_t flags;
  std::int32_t reserved;
  void (*invoke)(Block*);
  struct Descriptor {
    std::uintptr_t reserved;
    std::uintptr_t size;
    void (*copy)(Block* target, const Block* source);
    void (*dispose)(Block*);
  } * descriptor;
};

// Copies the block before running it, as a queue does that keeps it until its turn.
void run(const Block* block) {
  constexpr std::int32_t hasHelpers = 1 << 25;
  auto* copy = static_cast<Block*>(std::malloc(block->descriptor->size));
  std::memcpy(copy, block, block->descriptor->size);
  const bool isHelped = (block->flags & hasHelpers) != 0;
  if (isHelped) block->descriptor->copy(copy, block);
  copy->invoke(copy);
  if (isHelped) block->descriptor->dispose(copy);
  std::free(copy);
}

using Callback = void (*)(void* center, const void* observer, const void* name, const void* object,
                          const void* userInfo);
struct Listener {
  const void* observer;
  Callback callback;
};
std::multimap<std::string, Listener> listeners;

void observeDarwin(void*, const void* observer, Callback callback, const void* name, const void*,
                   long) {
  listeners.insert({textOf(name), {observer, callback}});
  record("hear " + textOf(name));
}
void forgetDarwin(void*, const void*) {}
void postDarwin(void*, const void* name, const void*, const void*, unsigned char) {
  record("say " + textOf(name));
}

const void* sendToSuper(const void* const* super, const char*) {
  return *super;
}
void sendForRectangle(CGFloat* rectangle) {
  std::memset(rectangle, 0, 4 * sizeof *rectangle);
}

int* createSemaphore(long) {
  return new int(0);
}
long signal(int* semaphore) {
  ++*semaphore;
  return 0;
}
long wait(const int* semaphore, std::uint64_t) {
  if (*semaphore == 0) record("waited in vain");
  return *semaphore == 0 ? 1 : 0;
}
std::uint64_t dispatchTime(std::uint64_t, std::int64_t) {
  return 0;
}

void* nil() {
  return nullptr;
}
char yes() {
  return 1;
}
std::ptrdiff_t offsetOfWallpaper() {
  return wallpaperOffset;
}

[[noreturn]] void unexpected() {
  std::fprintf(stderr, "the library called something that this host does not have\n");
  std::abort();
}

// Messages that return an object or a number, whatever the receiver.
const std::map<std::string, const void* (*)()>& answers() {
  static const void* const one = reinterpret_cast<const void*>(1);
  static const std::map<std::string, const void* (*)()> all = {
      {"mainQueue",
       [] {
         static const void* queue = makeObject("NSOperationQueue");
         return queue;
       }},
      {"imageWithContentsOfFile:", []() -> const void* { return makeObject("UIImage"); }},
      {"dataWithContentsOfFile:options:error:",
       []() -> const void* { return makeObject("NSData"); }},
      {"isEqualToData:", [] { return one; }},
      {"dictionary", []() -> const void* { return makeObject("NSMutableDictionary"); }},
      {"writeToFile:atomically:", [] { return one; }},
      {"arrayWithContentsOfFile:", []() -> const void* { return makeObject("NSArray"); }},
      {"objectAtIndex:", [] { return makeText("0.1"); }},
      {"centerNamed:", []() -> const void* { return makeObject("CPDistributedMessagingCenter"); }},
  };
  return all;
}

}  // namespace

const void* sendMessage(const void* receiver, const char* selector, const void* first,
                        const void* second, const void* third, const void* fourth) {
  const std::string name(selector);
  using Method =
      const void* (*)(const void*, const char*, const void*, const void*, const void*, const void*);
  if (void* method = methodOf(receiver, selector)) {
    return reinterpret_cast<Method>(method)(receiver, selector, first, second, third, fourth);
  }
  if (const auto answer = answers().find(name); answer != answers().end()) return answer->second();
  if (name == "class" || name == "init") return receiver;
  if (name == "sharedInstance") {
    static Object* controller = makeObject("SBWallpaperController");
    controller->wallpaper = makeObject("SBFWallpaperView");
    return controller;
  }
  if (name == "isKindOfClass:") {
    const bool isText = texts.count(receiver) != 0;
    const bool isKind =
        isText ? first == classNamed("NSString")
               : objects.count(receiver) != 0 && static_cast<const Object*>(receiver)->cls == first;
    return reinterpret_cast<const void*>(isKind ? 1 : 0);
  }
  if (name == "initWithBytes:length:encoding:") {
    return makeText({static_cast<const char*>(first), reinterpret_cast<std::size_t>(second)});
  }
  if (name == "UTF8String") {
    return textOf(receiver).empty() ? "" : texts.at(receiver)->characters.c_str();
  }
  if (name == "lengthOfBytesUsingEncoding:" || name == "length") {
    return reinterpret_cast<const void*>(textOf(receiver).size());
  }
  if (name == "lastPathComponent") return makeText("Wallpaper_both");
  if (name == "stringByDeletingPathExtension") {
    const std::string path = textOf(receiver);
    return makeText(path.substr(0, path.rfind('.')));
  }
  if (name == "count") return reinterpret_cast<const void*>(2);
  // The library's folder does not exist yet, the wallpaper does.
  if (name.find("fileExistsAtPath:") == 0) {
    return reinterpret_cast<const void*>(textOf(first).back() == '/' ? 0 : 1);
  }
  if (name.find("createDirectoryAtPath:") == 0) record("create " + textOf(first));
  if (name == "setObject:forKey:") record("store " + textOf(second) + " " + textOf(first));
  if (name == "addObserver:selector:name:object:") {
    record("observe " + textOf(third) + " with " + static_cast<const char*>(second));
  }
  if (name == "addObserver:forKeyPath:options:context:") record("observe " + textOf(second));
  if (name == "registerForMessageName:target:selector:") record("answer " + textOf(first));
  if (name == "_updateSharedWallpaper") {
    record("redraw");
    if (raisesAtRedraw) raiseException();
  }
  if (name == "superview") return static_cast<const Object*>(receiver)->superview;
  if (name == "addSubview:") {
    const bool isOwn = methodOf(receiver, "didMoveToSuperview") != nullptr;
    record("add to " + (isOwn ? "the library's own view" : nameOfClass(objectClass(receiver))));
    auto* view = const_cast<Object*>(static_cast<const Object*>(first));
    view->superview = static_cast<const Object*>(receiver);
    if (methodOf(view, "didMoveToSuperview") != nullptr) send(view, "didMoveToSuperview");
  }
  if (name == "blockOperationWithBlock:") return first;
  if (name == "addOperation:" || name == "addOperationWithBlock:") {
    run(static_cast<const Block*>(first));
  }
  return nullptr;
}

void* resolve(const std::string& name) {
  static const std::map<std::string, void*> known = {
      {"_MSHookMessageEx", address(hookMessage)},
      {"_class_addMethod", address(addMethod)},
      {"_objc_getClass", address(+[](const char* cls) { return classNamed(cls); })},
      {"_object_getClass", address(objectClass)},
      {"_class_respondsToSelector", address(yes)},
      {"_class_getMethodImplementation", address(messageEntry)},
      {"_class_getInstanceVariable", address(yes)},
      {"_ivar_getOffset", address(offsetOfWallpaper)},
      {"_sel_registerName", address(registerName)},
      {"_objc_msgSend", messageEntry()},
      {"_objc_msgSend_stret", address(sendForRectangle)},
      {"_objc_msgSendSuper2", address(sendToSuper)},
      {"_objc_alloc", address(allocateObject)},
      {"_objc_retain", address(same)},
      {"_objc_autorelease", address(same)},
      {"_objc_release", address(nothing)},
      {"_CFNotificationCenterGetDarwinNotifyCenter", address(nil)},
      {"_CFNotificationCenterAddObserver", address(observeDarwin)},
      {"_CFNotificationCenterRemoveEveryObserver", address(forgetDarwin)},
      {"_CFNotificationCenterPostNotification", address(postDarwin)},
      {"_dispatch_semaphore_create", address(createSemaphore)},
      {"_dispatch_semaphore_signal", address(signal)},
      {"_dispatch_semaphore_wait", address(wait)},
      {"_dispatch_time", address(dispatchTime)},
      {"_dispatch_release", address(nothing)},
      {"_objc_autoreleasePoolPush", address(nil)},
      {"_objc_autoreleasePoolPop", address(nothing)},
      {"_geteuid", address(+[] { return 501u; })},
      {"_umask", address(nothing)},
      {"_open", address(+[] { return -1; })},
      {"_fflush", address(nil)},
      {"_ferror", address(nil)},
  };
  if (const auto at = known.find(name); at != known.end()) return at->second;
  if (void* function = cxxFunction(name)) return function;
  const std::string classPrefix = "_OBJC_CLASS_$_";
  if (name.find(classPrefix) == 0) {
    return const_cast<void*>(classNamed(name.substr(classPrefix.size())));
  }
  // Data such as type tables are only referred to. Any other name must be that of an unknown
  // function.
  static std::map<std::string, void*> others;
  void*& place = others[name];
  constexpr std::size_t room = 256;
  const bool isData = name.find("_OBJC_") == 0 || name.find("__ZT") == 0 ||
                      name.find("__ZSt7nothrow") == 0 || name.find("___stack_chk_guard") == 0 ||
                      name.find("__NSConcrete") == 0 || name.find("___CFConstant") == 0 ||
                      name.find("__objc_empty_cache") == 0 || name.find("_k") == 0 ||
                      name.find("_NSRunLoop") == 0 || name.find("idE") != std::string::npos ||
                      name == "___stdoutp";
  if (place == nullptr) place = isData ? std::calloc(1, room) : address(unexpected);
  return place;
}

// Each class refers to its compiled data, and these to a list of methods.
void adoptClasses(const MachOImage& library) {
  constexpr std::size_t word = sizeof(void*);
  auto pointer = [](const std::uint8_t* at) { return read<const std::uint8_t*>(at); };
  const MachOImage::Section list = library.section("__objc_classlist");
  for (std::size_t at = 0; at < list.size; at += word) {
    const std::uint8_t* cls = pointer(list.start + at);
    const std::uint8_t* compiled = pointer(cls + 4 * word);
    const std::uint8_t* methodList = pointer(compiled + (word == 8 ? 32 : 20));
    if (methodList == nullptr) continue;
    const std::uint8_t* method = methodList + 8;
    for (auto left = read<std::uint32_t>(methodList + 4); left > 0; --left, method += 3 * word) {
      methods[{cls, reinterpret_cast<const char*>(pointer(method))}] =
          const_cast<std::uint8_t*>(pointer(method + 2 * word));
    }
  }
}

const std::vector<Hook>& hooks() {
  return hooked;
}

std::vector<std::string> takeEvents() {
  std::vector<std::string> taken;
  taken.swap(events);
  return taken;
}

void post(const std::string& name) {
  const auto [first, end] = listeners.equal_range(name);
  for (auto at = first; at != end; ++at) {
    at->second.callback(nullptr, at->second.observer, makeText(name), nullptr, nullptr);
  }
}

void raiseAtRedraw() {
  raisesAtRedraw = true;
}
