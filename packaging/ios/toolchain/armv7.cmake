# Code for 32-bit devices from iOS 8.0 on. The linker that can still link it needs help from the
# assembly, and forgets of the addresses of some functions that their code is the short kind (Thumb),
# so there is none of that kind.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR armv7)
set(target armv7-apple-ios8.0)
include(${CMAKE_CURRENT_LIST_DIR}/ios.cmake)
set(assembly ${CMAKE_CURRENT_LIST_DIR}/../armv7_assembly.py)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${assembly})
# So that another script makes another command, and everything is compiled anew.
file(SHA1 ${assembly} version)
foreach(language CXX OBJCXX)
  string(APPEND CMAKE_${language}_FLAGS_INIT " -mno-thumb")
  set(CMAKE_${language}_COMPILE_OBJECT
    "<CMAKE_${language}_COMPILER> --target=${target} <DEFINES> <INCLUDES> <FLAGS> -S -o <OBJECT>.s <SOURCE>"
    "python3 -B ${assembly} <OBJECT>.s ${version}"
    "<CMAKE_${language}_COMPILER> --target=${target} -c <OBJECT>.s -o <OBJECT>")
endforeach()
