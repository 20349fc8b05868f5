// The part of QuartzCore that the backend uses, declared from its documentation.
#pragma once

#import <Foundation/Foundation.h>

@interface CADisplayLink : NSObject
+ (CADisplayLink*)displayLinkWithTarget:(id)target selector:(SEL)selector;
- (void)setFrameInterval:(NSInteger)refreshes;
- (void)addToRunLoop:(NSRunLoop*)loop forMode:(NSString*)mode;
- (void)invalidate;
- (double)duration;
@end
