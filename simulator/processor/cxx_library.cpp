#include "cxx_library.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>

#include "unwinding.h"

namespace {

// A string of the device's C++ library. Those created here are always long strings, whose
// characters are stored elsewhere. The length is before the mark of a long string on 64-bit
// processors, and after it on 32-bit ones.
class String {
 public:
  explicit String(const std::string& text) { set(text); }
  // With this constructor the class is returned in memory, like the device's.
  String(const String& other) { set(other.text()); }

  std::string text() const {
    if (isLong()) return {characters(), words_[1]};
    const auto* bytes = reinterpret_cast<const unsigned char*>(words_);
    return is64Bit ? std::string(reinterpret_cast<const char*>(bytes), bytes[23] & 0x7f)
                   : std::string(reinterpret_cast<const char*>(bytes) + 1, bytes[0] >> 1);
  }

  void set(const std::string& text) {
    const std::size_t room = (text.size() | 15) + 1;
    auto* copy = static_cast<char*>(std::calloc(room, 1));
    std::memcpy(copy, text.data(), text.size());
    words_[is64Bit ? 0 : 2] = reinterpret_cast<std::uintptr_t>(copy);
    words_[1] = text.size();
    words_[is64Bit ? 2 : 0] = room | longMark;
  }

 private:
  static constexpr bool is64Bit = sizeof(void*) == 8;
  static constexpr std::uintptr_t longMark = is64Bit ? ~(~std::uintptr_t{0} >> 1) : 1;

  bool isLong() const { return (words_[is64Bit ? 2 : 0] & longMark) != 0; }
  const char* characters() const { return reinterpret_cast<const char*>(words_[is64Bit ? 0 : 2]); }

  std::uintptr_t words_[3];
};

String& append(String& string, const char* text, std::size_t size) {
  string.set(string.text() + std::string(text, size));
  return string;
}
String& insert(String& string, std::size_t at, const char* text, std::size_t size) {
  string.set(string.text().insert(at, text, size));
  return string;
}
String sum(const char* text, const String& string) {
  return String(text + string.text());
}
String decimal(int number) {
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
void* same(void* object) {
  return object;
}
void nothing() {}

template <typename Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
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
      {"_strlen", address(static_cast<std::size_t (*)(const char*)>(std::strlen))},
      {"_strcmp", address(static_cast<int (*)(const char*, const char*)>(std::strcmp))},
      {"__Znwm", address(allocate)},
      {"__ZdlPv", address(std::free)},
      {"__ZNSt3__1" + stringClass + "6appendEPKcm", address(append)},
      {"__ZNSt3__1" + stringClass + "6insertEmPKcm", address(insert)},
      {"__ZNSt3__1plIcNS_11char_traitsIcEENS_9allocatorIcEEEENS_12basic_stringIT_T0_T1_EEPKS6_"
       "RKS9_",
       address(sum)},
      {"__ZNSt3__19to_stringEi", address(decimal)},
      {"__ZNSt3__119__shared_weak_count4lockEv", address(lock)},
      {"__ZNSt3__119__shared_weak_count14__release_weakEv", address(releaseWeak)},
      {"__ZNSt3__119__shared_weak_countD2Ev", address(nothing)},
      {"__ZNSt3__15mutex4lockEv", address(nothing)},
      {"__ZNSt3__15mutex6unlockEv", address(nothing)},
      {"__ZNSt3__15mutexD1Ev", address(nothing)},
      {"__ZNSt3__16chrono12steady_clock3nowEv", address(now)},
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
  return at == known.end() ? nullptr : at->second;
}
