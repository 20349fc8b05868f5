// The only function of the hooking loader that the backend uses.
#pragma once

#include <objc/runtime.h>

#ifdef __cplusplus
extern "C"
#endif
    void
    MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous);
