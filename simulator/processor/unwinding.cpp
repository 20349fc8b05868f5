#include "unwinding.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "byte_tables.h"

namespace {

const MachOImage* image = nullptr;
// The current exception, of which the library only uses the address.
char exceptionObject = 0;

[[noreturn]] void fail(const char* reason) {
  std::fprintf(stderr, "the exception cannot be followed: %s\n", reason);
  std::abort();
}

struct LandingPad {
  std::uint64_t place;
  // The number of the handler that the code must run; 0 only cleans up.
  std::int64_t selector;
};

// The exception table of a function, in the format of the compiler's run-time.
class ExceptionTable {
 public:
  explicit ExceptionTable(const std::uint8_t* at) {
    constexpr std::uint8_t omitted = 0xff;
    if (*at++ != omitted) fail("landing pads have a base of their own");
    if (*at++ != omitted) unsignedLeb(at);
    encoding_ = *at++;
    const std::uint64_t size = unsignedLeb(at);
    callSites_ = at;
    actions_ = at + size;
  }

  // Returns the landing pad for a place in the function, if there is one. Both are offsets from the
  // function's start. For 64-bit processors.
  std::optional<LandingPad> padForPlace(std::uint64_t place) const {
    for (const std::uint8_t* at = callSites_; at < actions_;) {
      const std::uint64_t start = number(at);
      const std::uint64_t length = number(at);
      const std::uint64_t pad = number(at);
      const std::uint64_t action = unsignedLeb(at);
      if (place < start || place >= start + length) continue;
      if (pad == 0) return std::nullopt;
      return LandingPad{pad, selectorOf(action)};
    }
    return std::nullopt;
  }

  // Returns the landing pad for a call; calls are numbered from 1. For 32-bit processors, where
  // numbers are LEB128 whatever the table's encoding.
  LandingPad padForCall(std::uint64_t call) const {
    const std::uint8_t* at = callSites_;
    for (; call > 1; --call) {
      unsignedLeb(at);
      unsignedLeb(at);
    }
    const std::uint64_t pad = unsignedLeb(at);
    return {pad, selectorOf(unsignedLeb(at))};
  }

 private:
  std::uint64_t number(const std::uint8_t*& at) const {
    constexpr std::uint8_t fourBytes = 0x03;
    if (encoding_ != fourBytes) return unsignedLeb(at);
    at += 4;
    return read<std::uint32_t>(at - 4);
  }

  // Returns the number of the first handler, or 0 if there is none. All of the library's handlers
  // catch the exceptions of the host.
  std::int64_t selectorOf(std::uint64_t action) const {
    if (action == 0) return 0;
    for (const std::uint8_t* at = actions_ + action - 1;;) {
      const std::int64_t type = signedLeb(at);
      if (type > 0) return type;
      const std::uint8_t* const from = at;
      const std::int64_t next = signedLeb(at);
      if (next == 0) return 0;
      at = from + next;
    }
  }

  std::uint8_t encoding_ = 0;
  const std::uint8_t* callSites_ = nullptr;
  const std::uint8_t* actions_ = nullptr;
};

}  // namespace

void setUnwoundImage(const MachOImage& unwound) {
  image = &unwound;
}

#ifdef __aarch64__

// The registers that a function must preserve: x19 to x28, frame pointer, return address, stack
// pointer, and d8 to d15.
struct Registers {
  std::uint64_t general[10];
  std::uint64_t frame;
  std::uint64_t place;
  std::uint64_t stack;
  std::uint64_t floating[8];
};

extern "C" {
Registers callersRegisters;
}
extern "C" void enterMessage();
extern "C" void enterResume();
extern "C" [[noreturn]] void goOn();
extern "C" [[noreturn]] void installRegisters(const Registers* registers, const void* exception,
                                              std::int64_t selector);
asm(R"(
  .macro saveRegisters
  adrp x16, callersRegisters
  add x16, x16, :lo12:callersRegisters
  stp x19, x20, [x16]
  stp x21, x22, [x16, 16]
  stp x23, x24, [x16, 32]
  stp x25, x26, [x16, 48]
  stp x27, x28, [x16, 64]
  stp x29, x30, [x16, 80]
  mov x17, sp
  str x17, [x16, 96]
  stp d8, d9, [x16, 104]
  stp d10, d11, [x16, 120]
  stp d12, d13, [x16, 136]
  stp d14, d15, [x16, 152]
  .endm
  .globl enterMessage, enterResume, installRegisters
enterMessage:
  saveRegisters
  b sendMessage
enterResume:
  saveRegisters
  b goOn
installRegisters:
  mov x16, x0
  mov x0, x1
  mov x1, x2
  ldp x19, x20, [x16]
  ldp x21, x22, [x16, 16]
  ldp x23, x24, [x16, 32]
  ldp x25, x26, [x16, 48]
  ldp x27, x28, [x16, 64]
  ldp x29, x30, [x16, 80]
  ldr x17, [x16, 96]
  mov sp, x17
  ldp d8, d9, [x16, 104]
  ldp d10, d11, [x16, 120]
  ldp d12, d13, [x16, 136]
  ldp d14, d15, [x16, 152]
  br x30
)");

