#include <utility>

#import <Foundation/Foundation.h>

#include "stand_ins.h"

namespace stand_ins {
std::vector<std::size_t> observersAtDealloc;
bool raisesAtRemoval = false;
bool raisesAtRedraw = false;
bool makesNoWallpapers = false;
}

// The device stores observers in private objects with these instance variables.
@interface Observance : NSObject {
 @public
  id _observer;
  void* context_;
}
@end
@implementation Observance
@end

@interface ObservationInfo : NSObject {
 @public
  NSArray* _observances;
}
@end
@implementation ObservationInfo
@end

@implementation SBFWallpaperView

- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
  Observance* observance = [[[Observance alloc] init] autorelease];
  observance->_observer = observer;
  observance->context_ = context;
  if (observances_ == nil) observances_ = [[NSMutableArray alloc] init];
  [observances_ addObject:observance];
}

- (void)setHidden:(BOOL)hidden {
  [super setHidden:hidden];
  for (Observance* observance in [[observances_ copy] autorelease]) {
    [observance->_observer observeValueForKeyPath:@"hidden"
                                         ofObject:self
                                           change:nil
                                          context:observance->context_];
  }
}

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath {
  for (Observance* observance in [[observances_ copy] autorelease]) {
    if (observance->_observer != observer || stand_ins::raisesAtRemoval) continue;
    [observances_ removeObject:observance];
    return;
  }
  [NSException raise:NSRangeException format:@"%@ is not registered", observer];
}

- (void*)observationInfo {
  if ([observances_ count] == 0) return nullptr;
  ObservationInfo* info = [[[ObservationInfo alloc] init] autorelease];
  info->_observances = [[observances_ copy] autorelease];
  return info;
}

// Raises an exception if observers are left, as iOS 10 and earlier do.
- (void)dealloc {
  stand_ins::observersAtDealloc.push_back([observances_ count]);
  if ([observances_ count] > 0) {
    [NSException raise:NSInternalInconsistencyException
                format:@"%@ was deallocated while observers were still registered with it", self];
  }
  [observances_ release];
  [super dealloc];
}

@end

@implementation SBWallpaperController

+ (SBWallpaperController*)sharedInstance {
  static SBWallpaperController* controller = [[SBWallpaperController alloc] init];
  return controller;
}
- (void)_updateSharedWallpaper {
  if (std::exchange(stand_ins::raisesAtRedraw, false)) {
    [NSException raise:NSGenericException format:@"no"];
  }
  if (stand_ins::makesNoWallpapers) return;
  if (_sharedWallpaperView == nil) _sharedWallpaperView = [[SBFWallpaperView alloc] init];
}
- (void)_updateSeparateWallpaper {
  if (_lockscreenWallpaperView == nil) _lockscreenWallpaperView = [[SBFWallpaperView alloc] init];
  if (_homescreenWallpaperView == nil) _homescreenWallpaperView = [[SBFWallpaperView alloc] init];
}

@end

@implementation SBDockView
+ (CGFloat)defaultHeight {
  return 96;
}
@end

@implementation SpringBoard
- (void)applicationDidFinishLaunching:(id)application {
  ++launches_;
}
@end
