// Login items: the functions of old, the class since macOS 13.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

CF_EXPORT _Null_unspecified CFStringRef kSMDomainUserLaunchd;

CF_EXPORT CFArrayRef _Null_unspecified SMCopyAllJobDictionaries(
    _Null_unspecified CFStringRef domain)
    API_DEPRECATED("Nothing replaces it", macos(10.6, 10.10)) CF_RETURNS_RETAINED;
CF_EXPORT Boolean SMLoginItemSetEnabled(CFStringRef identifier, Boolean enabled)
    API_DEPRECATED("Use SMAppService", macos(10.6, 13.0));

typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
  SMAppServiceStatusNotRegistered,
  SMAppServiceStatusEnabled,
  SMAppServiceStatusRequiresApproval,
  SMAppServiceStatusNotFound,
} API_AVAILABLE(macos(13.0));

API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
+ (instancetype)loginItemServiceWithIdentifier:(NSString*)identifier;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
@end

NS_ASSUME_NONNULL_END
