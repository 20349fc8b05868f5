// A private framework's messaging between processes; the methods that the backend uses.
#pragma once

#import <Foundation/Foundation.h>

@interface CPDistributedMessagingCenter : NSObject
+ (CPDistributedMessagingCenter*)centerNamed:(NSString*)name;
- (BOOL)doesServerExist;
- (void)runServerOnCurrentThread;
- (void)registerForMessageName:(NSString*)message target:(id)target selector:(SEL)selector;
- (BOOL)sendMessageName:(NSString*)message userInfo:(NSDictionary*)userInfo;
@end
