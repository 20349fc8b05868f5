#include "cxx_library.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>

#include "cxx_streams.h"
#include "device_string.h"
#include "functions.h"
#include "unwinding.h"

namespace {

using String = DeviceString;

String& append(String& string, const char* text, std::size_t size) {
  string.set(string.text() + std::string(text, size));
  return string;
}
String& insert(String& string, std::size_t at, const char* text, std::size_t size) {
  string.set(string.text().insert(at, text, size));
  return string;
}
String& assign(String& string, const String& other) {
  if (&string != &other) string.set(other.text());
  return string;
}
void copyPart(String* made, const String& source, std::size_t at, std::size_t size) {
  new (made) String(source.text().substr(at, size));
}
void pushBack(String& string, char letter) {
  string.set(string.text() + letter);
}
void resize(String& string, std::size_t size, char filling) {
  std::string text = string.text();
  text.resize(size, filling);
  string.set(text);
}
void reserve(String& string, std::size_t size) {
  string.set(string.text(), size);
}
String& erase(String& string, std::size_t at, std::size_t size) {
  string.set(string.text().erase(at, size));
  return string;
}
String& replace(String& string, std::size_t at, std::size_t size, const char* text,
                std::size_t newSize) {
  string.set(string.text().replace(at, size, text, newSize));
  return string;
}
std::size_t find(const String& string, char letter, std::size_t from) {
  return string.text().find(letter, from);
}
int compare(const String& string, std::size_t at, std::size_t size, const char* text) {
  return string.text().compare(at, size, text);
}
// Makes room for more characters in the place of deleted ones. The caller fills it, and then stores
// the new size, unless there is a text to fill it with.
void grow(String& string, std::size_t room, std::size_t more, std::size_t size, std::size_t copied,
          std::size_t deleted, std::size_t added, const char* text) {
  std::string result = string.text();
  result.resize(size);
  result.replace(copied, deleted,
                 text == nullptr ? std::string(added, ' ') : std::string(text, added));
  string.set(result, room + more);
}
void growBy(String& string, std::size_t room, std::size_t more, std::size_t size,
            std::size_t copied, std::size_t deleted, std::size_t added) {
  grow(string, room, more, size, copied, deleted, added, nullptr);
}
String sum(const char* text, const String& string) {
  return String(text + string.text());
}
template <typename Number>
String decimal(Number number) {
  return String(std::to_string(number));
}

// The control block of a shared pointer. Both counts are one less than the number of owners.
struct Counts {
  void (**table)(Counts*);
  long owners;
  long weakOwners;
};

Counts* lock(Counts* counts) {
  if (counts->owners == -1) return nullptr;
  ++counts->owners;
  return counts;
}
void releaseWeak(Counts* counts) {
  constexpr int lastWeakOwnerGone = 4;
  if (counts->weakOwners-- == 0) counts->table[lastWeakOwnerGone](counts);
}

struct Time {
  std::int64_t nanoseconds;
};
Time now() {
  return {0};
}

void* allocate(std::size_t size) {
  return std::malloc(size);
}
int acquireGuard(const char* guard) {
  return *guard == 0 ? 1 : 0;
}
void releaseGuard(char* guard) {
  *guard = 1;
}

const std::string stringClass = "12basic_stringIcNS_11char_traitsIcEENS_9allocatorIcEEE";

}  // namespace

