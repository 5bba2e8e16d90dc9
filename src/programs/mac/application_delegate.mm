#import "programs/mac/application_delegate.h"

#import "programs/mac/battery_details_handler.h"

@implementation KelvaneApplicationDelegate {
  kelvane::AppMain* appMain_;
}

- (instancetype)initWithAppMain:(kelvane::AppMain*)appMain {
  if ((self = [super init])) appMain_ = appMain;
  return self;
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender
                    hasVisibleWindows:(BOOL)hasVisibleWindows {
  (void)sender;
  return appMain_->appDelegate().applicationShouldHandleReopen(hasVisibleWindows);
}

- (id)application:(NSApplication*)application
    handlerForIntent:(INIntent*)intent API_AVAILABLE(macos(12.0)) {
  (void)application;
  const bool isOurs = [intent isKindOfClass:GetBatteryDetailsIntent.class];
  auto handler = isOurs
                     ? appMain_->appDelegate().handlerForIntent(kelvane::GetBatteryDetailsIntent())
                     : appMain_->appDelegate().handlerForIntent(kelvane::Intent());
  if (!handler) return nil;
  return [[GetBatteryDetailsIntentHandler alloc] initWithHandler:std::move(handler)];
}

@end
