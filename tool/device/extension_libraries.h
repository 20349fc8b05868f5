// The libraries that a home screen loads.
#pragma once

#include <string>
#include <vector>

namespace tool {

// The words that stand for Lumora's own library and for no library.
constexpr auto ownLibraryWord = "lumora";
constexpr auto noLibraryWord = "none";

// Returns Lumora's own library.
std::string ownLibrary();

// Returns the libraries to load, in this order, for words that are the two above or paths of files.
// Without any, returns Lumora's own. Throws Failure if a file cannot be read.
std::vector<std::string> librariesFor(const std::vector<std::string>& words);

}  // namespace tool
