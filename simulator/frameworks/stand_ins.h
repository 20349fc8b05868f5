// What the device has and GNUstep lacks, as far as the backend calls it: small classes that do what
// the real ones are documented to do, and let a test look and act in their stead.
#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#import <CoreGraphics/CoreGraphics.h>
#import <QuartzCore/QuartzCore.h>
#import <UIKit/UIKit.h>

// What objects of a class hold whose declaration has no room for it.
template <typename State>
class StateTable {
 public:
  State& operator[](id object) {
    std::lock_guard lock(mutex_);
    return states_[object];
  }
  void erase(id object) {
    std::lock_guard lock(mutex_);
    states_.erase(object);
  }

 private:
  std::mutex mutex_;
  std::map<id, State> states_;
};

namespace stand_ins {
// How many there are.
extern std::atomic<int> bitmaps;
}

// A bitmap: RGBA, not premultiplied.
struct CGImage {
  CGImage() { ++stand_ins::bitmaps; }
  ~CGImage() { --stand_ins::bitmaps; }
  CGImage(const CGImage&) = delete;
  CGImage& operator=(const CGImage&) = delete;

  int references = 1;
  int width = 0;
  int height = 0;
  std::vector<unsigned char> pixels;
};

namespace stand_ins {

// Fires every link on the run loop once, as a refresh of the display does.
void refreshDisplay();
// How many links are on the run loop.
std::size_t linkCount();

// How the device is held: 1 is upright, 3 and 4 are sideways.
extern NSInteger orientation;

// The next registration at the Darwin notify center raises an exception.
extern bool raisesAtRegistration;

// Names posted on the Darwin notify center since the last call.
std::vector<std::string> takePosted();
// Delivers a name as if another process had posted it.
void postFromOutside(const std::string& name);

// The rows that were given to the hooking loader, "Class selector" each, in order.
std::vector<std::string> hookedMethods();

// How many observers each wallpaper view that has died had left when its own dealloc ran.
extern std::vector<std::size_t> observersAtDealloc;
// Every removal of an observer raises, whether it is registered or not.
extern bool raisesAtRemoval;
// The next redrawing of the wallpaper raises an exception.
extern bool raisesAtRedraw;
// A host that does not have what its name promises.
extern bool makesNoWallpapers;

}  // namespace stand_ins

// The host's classes, by the names that the library looks for.
@interface SBFWallpaperView : UIView {
 @private
  NSMutableArray* observances_;
}
@end

@interface SBWallpaperController : NSObject {
 @public
  SBFWallpaperView* _sharedWallpaperView;
  SBFWallpaperView* _lockscreenWallpaperView;
  SBFWallpaperView* _homescreenWallpaperView;
}
+ (SBWallpaperController*)sharedInstance;
- (void)_updateSharedWallpaper;
- (void)_updateSeparateWallpaper;
@end

@interface SBDockView : UIView
+ (CGFloat)defaultHeight;
@end

@interface SpringBoard : NSObject {
 @public
  int launches_;
}
- (void)applicationDidFinishLaunching:(id)application;
@end
