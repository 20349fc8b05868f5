#include "mach_o_image.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include <sys/mman.h>

#include "byte_tables.h"

namespace {

// Constants of the file format.
constexpr bool is64Bit = sizeof(void*) == 8;
constexpr std::uint32_t magic = is64Bit ? 0xfeedfacf : 0xfeedface;
constexpr std::uint32_t segmentCommand = is64Bit ? 0x19 : 0x1;
constexpr std::uint32_t dyldInfoOnlyCommand = 0x80000022;
constexpr std::uint32_t mainCommand = 0x80000028;
constexpr std::size_t headerSize = is64Bit ? 32 : 28;
// Offsets in a segment command and in a section's description.
constexpr std::size_t word = sizeof(void*);
constexpr std::size_t segmentAddress = 24;
constexpr std::size_t segmentSize = segmentAddress + word;
constexpr std::size_t segmentFileOffset = segmentSize + word;
constexpr std::size_t segmentFileSize = segmentFileOffset + word;
constexpr std::size_t segmentSectionCount = segmentFileSize + word + 8;
constexpr std::size_t segmentCommandSize = segmentSectionCount + 8;
constexpr std::size_t sectionAddress = 32;
constexpr std::size_t sectionLength = sectionAddress + word;
constexpr std::size_t sectionSize = is64Bit ? 80 : 68;
constexpr std::uint8_t opcodeMask = 0xf0;

enum RebaseOpcode : std::uint8_t {
  RebaseDone = 0x00,
  RebaseSetType = 0x10,
  RebaseSetSegmentAndOffset = 0x20,
  RebaseAddAddress = 0x30,
  RebaseAddAddressScaled = 0x40,
  RebaseTimes = 0x50,
  RebaseManyTimes = 0x60,
  RebaseAndAdd = 0x70,
  RebaseTimesSkipping = 0x80,
};

enum BindOpcode : std::uint8_t {
  BindDone = 0x00,
  BindSetLibrary = 0x10,
  BindSetLibraryLong = 0x20,
  BindSetSpecialLibrary = 0x30,
  BindSetSymbol = 0x40,
  BindSetType = 0x50,
  BindSetAddend = 0x60,
  BindSetSegmentAndOffset = 0x70,
  BindAddAddress = 0x80,
  BindOnce = 0x90,
  BindAndAdd = 0xa0,
  BindAndAddScaled = 0xb0,
  BindTimesSkipping = 0xc0,
};

[[noreturn]] void fail(const char* reason) {
  std::fprintf(stderr, "the library cannot be mapped: %s\n", reason);
  std::exit(1);
}

}  // namespace

MachOImage::MachOImage(const std::string& path, const Resolve& resolve) {
  std::ifstream stream(path, std::ios::binary);
  const std::vector<std::uint8_t> file{std::istreambuf_iterator<char>(stream), {}};
  if (file.size() < headerSize || read<std::uint32_t>(file.data()) != magic) fail("no such file");
  map(file);
  const std::uint8_t* command = file.data() + headerSize;
  for (auto left = read<std::uint32_t>(file.data() + 16); left > 0; --left) {
    if (read<std::uint32_t>(command) == dyldInfoOnlyCommand) {
      auto part = [&](int index) { return read<std::uint32_t>(command + 8 + 4 * index); };
      auto start = [&](int index) { return file.data() + part(2 * index); };
      auto end = [&](int index) { return start(index) + part(2 * index + 1); };
      rebase(start(0), end(0));
      // Normal bindings, weak ones, and lazy ones, which the device makes at their first use.
      for (const int table : {1, 2, 3}) bind(start(table), end(table), resolve);
    }
    if (read<std::uint32_t>(command) == mainCommand) {
      main_ = segment("__TEXT") + read<std::uint64_t>(command + 8);
    }
    command += read<std::uint32_t>(command + 4);
  }
}

