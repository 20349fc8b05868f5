#include <cstdio>
#include <cstdlib>
#include <utility>

#import <Foundation/Foundation.h>
#include <png.h>

#include "stand_ins.h"

namespace stand_ins {
NSInteger orientation = 1;
}

namespace {

struct Color {
  CGFloat components[4];
};
StateTable<Color> colors;

StateTable<CGImageRef> bitmaps;

struct View {
  CGRect frame{};
  NSInteger tag = 0;
  BOOL hidden = NO;
  CGFloat alpha = 1;
  BOOL clips = NO;
  UIColor* background = nil;
  NSUInteger autoresizingMask = 0;
  UIViewContentMode contentMode = 0;
  UIView* superview = nil;
  NSMutableArray* subviews = [[NSMutableArray alloc] init];
};
StateTable<View> views;

StateTable<UIImage*> shownImages;

// On the device, changes off the main thread sometimes damage the tree, so they end the process
// here.
View& changed(UIView* view) {
  if (![NSThread isMainThread]) {
    std::fprintf(stderr, "a view was changed off the main thread\n");
    std::abort();
  }
  return views[view];
}

}  // namespace

@implementation UIColor

+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
  UIColor* color = [[[self alloc] init] autorelease];
  colors[color] = {{red, green, blue, alpha}};
  return color;
}

- (BOOL)getRed:(CGFloat*)red green:(CGFloat*)green blue:(CGFloat*)blue alpha:(CGFloat*)alpha {
  *red = colors[self].components[0];
  *green = colors[self].components[1];
  *blue = colors[self].components[2];
  *alpha = colors[self].components[3];
  return YES;
}

@end

@implementation UIImage

+ (UIImage*)imageWithCGImage:(CGImageRef)image {
  UIImage* made = [[[self alloc] init] autorelease];
  bitmaps[made] = image;
  ++image->references;
  return made;
}

// Decodes a PNG. Returns a single pixel for a GIF, because the library only tests if it is an
// image.
+ (UIImage*)imageWithContentsOfFile:(NSString*)path {
  NSData* data = [NSData dataWithContentsOfFile:path];
  CGImageRef bitmap = new CGImage;
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&header, [data bytes], [data length])) {
    header.format = PNG_FORMAT_RGBA;
    bitmap->width = static_cast<int>(header.width);
    bitmap->height = static_cast<int>(header.height);
    bitmap->pixels.resize(PNG_IMAGE_SIZE(header));
    png_image_finish_read(&header, nullptr, bitmap->pixels.data(), 0, nullptr);
  } else if ([data length] > 6 && memcmp([data bytes], "GIF8", 4) == 0) {
    bitmap->width = bitmap->height = 1;
    bitmap->pixels.assign(4, 0);
  }
  UIImage* image = bitmap->width > 0 ? [self imageWithCGImage:bitmap] : nil;
  CGImageRelease(bitmap);
  return image;
}

- (CGImageRef)CGImage {
  return bitmaps[self];
}

- (void)dealloc {
  CGImageRelease(bitmaps[self]);
  bitmaps.erase(self);
  [super dealloc];
}

@end

NSData* UIImagePNGRepresentation(UIImage* image) {
  CGImageRef bitmap = [image CGImage];
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  header.width = static_cast<png_uint_32>(bitmap->width);
  header.height = static_cast<png_uint_32>(bitmap->height);
  header.format = PNG_FORMAT_RGBA;
  png_alloc_size_t size = 0;
  png_image_write_to_memory(&header, nullptr, &size, 0, bitmap->pixels.data(), 0, nullptr);
  NSMutableData* data = [NSMutableData dataWithLength:size];
  png_image_write_to_memory(&header, [data mutableBytes], &size, 0, bitmap -> pixels.data(), 0,
                            nullptr);
  return data;
}

@implementation UIView

- (void)dealloc {
  for (UIView* view in [self subviews]) [view removeFromSuperview];
  [views[self].subviews release];
  [views[self].background release];
  views.erase(self);
  [super dealloc];
}