void* cxxFunction(const std::string& name) {
  static const std::map<std::string, void*> known = {
      {"_memcpy", address(static_cast<void* (*)(void*, const void*, std::size_t)>(std::memcpy))},
      {"_memmove", address(static_cast<void* (*)(void*, const void*, std::size_t)>(std::memmove))},
      {"_memcmp",
       address(static_cast<int (*)(const void*, const void*, std::size_t)>(std::memcmp))},
      {"_memset", address(static_cast<void* (*)(void*, int, std::size_t)>(std::memset))},
      {"_memchr",
       address(static_cast<const void* (*)(const void*, int, std::size_t)>(std::memchr))},
      {"_bzero", address(+[](void* at, std::size_t size) { std::memset(at, 0, size); })},
      {"_strtod", address(std::strtod)},
      {"_strlen", address(static_cast<std::size_t (*)(const char*)>(std::strlen))},
      {"_strcmp", address(static_cast<int (*)(const char*, const char*)>(std::strcmp))},
      {"__Znwm", address(allocate)},
      {"__Znam", address(allocate)},
      {"__ZdlPv", address(std::free)},
      {"__ZdaPv", address(std::free)},
      {"__ZNSt3__1" + stringClass + "6appendEPKcm", address(append)},
      {"__ZNSt3__1" + stringClass + "6insertEmPKcm", address(insert)},
      {"__ZNSt3__1plIcNS_11char_traitsIcEENS_9allocatorIcEEEENS_12basic_stringIT_T0_T1_EEPKS6_"
       "RKS9_",
       address(sum)},
      {"__ZNSt3__1" + stringClass + "aSERKS5_", address(assign)},
      {"__ZNSt3__1" + stringClass + "C2ERKS5_mmRKS4_", address(copyPart)},
      {"__ZNSt3__1" + stringClass + "9push_backEc", address(pushBack)},
      {"__ZNSt3__1" + stringClass + "6resizeEmc", address(resize)},
      {"__ZNSt3__1" + stringClass + "7reserveEm", address(reserve)},
      {"__ZNSt3__1" + stringClass + "5eraseEmm", address(erase)},
      {"__ZNSt3__1" + stringClass + "7replaceEmmPKcm", address(replace)},
      {"__ZNKSt3__1" + stringClass + "4findEcm", address(find)},
      {"__ZNKSt3__1" + stringClass + "7compareEmmPKc", address(compare)},
      {"__ZNSt3__1" + stringClass + "9__grow_byEmmmmmm", address(growBy)},
      {"__ZNSt3__1" + stringClass + "21__grow_by_and_replaceEmmmmmmPKc", address(grow)},
      {"__ZNSt3__19to_stringEi", address(decimal<int>)},
      {"__ZNSt3__19to_stringEl", address(decimal<long>)},
      {"__ZNSt3__19to_stringEm", address(decimal<unsigned long>)},
      {"__ZNSt3__119__shared_weak_count4lockEv", address(lock)},
      {"__ZNSt3__119__shared_weak_count14__release_weakEv", address(releaseWeak)},
      {"__ZNSt3__119__shared_weak_countD2Ev", address(nothing)},
      {"__ZNSt13runtime_errorC2ERKNSt3__112basic_stringIcNS0_11char_traitsIcEENS0_9allocatorIcEEEE",
       address(nothing)},
      {"__ZNSt13runtime_errorC2ERKS_", address(nothing)},
      {"__ZNSt13runtime_errorD2Ev", address(nothing)},
      {"__ZNSt3__15mutex4lockEv", address(nothing)},
      {"__ZNSt3__15mutex6unlockEv", address(nothing)},
      {"__ZNSt3__15mutexD1Ev", address(nothing)},
      {"__ZNSt3__16chrono12steady_clock3nowEv", address(now)},
      {"___cxa_atexit", address(nothing)},
      {"___cxa_guard_acquire", address(acquireGuard)},
      {"___cxa_guard_release", address(releaseGuard)},
      {"___cxa_begin_catch", address(same)},
      {"___cxa_end_catch", address(nothing)},
      {"__Unwind_Resume", resumeEntry()},
      {"__Unwind_SjLj_Resume", resumeEntry()},
      {"__Unwind_SjLj_Register", registerFrameEntry()},
      {"__Unwind_SjLj_Unregister", unregisterFrameEntry()},
  };
  const auto at = known.find(name);
  return at == known.end() ? streamFunction(name) : at->second;
}