void MachOImage::map(const std::vector<std::uint8_t>& file) {
  std::uintptr_t size = 0;
  auto forEachSegment = [&](auto use) {
    const std::uint8_t* command = file.data() + headerSize;
    for (auto left = read<std::uint32_t>(file.data() + 16); left > 0; --left) {
      if (read<std::uint32_t>(command) == segmentCommand) use(command);
      command += read<std::uint32_t>(command + 4);
    }
  };
  forEachSegment([&](const std::uint8_t* command) {
    size = std::max(size, read<std::uintptr_t>(command + segmentAddress) +
                              read<std::uintptr_t>(command + segmentSize));
  });
  // The first segment of a program takes 4 GiB of addresses.
  void* room = mmap(nullptr, size, PROT_READ | PROT_WRITE | PROT_EXEC,
                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (room == MAP_FAILED) fail("no room");
  auto* const base = static_cast<std::uint8_t*>(room);
  base_ = base;
  forEachSegment([&](const std::uint8_t* command) {
    const std::string name(reinterpret_cast<const char*>(command + 8));
    std::uint8_t* const start = base + read<std::uintptr_t>(command + segmentAddress);
    std::memcpy(start, file.data() + read<std::uintptr_t>(command + segmentFileOffset),
                read<std::uintptr_t>(command + segmentFileSize));
    segments_.push_back({name, start});
    for (std::uint32_t index = 0; index < read<std::uint32_t>(command + segmentSectionCount);
         ++index) {
      const std::uint8_t* section = command + segmentCommandSize + index * sectionSize;
      const auto* letters = reinterpret_cast<const char*>(section);
      sections_[std::string(letters, strnlen(letters, 16))] = {
          base + read<std::uintptr_t>(section + sectionAddress),
          read<std::uintptr_t>(section + sectionLength)};
    }
  });
}

void MachOImage::rebase(const std::uint8_t* at, const std::uint8_t* end) {
  std::uint8_t* place = nullptr;
  auto move = [&](std::uint64_t times, std::uint64_t skipped) {
    for (; times > 0; --times) {
      const auto moved = read<std::uintptr_t>(place) + reinterpret_cast<std::uintptr_t>(base_);
      std::memcpy(place, &moved, sizeof moved);
      place += sizeof moved + skipped;
    }
  };
  while (at < end) {
    const std::uint8_t opcode = *at & opcodeMask;
    const std::uint8_t small = *at++ & 0x0f;
    switch (opcode) {
      case RebaseDone:
        return;
      case RebaseSetType:
        break;
      case RebaseSetSegmentAndOffset:
        place = segments_[small].start + unsignedLeb(at);
        break;
      case RebaseAddAddress:
        place += unsignedLeb(at);
        break;
      case RebaseAddAddressScaled:
        place += small * sizeof(void*);
        break;
      case RebaseTimes:
        move(small, 0);
        break;
      case RebaseManyTimes:
        move(unsignedLeb(at), 0);
        break;
      case RebaseAndAdd:
        move(1, unsignedLeb(at));
        break;
      case RebaseTimesSkipping: {
        const std::uint64_t times = unsignedLeb(at);
        move(times, unsignedLeb(at));
        break;
      }
      default:
        fail("a rebase opcode that is none");
    }
  }
}

void MachOImage::bind(const std::uint8_t* at, const std::uint8_t* end, const Resolve& resolve) {
  std::uint8_t* place = nullptr;
  std::string symbol;
  std::int64_t addend = 0;
  auto store = [&](std::uint64_t times, std::uint64_t skipped) {
    for (; times > 0; --times) {
      const auto address =
          reinterpret_cast<std::intptr_t>(resolve(symbol)) + static_cast<std::intptr_t>(addend);
      std::memcpy(place, &address, sizeof address);
      place += sizeof address + skipped;
    }
  };
  while (at < end) {
    const std::uint8_t opcode = *at & opcodeMask;
    const std::uint8_t small = *at++ & 0x0f;
    switch (opcode) {
      // Every entry in the table of lazy bindings ends with this opcode.
      case BindDone:
      case BindSetLibrary:
      case BindSetSpecialLibrary:
      case BindSetType:
        break;
      case BindSetLibraryLong:
        unsignedLeb(at);
        break;
      case BindSetSymbol:
        symbol = reinterpret_cast<const char*>(at);
        at += symbol.size() + 1;
        break;
      case BindSetAddend:
        addend = signedLeb(at);
        break;
      case BindSetSegmentAndOffset:
        place = segments_[small].start + unsignedLeb(at);
        break;
      case BindAddAddress:
        place += unsignedLeb(at);
        break;
      case BindOnce:
        store(1, 0);
        break;
      case BindAndAdd:
        store(1, unsignedLeb(at));
        break;
      case BindAndAddScaled:
        store(1, small * sizeof(void*));
        break;
      case BindTimesSkipping: {
        const std::uint64_t times = unsignedLeb(at);
        store(times, unsignedLeb(at));
        break;
      }
      default:
        fail("a bind opcode that is none");
    }
  }
}

int MachOImage::initialize() const {
  const Section initializers = section("__mod_init_func");
  for (std::size_t at = 0; at < initializers.size; at += sizeof(void*)) {
    reinterpret_cast<void (*)()>(read<std::uintptr_t>(initializers.start + at))();
  }
  return static_cast<int>(initializers.size / sizeof(void*));
}

MachOImage::Section MachOImage::section(const std::string& name) const {
  const auto at = sections_.find(name);
  return at == sections_.end() ? Section() : at->second;
}

const std::uint8_t* MachOImage::segment(const std::string& name) const {
  for (const Segment& each : segments_) {
    if (each.name == name) return each.start;
  }
  return nullptr;
}

MachOImage::Main* MachOImage::mainFunction() const {
  return reinterpret_cast<Main*>(const_cast<std::uint8_t*>(main_));
}
