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

#ifdef __cplusplus
}
#endif
