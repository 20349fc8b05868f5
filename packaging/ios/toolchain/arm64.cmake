# Compiles for 64-bit devices with iOS 8.0 or later, with Debian's clang, the C++ library's headers
# that come with it, and the Darwin headers that scripts/device downloads.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(target arm64-apple-ios8.0)
include(${CMAKE_CURRENT_LIST_DIR}/ios.cmake)
