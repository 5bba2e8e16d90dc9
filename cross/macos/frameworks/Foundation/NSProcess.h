// This process, its bundle, its thread, its run loop; notices within it.
#pragma once

#import <Foundation/NSValues.h>

NS_ASSUME_NONNULL_BEGIN

@class NSOperationQueue;

typedef struct {
  NSInteger majorVersion;
  NSInteger minorVersion;
  NSInteger patchVersion;
} NSOperatingSystemVersion;

typedef NSString* NSNotificationName;
typedef NSString* NSRunLoopMode;

FOUNDATION_EXPORT NSRunLoopMode const NSDefaultRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSRunLoopCommonModes;
FOUNDATION_EXPORT NSNotificationName const NSProcessInfoPowerStateDidChangeNotification
    API_AVAILABLE(macos(12.0));

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSArray<NSString*>* arguments;
@property(readonly, copy) NSString* operatingSystemVersionString;
@property(readonly) NSOperatingSystemVersion operatingSystemVersion;
@property(readonly, getter=isLowPowerModeEnabled)
    BOOL lowPowerModeEnabled API_AVAILABLE(macos(12.0));
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* bundlePath;
@property(readonly, copy) NSURL* bundleURL;
@property(nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSThread : NSObject
@property(class, readonly, strong) NSThread* currentThread;
@property(class, readonly) BOOL isMainThread;
@property(readonly, retain) NSMutableDictionary* threadDictionary;
@end

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block;
@property NSTimeInterval tolerance;
- (void)invalidate;
@end

@interface NSRunLoop : NSObject
@property(class, readonly, strong) NSRunLoop* mainRunLoop;
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode;
@end

@interface NSNotification : NSObject <NSCopying, NSCoding>
@property(readonly, copy) NSNotificationName name;
@property(nullable, readonly, retain) id object;
@end

@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (id<NSObject>)addObserverForName:(nullable NSNotificationName)name
                            object:(nullable id)object
                             queue:(nullable NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

@interface NSUserActivity : NSObject
@property(readonly, copy) NSString* activityType;
@end

NS_ASSUME_NONNULL_END
