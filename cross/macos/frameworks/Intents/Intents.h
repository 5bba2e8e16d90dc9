// Intents that are handled inside the application, which macOS does since 11.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSUserActivity;

API_AVAILABLE(macos(11.0))
@interface INIntent : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy, nullable) NSString* identifier;
@end

API_AVAILABLE(macos(11.0))
@interface INIntentResponse : NSObject <NSCopying, NSSecureCoding>
@property(copy, nullable) NSUserActivity* userActivity;
@end

API_AVAILABLE(macos(11.0))
@interface INObject : NSObject <NSCopying, NSSecureCoding>
- (instancetype)initWithIdentifier:(nullable NSString*)identifier
                     displayString:(NSString*)displayString;
- (instancetype)initWithIdentifier:(nullable NSString*)identifier
                     displayString:(NSString*)displayString
                 pronunciationHint:(nullable NSString*)pronunciationHint;
@property(readonly, nullable) NSString* identifier;
@property(readonly) NSString* displayString;
@property(readonly, nullable) NSString* pronunciationHint;
@end

API_AVAILABLE(macos(11.0))
@interface INIntentResolutionResult : NSObject
+ (instancetype)needsValue;
+ (instancetype)notRequired;
+ (instancetype)unsupported;
@end

// What the results of a custom enumeration and a custom object inherit.
API_AVAILABLE(macos(11.0))
@interface INEnumResolutionResult : INIntentResolutionResult
+ (instancetype)successWithResolvedValue:(NSInteger)value;
+ (instancetype)confirmationRequiredWithValueToConfirm:(NSInteger)value;
@end

API_AVAILABLE(macos(11.0))
@interface INObjectResolutionResult : INIntentResolutionResult
+ (instancetype)successWithResolvedObject:(INObject*)object;
+ (instancetype)disambiguationWithObjectsToDisambiguate:(NSArray<INObject*>*)objects;
+ (instancetype)confirmationRequiredWithObjectToConfirm:(nullable INObject*)object;
@end

API_AVAILABLE(macos(11.0))
@protocol INIntentHandlerProviding <NSObject>
- (nullable id)handlerForIntent:(INIntent*)intent;
@end

API_AVAILABLE(macos(11.0))
@interface INExtension : NSObject <INIntentHandlerProviding>
@end

NS_ASSUME_NONNULL_END
