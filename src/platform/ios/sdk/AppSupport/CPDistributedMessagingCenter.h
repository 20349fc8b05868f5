// The methods that the backend uses of a private framework's messaging between processes.
#pragma once

#import <Foundation/Foundation.h>

@interface CPDistributedMessagingCenter : NSObject
+ (CPDistributedMessagingCenter*)centerNamed:(NSString*)name;
- (BOOL)doesServerExist;
- (void)runServerOnCurrentThread;
- (void)registerForMessageName:(NSString*)message target:(id)target selector:(SEL)selector;
- (BOOL)sendMessageName:(NSString*)message userInfo:(NSDictionary*)userInfo;
@end
