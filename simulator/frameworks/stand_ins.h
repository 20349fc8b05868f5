// Stand-ins for the parts of the device's frameworks that the backend uses and GNUstep lacks. They
// do what the real ones are documented to do. Tests control and examine them through these
// functions and variables.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#import <CoreGraphics/CoreGraphics.h>
#import <QuartzCore/QuartzCore.h>
#import <UIKit/UIKit.h>

// Stores the state of objects whose class declares no instance variables for it. Any thread.
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
// The number of bitmaps that exist.
extern std::atomic<int> bitmaps;
}

// A bitmap of RGBA pixels, not premultiplied.
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
// Returns the number of links on the run loop.
std::size_t linkCount();

// The status bar's orientation: 1 is portrait, 3 and 4 are landscape.
extern NSInteger orientation;

// If true, the next registration at the Darwin notify center raises an exception.
extern bool raisesAtRegistration;

// Called with each name that is posted to the Darwin notify center.
extern std::function<void(const std::string& name)> onPost;
// Returns the names posted to the Darwin notify center since the last call.
std::vector<std::string> takePosted();
// Delivers a name as if another process had posted it.
void postFromOutside(const std::string& name);

// Returns the methods that were replaced, in order, each as "Class selector".
std::vector<std::string> hookedMethods();

// The number of observers that each destroyed wallpaper view had when its original dealloc ran.
extern std::vector<std::size_t> observersAtDealloc;
// If true, every removal of an observer raises an exception, even if it is registered.
extern bool raisesAtRemoval;
// If true, the next redrawing of the wallpaper raises an exception.
extern bool raisesAtRedraw;
// If true, redrawing the shared wallpaper does not create its view.
extern bool makesNoWallpapers;

}  // namespace stand_ins

// The host's classes that the library looks up by name.
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
