// A device for inputs that are read from files. It lies in memory where the system has a place for
// that, and goes with the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

// Makes the input the contents of the file at this device path, with the directories on the way.
void store(const std::uint8_t* data, std::size_t size, const std::string& path);

// Deletes everything on the device.
void clearDevice();

// Ends the process if anything has been changed in the folder that the device's own lies in.
void checkSurroundings();

}  // namespace fuzz
