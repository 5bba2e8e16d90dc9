// The action "get battery details" as the system's automation knows it: classes that it finds by
// the names in the intent definition, and fills by the properties of the same names. Their
// properties have no accessors here: the system makes them from the definition. Any thread.
#pragma once

#import <Intents/Intents.h>

NS_ASSUME_NONNULL_BEGIN

API_AVAILABLE(macos(11.0))
@interface GetBatteryDetailsIntent : INIntent
@end

typedef NS_ENUM(NSInteger, GetBatteryDetailsIntentResponseCode) {
  GetBatteryDetailsIntentResponseCodeUnspecified = 0,
  GetBatteryDetailsIntentResponseCodeReady = 1,
  GetBatteryDetailsIntentResponseCodeContinueInApp = 2,
  GetBatteryDetailsIntentResponseCodeInProgress = 3,
  GetBatteryDetailsIntentResponseCodeSuccess = 4,
  GetBatteryDetailsIntentResponseCodeFailure = 5,
  GetBatteryDetailsIntentResponseCodeFailureRequiringAppLaunch = 6,
};

typedef NS_ENUM(NSInteger, BatteryCondition) {
  BatteryConditionUnknown = 0,
  BatteryConditionGood = 1,
  BatteryConditionFair = 2,
  BatteryConditionPoor = 3,
};

API_AVAILABLE(macos(11.0))
@interface BatteryConditionResolutionResult : INEnumResolutionResult
+ (instancetype)successWithResolvedBatteryCondition:(BatteryCondition)value;
+ (instancetype)confirmationRequiredWithBatteryConditionToConfirm:(BatteryCondition)value;
@end

// Seconds and a ratio in the numbers; nil is what nobody told.
API_AVAILABLE(macos(11.0))
@interface BatteryDetails : INObject
@property(nonatomic, copy, nullable) NSNumber* isPowerAdapterConnected;
@property(nonatomic, copy, nullable) NSNumber* timeUntilFullOrDepleted;
@property(nonatomic, copy, nullable) NSNumber* health;
@property(nonatomic) BatteryCondition condition;
@end

API_AVAILABLE(macos(11.0))
@interface BatteryDetailsResolutionResult : INObjectResolutionResult
+ (instancetype)successWithResolvedBatteryDetails:(BatteryDetails*)object;
+ (instancetype)disambiguationWithBatteryDetailssToDisambiguate:(NSArray<BatteryDetails*>*)objects;
+ (instancetype)confirmationRequiredWithBatteryDetailsToConfirm:(nullable BatteryDetails*)object;
@end

API_AVAILABLE(macos(11.0))
@interface GetBatteryDetailsIntentResponse : INIntentResponse
@property(nonatomic) GetBatteryDetailsIntentResponseCode code;
@property(nonatomic, copy, nullable) BatteryDetails* details;
- (instancetype)initWithCode:(GetBatteryDetailsIntentResponseCode)code
                userActivity:(nullable NSUserActivity*)userActivity;
@end

API_AVAILABLE(macos(11.0))
@protocol GetBatteryDetailsIntentHandling <NSObject>
- (void)handleGetBatteryDetails:(GetBatteryDetailsIntent*)intent
                     completion:(void (^)(GetBatteryDetailsIntentResponse* response))completion;
@end

NS_ASSUME_NONNULL_END
