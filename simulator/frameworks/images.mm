#include <algorithm>
#include <cmath>

#import <CoreImage/CoreImage.h>
#import <Foundation/Foundation.h>
#import <ImageIO/ImageIO.h>
#include <gif_lib.h>

#include "stand_ins.h"

namespace stand_ins {
std::atomic<int> bitmaps = 0;
}

size_t CGImageGetWidth(CGImageRef image) {
  return image == nullptr ? 0 : image->width;
}
size_t CGImageGetHeight(CGImageRef image) {
  return image == nullptr ? 0 : image->height;
}
void CGImageRelease(CGImageRef image) {
  if (image != nullptr && --image->references == 0) delete image;
}

void CFRelease(CFTypeRef object) {
  [(id)object release];
}

// A GIF. Requires images that cover the whole screen. An image without pixels cannot be decoded.
@interface GIFSource : NSObject {
 @public
  GifFileType* gif_;
  NSData* rest_;
  NSUInteger position_;
}
@end

@implementation GIFSource
- (void)dealloc {
  if (gif_ != nullptr) DGifCloseFile(gif_, nullptr);
  [rest_ release];
  [super dealloc];
}
@end

// Part of every image's properties, so that tests can tell when these are released.
@interface GIFProperties : NSObject
@end
@implementation GIFProperties
@end

const CFStringRef kCGImagePropertyGIFDictionary = (CFStringRef) @"{GIF}";
const CFStringRef kCGImagePropertyGIFUnclampedDelayTime = (CFStringRef) @"UnclampedDelayTime";
const CFStringRef kCGImagePropertyGIFDelayTime = (CFStringRef) @"DelayTime";

namespace {

int readBytes(GifFileType* gif, GifByteType* target, int size) {
  auto* source = static_cast<GIFSource*>(gif->UserData);
  const NSUInteger count = std::min<NSUInteger>(static_cast<NSUInteger>(size),
                                                [source->rest_ length] - source->position_);
  [source->rest_ getBytes:target range:NSMakeRange(source->position_, count)];
  source->position_ += count;
  return static_cast<int>(count);
}

GIFSource* sourceOf(CGImageSourceRef source) {
  return (GIFSource*)source;
}

}  // namespace

CGImageSourceRef CGImageSourceCreateWithData(CFDataRef data, CFDictionaryRef) {
  GIFSource* source = [[GIFSource alloc] init];
  source->rest_ = [(NSData*)data retain];
  source->gif_ = DGifOpen(source, readBytes, nullptr);
  // As on the device, any bytes give a source, which may have no images.
  if (source->gif_ != nullptr && DGifSlurp(source->gif_) != GIF_OK) source->gif_->ImageCount = 0;
  return (CGImageSourceRef)source;
}

size_t CGImageSourceGetCount(CGImageSourceRef source) {
  GifFileType* gif = sourceOf(source)->gif_;
  return gif == nullptr ? 0 : static_cast<size_t>(gif->ImageCount);
}

CGImageRef CGImageSourceCreateImageAtIndex(CGImageSourceRef source, size_t index, CFDictionaryRef) {
  const SavedImage& saved = sourceOf(source)->gif_->SavedImages[index];
  const ColorMapObject* colors = saved.ImageDesc.ColorMap != nullptr
                                     ? saved.ImageDesc.ColorMap
                                     : sourceOf(source)->gif_->SColorMap;
  if (saved.RasterBits == nullptr || colors == nullptr) return nullptr;
  auto* image = new CGImage;
  image->width = saved.ImageDesc.Width;
  image->height = saved.ImageDesc.Height;
  for (int at = 0; at < image->width * image->height; ++at) {
    const GifColorType& color = colors->Colors[saved.RasterBits[at]];
    image->pixels.insert(image->pixels.end(), {color.Red, color.Green, color.Blue, 255});
  }
  return image;
}

