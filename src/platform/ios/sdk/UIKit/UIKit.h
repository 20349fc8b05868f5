// The part of UIKit that the backend uses, declared from its documentation.
#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

@class CIImage;

@interface UIColor : NSObject
+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (BOOL)getRed:(CGFloat*)red green:(CGFloat*)green blue:(CGFloat*)blue alpha:(CGFloat*)alpha;
@end

@interface UIImage : NSObject
+ (UIImage*)imageWithContentsOfFile:(NSString*)path;
+ (UIImage*)imageWithCGImage:(CGImageRef)image;
- (CGImageRef)CGImage;
@end

#ifdef __cplusplus
extern "C"
#endif
    NSData*
    UIImagePNGRepresentation(UIImage* image);

typedef NSInteger UIViewContentMode;

@interface UIView : NSObject
- (CGRect)frame;
- (void)setFrame:(CGRect)frame;
- (NSInteger)tag;
- (void)setTag:(NSInteger)tag;
- (BOOL)isHidden;
- (void)setHidden:(BOOL)hidden;
- (CGFloat)alpha;
- (void)setAlpha:(CGFloat)alpha;
- (void)setOpaque:(BOOL)opaque;
- (BOOL)clipsToBounds;
- (void)setClipsToBounds:(BOOL)clips;
- (UIColor*)backgroundColor;
- (void)setBackgroundColor:(UIColor*)color;
- (void)setAutoresizingMask:(NSUInteger)mask;
- (UIViewContentMode)contentMode;
- (void)setContentMode:(UIViewContentMode)mode;
- (UIView*)superview;
- (NSArray*)subviews;
- (void)addSubview:(UIView*)view;
- (void)removeFromSuperview;
- (void)bringSubviewToFront:(UIView*)view;
- (void)didMoveToSuperview;
@end

@interface UIImageView : UIView
- (UIImage*)image;
- (void)setImage:(UIImage*)image;
@end

@protocol UICoordinateSpace <NSObject>
- (CGRect)bounds;
@end

@interface UIScreen : NSObject
+ (UIScreen*)mainScreen;
// The coordinates in portrait orientation. The screen's own bounds follow its rotation.
- (id<UICoordinateSpace>)fixedCoordinateSpace;
@end

@interface UIApplication : NSObject
+ (UIApplication*)sharedApplication;
- (NSInteger)statusBarOrientation;
@end

@interface UIDevice : NSObject
+ (UIDevice*)currentDevice;
- (NSInteger)userInterfaceIdiom;
@end