- (CGRect)frame {
  return views[self].frame;
}
- (void)setFrame:(CGRect)frame {
  const CGRect before = views[self].frame;
  changed(self).frame = frame;
  for (UIView* view in [self subviews]) {
    CGRect follow = [view frame];
    const NSUInteger mask = views[view].autoresizingMask;
    if (mask & 2) follow.size.width += frame.size.width - before.size.width;
    if (mask & 16) follow.size.height += frame.size.height - before.size.height;
    [view setFrame:follow];
  }
}
- (NSInteger)tag {
  return views[self].tag;
}
- (void)setTag:(NSInteger)tag {
  views[self].tag = tag;
}
- (BOOL)isHidden {
  return views[self].hidden;
}
- (void)setHidden:(BOOL)hidden {
  changed(self).hidden = hidden;
}
- (CGFloat)alpha {
  return views[self].alpha;
}
- (void)setAlpha:(CGFloat)alpha {
  changed(self).alpha = alpha;
}
- (void)setOpaque:(BOOL)opaque {
}
- (BOOL)clipsToBounds {
  return views[self].clips;
}
- (void)setClipsToBounds:(BOOL)clips {
  changed(self).clips = clips;
}
- (UIColor*)backgroundColor {
  return views[self].background;
}
- (void)setBackgroundColor:(UIColor*)color {
  [views[self].background autorelease];
  changed(self).background = [color retain];
}
- (void)setAutoresizingMask:(NSUInteger)mask {
  changed(self).autoresizingMask = mask;
}
- (UIViewContentMode)contentMode {
  return views[self].contentMode;
}
- (void)setContentMode:(UIViewContentMode)mode {
  changed(self).contentMode = mode;
}
- (UIView*)superview {
  return views[self].superview;
}
- (NSArray*)subviews {
  return [[views[self].subviews copy] autorelease];
}
- (void)didMoveToSuperview {
}

- (void)addSubview:(UIView*)view {
  [view retain];
  [view removeFromSuperview];
  [changed(self).subviews addObject:view];
  views[view].superview = self;
  [view didMoveToSuperview];
  [view release];
}

- (void)removeFromSuperview {
  if (views[self].superview == nil) return;
  [[self retain] autorelease];
  UIView* parent = views[self].superview;
  changed(self).superview = nil;
  [views[parent].subviews removeObject:self];
  [self didMoveToSuperview];
}

- (void)bringSubviewToFront:(UIView*)view {
  if (![views[self].subviews containsObject:view]) return;
  [[view retain] autorelease];
  [changed(self).subviews removeObject:view];
  [views[self].subviews addObject:view];
}

@end

@implementation UIImageView

- (UIImage*)image {
  return shownImages[self];
}
- (void)setImage:(UIImage*)image {
  changed(self);
  [shownImages[self] autorelease];
  shownImages[self] = [image retain];
}
- (void)dealloc {
  [shownImages[self] release];
  shownImages.erase(self);
  [super dealloc];
}

@end

@interface UprightScreen : NSObject <UICoordinateSpace>
@end
@implementation UprightScreen
- (CGRect)bounds {
  const CGRect bounds = {{0, 0}, {320, 568}};
  return bounds;
}
@end

@implementation UIScreen

+ (UIScreen*)mainScreen {
  static UIScreen* screen = [[UIScreen alloc] init];
  return screen;
}
- (id<UICoordinateSpace>)fixedCoordinateSpace {
  static UprightScreen* upright = [[UprightScreen alloc] init];
  return upright;
}
- (CGRect)bounds {
  CGRect bounds = [[self fixedCoordinateSpace] bounds];
  if (stand_ins::orientation >= 3) std::swap(bounds.size.width, bounds.size.height);
  return bounds;
}

@end

@implementation UIApplication

+ (UIApplication*)sharedApplication {
  static UIApplication* application = [[UIApplication alloc] init];
  return application;
}
- (NSInteger)statusBarOrientation {
  return stand_ins::orientation;
}

@end

@implementation UIDevice

+ (UIDevice*)currentDevice {
  static UIDevice* device = [[UIDevice alloc] init];
  return device;
}
- (NSInteger)userInterfaceIdiom {
  return 0;
}

@end
