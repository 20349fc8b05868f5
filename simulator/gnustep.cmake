# Builds the device's backend on Linux, with GNUstep as Foundation and the flags that GNUstep's
# run-time requires.
set(CMAKE_CXX_COMPILER /usr/bin/clang++-19)
set(CMAKE_OBJCXX_COMPILER /usr/bin/clang++-19)
# The run-time's headers come with gcc. The declarations in sdk/ are only used if GNUstep has none.
string(JOIN " " CMAKE_OBJCXX_FLAGS_INIT
  -DGNUSTEP -DGNUSTEP_BASE_LIBRARY=1 -DGNU_RUNTIME=1 -D_NATIVE_OBJC_EXCEPTIONS
  -fexceptions -fobjc-exceptions -fblocks -fobjc-runtime=gcc
  -fconstant-string-class=NSConstantString
  -isystem ${CMAKE_CURRENT_LIST_DIR}/gnustep
  -isystem /usr/include/GNUstep
  -isystem /usr/lib/gcc/x86_64-linux-gnu/12/include
  -isystem ${CMAKE_CURRENT_LIST_DIR}/../src/platform/ios/sdk)
