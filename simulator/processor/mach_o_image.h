// A Mach-O library for this processor in the memory of a process of another system: mapped, moved
// to where there was room, and bound, as the device's dynamic loader would do it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

class MachOImage {
 public:
  // Gives the address that a name stands for; it never gives nullptr.
  using Resolve = std::function<void*(const std::string& name)>;

  // Ends the process, with a line that says why, if the file is not such a library.
  MachOImage(const std::string& path, const Resolve& resolve);

  // Calls the load-time initializers; how many there were.
  int initialize() const;

  struct Section {
    const std::uint8_t* start = nullptr;
    std::size_t size = 0;
  };
  // In memory; empty if there is none of this name.
  Section section(const std::string& name) const;
  // Where the file's first byte lies, from which addresses in its tables are counted.
  const std::uint8_t* base() const { return base_; }

 private:
  struct Segment {
    std::string name;
    std::uint8_t* start;
  };

  void map(const std::vector<std::uint8_t>& file);
  void rebase(const std::uint8_t* at, const std::uint8_t* end);
  void bind(const std::uint8_t* at, const std::uint8_t* end, const Resolve& resolve);

  std::vector<Segment> segments_;
  std::map<std::string, Section> sections_;
  const std::uint8_t* base_ = nullptr;
};
