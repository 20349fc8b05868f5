// Addresses of functions, and functions that stand for many.
#pragma once

template <typename Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

inline void* same(void* object) {
  return object;
}
inline void nothing() {}
