// Opening things elsewhere; what the user set for every application.
#pragma once

#import <AppKit/NSResponder.h>

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT NSNotificationName const
    NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

@class NSRunningApplication;

API_AVAILABLE(macos(10.15))
@interface NSWorkspaceOpenConfiguration : NSObject <NSCopying>
@property BOOL activates;
+ (instancetype)configuration;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
- (BOOL)openURL:(NSURL*)url;
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(nullable void (^)(NSRunningApplication* _Nullable application,
                                                NSError* _Nullable error))completionHandler
    API_AVAILABLE(macos(10.15));
@end

@interface NSRunningApplication : NSObject
@property(class, readonly, strong) NSRunningApplication* currentApplication;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(readonly, getter=isTerminated) BOOL terminated;
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)identifier;
@end

NS_ASSUME_NONNULL_END
