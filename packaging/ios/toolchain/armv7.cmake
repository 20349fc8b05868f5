# Compiles for 32-bit devices with iOS 8.0 or later. The linker needs changes to the assembly (see
# armv7_assembly.py). It also loses the mark of Thumb code in the addresses of some functions, so no
# Thumb code is generated.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR armv7)
set(target armv7-apple-ios8.0)
include(${CMAKE_CURRENT_LIST_DIR}/ios.cmake)
set(assembly ${CMAKE_CURRENT_LIST_DIR}/../armv7_assembly.py)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${assembly})
# Makes the compile command depend on the script, so that a change of it recompiles everything.
file(SHA1 ${assembly} version)
foreach(language CXX OBJCXX)
  string(APPEND CMAKE_${language}_FLAGS_INIT " -mno-thumb")
  set(CMAKE_${language}_COMPILE_OBJECT
    "<CMAKE_${language}_COMPILER> --target=${target} <DEFINES> <INCLUDES> <FLAGS> -S -o <OBJECT>.s <SOURCE>"
    "python3 -B ${assembly} <OBJECT>.s ${version}"
    "<CMAKE_${language}_COMPILER> --target=${target} -c <OBJECT>.s -o <OBJECT>")
endforeach()
