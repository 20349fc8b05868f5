// The part of CoreImage that the backend uses, declared from its documentation.
#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

@interface CIImage : NSObject
+ (CIImage*)imageWithCGImage:(CGImageRef)image;
- (CGRect)extent;
@end

@interface CIFilter : NSObject
+ (CIFilter*)filterWithName:(NSString*)name;
- (void)setDefaults;
- (CIImage*)outputImage;
@end

@interface CIContext : NSObject
+ (CIContext*)contextWithOptions:(NSDictionary*)options;
- (CGImageRef)createCGImage:(CIImage*)image fromRect:(CGRect)rectangle;
@end

#ifdef __cplusplus
extern "C" {
#endif

extern NSString* const kCIInputImageKey;
extern NSString* const kCIInputRadiusKey;

#ifdef __cplusplus
}
#endif
