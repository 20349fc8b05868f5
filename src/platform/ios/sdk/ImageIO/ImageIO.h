// The part of ImageIO that the backend uses, declared from its documentation.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

typedef struct CGImageSource* CGImageSourceRef;

#ifdef __cplusplus
extern "C" {
#endif

CGImageSourceRef CGImageSourceCreateWithData(CFDataRef data, CFDictionaryRef options);
size_t CGImageSourceGetCount(CGImageSourceRef source);
CGImageRef CGImageSourceCreateImageAtIndex(CGImageSourceRef source, size_t index,
                                           CFDictionaryRef options);
CFDictionaryRef CGImageSourceCopyPropertiesAtIndex(CGImageSourceRef source, size_t index,
                                                   CFDictionaryRef options);

extern const CFStringRef kCGImagePropertyGIFDictionary;
extern const CFStringRef kCGImagePropertyGIFUnclampedDelayTime;
extern const CFStringRef kCGImagePropertyGIFDelayTime;

#ifdef __cplusplus
}
#endif