namespace {

struct Function {
  std::uint32_t start = 0;
  std::uint32_t encoding = 0;
};

// Finds the function at a place in the image's table of functions, whose second level has regular
// and compressed pages.
Function functionAt(std::uint32_t place) {
  const std::uint8_t* const table = image->section("__unwind_info").start;
  auto word = [table](std::size_t at) { return read<std::uint32_t>(table + at); };
  auto half = [table](std::size_t at) { return read<std::uint16_t>(table + at); };
  const std::uint32_t commonEncodings = word(4);
  const std::uint32_t commonCount = word(8);
  std::uint32_t index = word(20);
  while (word(index + 12) <= place && word(index + 16) != 0) index += 12;
  const std::uint32_t first = word(index);
  const std::uint32_t page = word(index + 4);
  constexpr std::uint32_t compressed = 3;
  Function found;
  for (std::uint32_t each = 0; each < half(page + 6); ++each) {
    if (word(page) != compressed) {
      const std::uint32_t entry = page + half(page + 4) + 8 * each;
      if (word(entry) > place) break;
      found = {word(entry), word(entry + 4)};
      continue;
    }
    const std::uint32_t entry = word(page + half(page + 4) + 4 * each);
    if (first + (entry & 0xffffff) > place) break;
    const std::uint32_t kind = entry >> 24;
    found = {first + (entry & 0xffffff),
             kind < commonCount ? word(commonEncodings + 4 * kind)
                                : word(page + half(page + 8) + 4 * (kind - commonCount))};
  }
  return found;
}

const std::uint8_t* exceptionTableOf(const Function& function) {
  const std::uint8_t* const table = image->section("__unwind_info").start;
  const auto index = read<std::uint32_t>(table + 20);
  const std::uint8_t* entry = table + read<std::uint32_t>(table + index + 8);
  while (read<std::uint32_t>(entry) != function.start) entry += 8;
  return image->base() + read<std::uint32_t>(entry + 4);
}

// Restores the caller's registers. Requires a function with a frame.
void leaveFunction(Registers& registers, std::uint32_t encoding) {
  constexpr std::uint32_t kindMask = 0x0f000000;
  constexpr std::uint32_t hasFrame = 0x04000000;
  if ((encoding & kindMask) != hasFrame) fail("a function without a frame");
  const auto* saved = reinterpret_cast<const std::uint64_t*>(registers.frame);
  const std::uint64_t* at = saved;
  for (int pair = 0; pair < 5; ++pair) {
    if ((encoding & 1U << pair) == 0) continue;
    registers.general[2 * pair] = *--at;
    registers.general[2 * pair + 1] = *--at;
  }
  for (int pair = 0; pair < 4; ++pair) {
    if ((encoding & 0x100U << pair) == 0) continue;
    registers.floating[2 * pair] = *--at;
    registers.floating[2 * pair + 1] = *--at;
  }
  registers.stack = registers.frame + 16;
  registers.place = saved[1];
  registers.frame = saved[0];
}

}  // namespace

extern "C" [[noreturn]] void goOn() {
  Registers registers = callersRegisters;
  const MachOImage::Section code = image->section("__text");
  for (;;) {
    const std::uint64_t calledFrom = registers.place - 4;
    if (calledFrom - reinterpret_cast<std::uint64_t>(code.start) >= code.size) {
      fail("it leaves the library");
    }
    const auto place =
        static_cast<std::uint32_t>(calledFrom - reinterpret_cast<std::uint64_t>(image->base()));
    const Function function = functionAt(place);
    constexpr std::uint32_t hasTable = 0x40000000;
    if (function.encoding & hasTable) {
      const auto pad =
          ExceptionTable(exceptionTableOf(function)).padForPlace(place - function.start);
      if (pad) {
        registers.place =
            reinterpret_cast<std::uint64_t>(image->base()) + function.start + pad->place;
        installRegisters(&registers, &exceptionObject, pad->selector);
      }
    }
    leaveFunction(registers, function.encoding);
  }
}

void* messageEntry() {
  return reinterpret_cast<void*>(enterMessage);
}
void* resumeEntry() {
  return reinterpret_cast<void*>(enterResume);
}
void* registerFrameEntry() {
  return nullptr;
}
void* unregisterFrameEntry() {
  return nullptr;
}

#else

namespace {

// The record on a function's stack that it registers, in the compiler's layout.
struct Frame {
  Frame* caller;
  std::int32_t call;
  std::uint32_t parameters[4];
  void* personality;
  const std::uint8_t* exceptionTable;
  std::uint32_t buffer[5];
};
Frame* innermost = nullptr;

void registerFrame(Frame* frame) {
  frame->caller = innermost;
  innermost = frame;
}
void unregisterFrame(const Frame* frame) {
  innermost = frame->caller;
}

[[noreturn]] void goOn() {
  for (; innermost != nullptr; innermost = innermost->caller) {
    Frame& frame = *innermost;
    // This call has no landing pad.
    if (frame.call <= 0) continue;
    const LandingPad pad =
        ExceptionTable(frame.exceptionTable).padForCall(static_cast<std::uint64_t>(frame.call));
    frame.call = static_cast<std::int32_t>(pad.place);
    frame.parameters[0] = reinterpret_cast<std::uint32_t>(&exceptionObject);
    frame.parameters[1] = static_cast<std::uint32_t>(pad.selector);
    asm volatile("mov r0, %0\n ldr sp, [r0, #8]\n ldr ip, [r0, #4]\n ldr r7, [r0]\n bx ip\n"
                 :
                 : "r"(frame.buffer)
                 : "r0", "memory");
    __builtin_unreachable();
  }
  fail("it leaves the library");
}

}  // namespace

void* messageEntry() {
  return reinterpret_cast<void*>(sendMessage);
}
void* resumeEntry() {
  return reinterpret_cast<void*>(goOn);
}
void* registerFrameEntry() {
  return reinterpret_cast<void*>(registerFrame);
}
void* unregisterFrameEntry() {
  return reinterpret_cast<void*>(unregisterFrame);
}

#endif

void raiseException() {
  goOn();
}
