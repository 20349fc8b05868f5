# Debian's libraries that consist of headers. Each gets visible through a link of its own, because
# the headers of Linux are beside them.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
foreach(folder CLI nlohmann utf8cpp)
  file(CREATE_LINK /usr/include/${folder} ${CMAKE_BINARY_DIR}/headers/${folder} SYMBOLIC)
endforeach()
include_directories(SYSTEM ${CMAKE_BINARY_DIR}/headers)
add_library(CLI11::CLI11 INTERFACE IMPORTED)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
# The C++ library of old systems has no file systems.
add_compile_definitions(CLI11_HAS_FILESYSTEM=0 JSON_HAS_FILESYSTEM=0
                        JSON_HAS_EXPERIMENTAL_FILESYSTEM=0)
