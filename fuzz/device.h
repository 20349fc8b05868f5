// A device folder for inputs that are read from files. It is temporary, in memory if possible, and
// deleted when the process ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// Writes the input to this device path and creates its directories.
void store(const std::uint8_t* data, std::size_t size, const std::string& path);

// Deletes everything on the device.
void clearDevice();

// Aborts if anything has changed in the folder that contains the device folder.
void checkSurroundings();

}  // namespace fuzz
