// The part of the dispatch library that the backend uses, declared from its documentation.
#pragma once

#include <stdint.h>

typedef struct dispatch_semaphore_s* dispatch_semaphore_t;
// In nanoseconds, on a clock that stops while the device sleeps.
typedef uint64_t dispatch_time_t;
#define DISPATCH_TIME_NOW 0ull

#ifdef __cplusplus
extern "C" {
#endif
dispatch_semaphore_t dispatch_semaphore_create(intptr_t value);
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore);
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t limit);
dispatch_time_t dispatch_time(dispatch_time_t from, int64_t nanoseconds);
void dispatch_release(dispatch_semaphore_t object);
#ifdef __cplusplus
}
#endif
