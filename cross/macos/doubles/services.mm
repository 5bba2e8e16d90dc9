// The notification centre and login items: what they are asked for, they note.
#import <ServiceManagement/ServiceManagement.h>

#include "doubles.h"

namespace kelvane::doubles {
namespace {

PerTest<Services> state;

}  // namespace

Services& services() { return *state; }

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

@implementation UNNotificationContent
@end

@implementation UNMutableNotificationContent
@synthesize title = title_, body = body_;
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  UNMutableNotificationContent* copy = [[UNMutableNotificationContent alloc] init];
  copy.title = self.title;
  copy.body = self.body;
  return copy;
}
@end

@interface UNNotificationRequest ()
@property(readwrite, copy) NSString* identifier;
@property(readwrite, copy) UNNotificationContent* content;
@end

@implementation UNNotificationRequest
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
  UNNotificationRequest* request = [[self alloc] init];
  request.identifier = identifier;
  request.content = content;
  services().log.push_back(trigger ? "request for later" : "request");
  return request;
}
@end

@implementation UNUserNotificationCenter
+ (UNUserNotificationCenter*)currentNotificationCenter {
  if (!services().isInBundle) @throw [[NSException alloc] init];
  static PerTest<UNUserNotificationCenter*> only;
  if (!*only) *only = [[UNUserNotificationCenter alloc] init];
  return *only;
}
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL, NSError*))handler {
  services().log.push_back("authorization " + std::to_string(options));
  handler(NO, nil);
}
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError*))completionHandler {
  (void)completionHandler;
  services().posted = request;
}
- (void)removeAllDeliveredNotifications {
  services().log.push_back("remove all");
}
@end

CFStringRef kSMDomainUserLaunchd = CFSTR("user");

extern "C" {
CFArrayRef SMCopyAllJobDictionaries(CFStringRef domain) {
  return domain == kSMDomainUserLaunchd ? (__bridge_retained CFArrayRef)services().jobs : nullptr;
}
Boolean SMLoginItemSetEnabled(CFStringRef identifier, Boolean enabled) {
  services().log.push_back(std::string(enabled ? "enable " : "disable ") +
                           ((__bridge NSString*)identifier).UTF8String);
  return services().acceptsLoginItems;
}
}
