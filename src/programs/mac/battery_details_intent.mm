#import "programs/mac/battery_details_intent.h"

@implementation GetBatteryDetailsIntent
@end

@implementation BatteryConditionResolutionResult

+ (instancetype)successWithResolvedBatteryCondition:(BatteryCondition)value {
  return [super successWithResolvedValue:value];
}

+ (instancetype)confirmationRequiredWithBatteryConditionToConfirm:(BatteryCondition)value {
  return [super confirmationRequiredWithValueToConfirm:value];
}

@end

@implementation BatteryDetails
@dynamic isPowerAdapterConnected;
@dynamic timeUntilFullOrDepleted;
@dynamic health;
@dynamic condition;
@end

@implementation BatteryDetailsResolutionResult

+ (instancetype)successWithResolvedBatteryDetails:(BatteryDetails*)object {
  return [super successWithResolvedObject:object];
}

+ (instancetype)disambiguationWithBatteryDetailssToDisambiguate:(NSArray<BatteryDetails*>*)objects {
  return [super disambiguationWithObjectsToDisambiguate:objects];
}

+ (instancetype)confirmationRequiredWithBatteryDetailsToConfirm:(nullable BatteryDetails*)object {
  return [super confirmationRequiredWithObjectToConfirm:object];
}

@end

@implementation GetBatteryDetailsIntentResponse
@synthesize code = code_;
@dynamic details;

- (instancetype)initWithCode:(GetBatteryDetailsIntentResponseCode)code
                userActivity:(nullable NSUserActivity*)userActivity {
  if ((self = [super init])) {
    code_ = code;
    self.userActivity = userActivity;
  }
  return self;
}

@end