CFDictionaryRef CGImageSourceCopyPropertiesAtIndex(CGImageSourceRef source, size_t index,
                                                   CFDictionaryRef) {
  GraphicsControlBlock control{};
  if (DGifSavedExtensionToGCB(sourceOf(source)->gif_, static_cast<int>(index), &control) !=
      GIF_OK) {
    return (CFDictionaryRef)[[NSDictionary alloc] init];
  }
  NSNumber* delay = [NSNumber numberWithDouble:control.DelayTime / 100.0];
  NSDictionary* gif = [NSDictionary
      dictionaryWithObjectsAndKeys:delay, (NSString*)kCGImagePropertyGIFUnclampedDelayTime, delay,
                                   (NSString*)kCGImagePropertyGIFDelayTime, nil];
  return (CFDictionaryRef)[[NSDictionary alloc]
      initWithObjectsAndKeys:gif, (NSString*)kCGImagePropertyGIFDictionary,
                             [[[GIFProperties alloc] init] autorelease], @"of the file", nil];
}

NSString* const kCIInputImageKey = @"inputImage";
NSString* const kCIInputRadiusKey = @"inputRadius";

namespace {

struct Output {
  CGImageRef bitmap = nullptr;
  CGFloat spread = 0;
};
StateTable<Output> outputs;

StateTable<std::map<std::string, id>> inputs;

}  // namespace

// A filter that does not blur, but has the extent of a blur.
@implementation CIImage

+ (CIImage*)imageWithCGImage:(CGImageRef)image {
  CIImage* made = [[[self alloc] init] autorelease];
  outputs[made].bitmap = image;
  ++image->references;
  return made;
}
- (CGRect)extent {
  const auto& [bitmap, spread] = outputs[self];
  const CGRect extent = {{-spread, -spread},
                         {bitmap->width + 2 * spread, bitmap->height + 2 * spread}};
  return extent;
}
- (void)dealloc {
  CGImageRelease(outputs[self].bitmap);
  outputs.erase(self);
  [super dealloc];
}

@end

@implementation CIFilter

+ (CIFilter*)filterWithName:(NSString*)name {
  if (![name isEqualToString:@"CIGaussianBlur"]) return nil;
  return [[[self alloc] init] autorelease];
}
- (void)setDefaults {
  [self setValue:[NSNumber numberWithInt:10] forKey:kCIInputRadiusKey];
}
- (void)setValue:(id)value forKey:(NSString*)key {
  inputs[self][[key UTF8String]] = [[value retain] autorelease];
}
- (CIImage*)outputImage {
  CIImage* input = inputs[self]["inputImage"];
  CIImage* output = [CIImage imageWithCGImage:outputs[input].bitmap];
  outputs[output].spread = 3 * [inputs[self]["inputRadius"] doubleValue];
  return output;
}
- (void)dealloc {
  inputs.erase(self);
  [super dealloc];
}

@end

@implementation CIContext

+ (CIContext*)contextWithOptions:(NSDictionary*)options {
  return [[[self alloc] init] autorelease];
}
- (CGImageRef)createCGImage:(CIImage*)image fromRect:(CGRect)rectangle {
  const CGImageRef bitmap = outputs[image].bitmap;
  auto* part = new CGImage;
  part->width = static_cast<int>(std::lround(rectangle.size.width));
  part->height = static_cast<int>(std::lround(rectangle.size.height));
  part->pixels.assign(static_cast<size_t>(part->width) * part->height * 4, 0);
  const int left = static_cast<int>(std::lround(rectangle.origin.x));
  const int top = static_cast<int>(std::lround(rectangle.origin.y));
  for (int y = std::max(0, -top); y < part->height && y + top < bitmap->height; ++y) {
    for (int x = std::max(0, -left); x < part->width && x + left < bitmap->width; ++x) {
      std::copy_n(&bitmap->pixels[4 * ((y + top) * bitmap->width + x + left)], 4,
                  &part->pixels[4 * (y * part->width + x)]);
    }
  }
  return part;
}

@end
