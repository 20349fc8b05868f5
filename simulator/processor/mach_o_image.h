// Loads a Mach-O library or program for this processor into a process of another system: maps,
// rebases and binds it as the device's dynamic loader does.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

class MachOImage {
 public:
  // Returns the address for a name, never nullptr.
  using Resolve = std::function<void*(const std::string& name)>;

  // Loads the library. Prints an error and ends the process if the file is not one for this
  // processor. Otherwise the file is trusted to be valid.
  MachOImage(const std::string& path, const Resolve& resolve);

  // Calls the load-time initializers. Returns how many there are.
  int initialize() const;

  struct Section {
    const std::uint8_t* start = nullptr;
    std::size_t size = 0;
  };
  // Returns a section in memory, or an empty one if there is none of this name.
  Section section(const std::string& name) const;
  // Returns the main function of a program, or nullptr if the file is a library.
  using Main = int(int count, char** words);
  Main* mainFunction() const;
  // Returns the address of the file's first byte, to which offsets in its tables are relative.
  const std::uint8_t* base() const { return base_; }

 private:
  struct Segment {
    std::string name;
    std::uint8_t* start;
  };

  const std::uint8_t* segment(const std::string& name) const;
  void map(const std::vector<std::uint8_t>& file);
  void rebase(const std::uint8_t* at, const std::uint8_t* end);
  void bind(const std::uint8_t* at, const std::uint8_t* end, const Resolve& resolve);

  std::vector<Segment> segments_;
  std::map<std::string, Section> sections_;
  const std::uint8_t* base_ = nullptr;
  const std::uint8_t* main_ = nullptr;
};
