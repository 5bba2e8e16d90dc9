#import "programs/mac/battery_details_handler.h"

#include <utility>

#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

NSString* optionalString(const std::optional<std::string>& text) {
  return text ? nsString(*text) : nil;
}

NSNumber* optionalNumber(std::optional<double> number) {
  return number ? [NSNumber numberWithDouble:*number] : nil;
}

API_AVAILABLE(macos(11.0))
::BatteryDetails* systemDetails(const BatteryDetails& details) {
  ::BatteryDetails* made =
      [[::BatteryDetails alloc] initWithIdentifier:nsString(details.identifier)
                                     displayString:nsString(details.displayString)
                                 pronunciationHint:optionalString(details.pronunciationHint)];
  if (details.isPowerAdapterConnected)
    made.isPowerAdapterConnected = [NSNumber numberWithBool:*details.isPowerAdapterConnected];
  made.timeUntilFullOrDepleted = optionalNumber(details.timeUntilFullOrDepleted);
  made.health = optionalNumber(details.health);
  if (details.condition) made.condition = static_cast<::BatteryCondition>(*details.condition);
  return made;
}

}  // namespace

::GetBatteryDetailsIntentResponse* systemResponse(const GetBatteryDetailsIntentResponse& response) {
  // Our answers never go on in the application, so there is no activity to hand over.
  ::GetBatteryDetailsIntentResponse* made = [[::GetBatteryDetailsIntentResponse alloc]
      initWithCode:static_cast<::GetBatteryDetailsIntentResponseCode>(response.code)
      userActivity:nil];
  if (response.details) made.details = systemDetails(*response.details);
  return made;
}

}  // namespace kelvane

@implementation GetBatteryDetailsIntentHandler {
  std::unique_ptr<kelvane::GetBatteryDetailsIntentHandling> handler_;
}

- (instancetype)initWithHandler:(std::unique_ptr<kelvane::GetBatteryDetailsIntentHandling>)handler {
  if ((self = [super init])) handler_ = std::move(handler);
  return self;
}

- (void)handleGetBatteryDetails:(GetBatteryDetailsIntent*)intent
                     completion:(void (^)(GetBatteryDetailsIntentResponse* response))completion {
  (void)intent;
  handler_->handleGetBatteryDetails(
      kelvane::GetBatteryDetailsIntent(),
      [completion](const kelvane::GetBatteryDetailsIntentResponse& response) {
        if (@available(macOS 11, *)) completion(kelvane::systemResponse(response));
      });
}

@end
