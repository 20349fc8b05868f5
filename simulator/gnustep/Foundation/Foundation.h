// GNUstep's Foundation, with declarations that the device's has and GNUstep's lacks.
#pragma once

#include_next <Foundation/Foundation.h>

typedef NSUInteger NSDataReadingOptions;
enum : NSDataReadingOptions { NSDataReadingMappedIfSafe = 1 };

@interface NSData (Reading)
+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error;
@end
