# Settings for all processors. Headers are searched in this order: this folder's description of the
# target, the C++ library, the compiler, Darwin, and sdk/ with the declarations of the frameworks.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(darwin ${CMAKE_CURRENT_LIST_DIR}/../../../build/darwin-headers)
set(llvm /usr/lib/llvm-19)
set(flags "-nostdinc++ -nostdlibinc")
foreach(folder
    ${CMAKE_CURRENT_LIST_DIR}
    ${llvm}/include/c++/v1
    ${llvm}/lib/clang/19/include
    ${darwin}/aarch64-macos.13-none
    ${darwin}/any-macos.13-any
    ${darwin}/any-macos-any
    ${CMAKE_CURRENT_LIST_DIR}/../../../src/platform/ios/sdk)
  string(APPEND flags " -isystem ${folder}")
endforeach()
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER /usr/bin/clang++-19)
  set(CMAKE_${language}_COMPILER_TARGET ${target})
  set(CMAKE_${language}_FLAGS_INIT ${flags})
endforeach()
