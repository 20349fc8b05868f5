// The part of Foundation that the backend uses, declared from its documentation.
#pragma once

#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>
#import <objc/NSObject.h>
#import <objc/objc.h>

@class NSArray, NSData, NSDictionary, NSError, NSOperation;

typedef double NSTimeInterval;
typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };
typedef NSUInteger NSKeyValueObservingOptions;
typedef NSUInteger NSDataReadingOptions;
enum : NSDataReadingOptions { NSDataReadingMappedIfSafe = 1 };

@interface NSString : NSObject
+ (instancetype)stringWithContentsOfFile:(NSString*)path
                                encoding:(NSStringEncoding)encoding
                                   error:(NSError**)error;
+ (instancetype)stringWithFormat:(NSString*)format, ... __attribute__((format(NSString, 1, 2)));
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)length
                     encoding:(NSStringEncoding)encoding;
- (NSUInteger)length;
- (const char*)UTF8String;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (BOOL)writeToFile:(NSString*)path
         atomically:(BOOL)atomically
           encoding:(NSStringEncoding)encoding
              error:(NSError**)error;
- (NSString*)lastPathComponent;
- (NSString*)stringByDeletingPathExtension;
- (BOOL)boolValue;
- (int)intValue;
- (float)floatValue;
- (double)doubleValue;
@end

@interface NSNumber : NSObject
+ (NSNumber*)numberWithInt:(int)value;
- (double)doubleValue;
@end

@interface NSDate : NSObject
+ (instancetype)date;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
+ (instancetype)dataWithContentsOfFile:(NSString*)path
                               options:(NSDataReadingOptions)options
                                 error:(NSError**)error;
- (NSUInteger)length;
- (BOOL)isEqualToData:(NSData*)other;
- (BOOL)writeToFile:(NSString*)path atomically:(BOOL)atomically;
@end

@interface NSArray : NSObject
+ (instancetype)arrayWithContentsOfFile:(NSString*)path;
- (NSUInteger)count;
- (id)objectAtIndex:(NSUInteger)index;
- (BOOL)writeToFile:(NSString*)path atomically:(BOOL)atomically;
@end

@interface NSMutableArray : NSArray
+ (instancetype)array;
- (void)addObject:(id)object;
@end

@interface NSDictionary : NSObject
+ (instancetype)dictionaryWithContentsOfFile:(NSString*)path;
- (id)objectForKey:(id)key;
- (BOOL)writeToFile:(NSString*)path atomically:(BOOL)atomically;
@end

@interface NSMutableDictionary : NSDictionary
+ (instancetype)dictionary;
- (void)setObject:(id)object forKey:(id)key;
@end

@interface NSFileManager : NSObject
+ (NSFileManager*)defaultManager;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (BOOL)fileExistsAtPath:(NSString*)path isDirectory:(BOOL*)isDirectory;
- (BOOL)createDirectoryAtPath:(NSString*)path
    withIntermediateDirectories:(BOOL)intermediates
                     attributes:(NSDictionary*)attributes
                          error:(NSError**)error;
- (BOOL)removeItemAtPath:(NSString*)path error:(NSError**)error;
- (BOOL)moveItemAtPath:(NSString*)path toPath:(NSString*)target error:(NSError**)error;
- (BOOL)copyItemAtPath:(NSString*)path toPath:(NSString*)target error:(NSError**)error;
@end

@interface NSException : NSObject
+ (void)raise:(NSString*)name format:(NSString*)format, ... __attribute__((format(NSString, 2, 3)));
@end

@interface NSOperation : NSObject
@end

@interface NSBlockOperation : NSOperation
+ (instancetype)blockOperationWithBlock:(void (^)(void))block;
@end

@interface NSOperationQueue : NSObject
+ (NSOperationQueue*)mainQueue;
+ (NSOperationQueue*)currentQueue;
- (void)setMaxConcurrentOperationCount:(NSInteger)count;
- (void)addOperation:(NSOperation*)operation;
- (void)addOperationWithBlock:(void (^)(void))block;
@end

// Foundation compares modes by their addresses.
#ifdef __cplusplus
extern "C"
#endif
    NSString* const NSRunLoopCommonModes;

@interface NSRunLoop : NSObject
+ (NSRunLoop*)mainRunLoop;
@end

@interface NSThread : NSObject
+ (void)sleepForTimeInterval:(NSTimeInterval)seconds;
@end

@interface NSNotificationCenter : NSObject
+ (NSNotificationCenter*)defaultCenter;
- (void)addObserver:(id)observer selector:(SEL)selector name:(NSString*)name object:(id)object;
@end

@interface NSAutoreleasePool : NSObject
- (void)drain;
@end

@interface NSObject (NSKeyValueCoding)
- (id)valueForKey:(NSString*)key;
- (void)setValue:(id)value forKey:(NSString*)key;
@end

@interface NSObject (NSKeyValueObserving)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context;
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath;
- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context;
- (void*)observationInfo;
@end
