// GNUstep's Foundation, and what it lacks of the device's.
#pragma once

#include_next <Foundation/Foundation.h>

typedef NSUInteger NSDataReadingOptions;
enum : NSDataReadingOptions { NSDataReadingMappedIfSafe = 1 };

@interface NSData (Reading)
+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error;
@end
