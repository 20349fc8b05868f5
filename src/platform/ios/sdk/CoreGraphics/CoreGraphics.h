// The part of CoreGraphics that the backend uses, declared from its documentation.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <stddef.h>

#ifdef __LP64__
typedef double CGFloat;
#else
typedef float CGFloat;
#endif

typedef struct CGPoint {
  CGFloat x;
  CGFloat y;
} CGPoint;
typedef struct CGSize {
  CGFloat width;
  CGFloat height;
} CGSize;
typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;

typedef struct CGImage* CGImageRef;

#ifdef __cplusplus
extern "C" {
#endif

size_t CGImageGetWidth(CGImageRef image);
size_t CGImageGetHeight(CGImageRef image);
void CGImageRelease(CGImageRef image);

#ifdef __cplusplus
}
#endif
