// The part of CoreFoundation that the backend uses, declared from its documentation.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef const struct __CFDictionary* CFDictionaryRef;
typedef const struct __CFData* CFDataRef;
typedef struct __CFNotificationCenter* CFNotificationCenterRef;
typedef unsigned char Boolean;
typedef long CFIndex;
typedef int SInt32;
typedef double CFTimeInterval;

typedef void (*CFNotificationCallback)(CFNotificationCenterRef center, void* observer,
                                       CFStringRef name, const void* object,
                                       CFDictionaryRef userInfo);
typedef CFIndex CFNotificationSuspensionBehavior;
enum { CFNotificationSuspensionBehaviorDeliverImmediately = 4 };

void CFRelease(CFTypeRef object);

CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter(void);
void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer,
                                     CFNotificationCallback callback, CFStringRef name,
                                     const void* object, CFNotificationSuspensionBehavior behavior);
void CFNotificationCenterRemoveEveryObserver(CFNotificationCenterRef center, const void* observer);
void CFNotificationCenterPostNotification(CFNotificationCenterRef center, CFStringRef name,
                                          const void* object, CFDictionaryRef userInfo,
                                          Boolean deliverImmediately);

// Results of CFRunLoopRunInMode.
enum { kCFRunLoopRunFinished = 1, kCFRunLoopRunTimedOut = 3, kCFRunLoopRunHandledSource = 4 };
extern const CFStringRef kCFRunLoopDefaultMode;
SInt32 CFRunLoopRunInMode(CFStringRef mode, CFTimeInterval seconds,
                          Boolean returnAfterSourceHandled);

#ifdef __cplusplus
}
#endif
