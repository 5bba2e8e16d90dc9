// The smallest application that touches every framework Kelvane needs, with all portable folders
// linked in. It proves the toolchain: it starts without a window, says in one line per framework
// what it read there, and ends. It is no part of Kelvane and is not shipped.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#import <AppKit/AppKit.h>
#import <IOKit/IOKitLib.h>
#import <IOKit/ps/IOPowerSources.h>
#import <Intents/Intents.h>
#import <ServiceManagement/ServiceManagement.h>
#import <UserNotifications/UserNotifications.h>

namespace {

std::string text(NSString* string) { return string.UTF8String ? string.UTF8String : ""; }

template <typename Ref>
std::shared_ptr<const void> owned(Ref object) {
  return {static_cast<const void*>(object), [](const void* each) {
            if (each) CFRelease(each);
          }};
}

std::string powerSources() {
  const auto blob = owned(IOPSCopyPowerSourcesInfo());
  if (!blob) return "none";
  const auto list = owned(IOPSCopyPowerSourcesList(blob.get()));
  const CFIndex count = list ? CFArrayGetCount(static_cast<CFArrayRef>(list.get())) : 0;
  return std::to_string(count) + " sources, " + std::to_string(IOPSGetTimeRemainingEstimate()) +
         " s, warning level " + std::to_string(IOPSGetBatteryWarningLevel());
}

std::string registry() {
  const io_service_t service =
      IOServiceGetMatchingService(kIOMasterPortDefault, IOServiceNameMatching("AppleSmartBattery"));
  if (service == IO_OBJECT_NULL) return "no battery";
  const auto value = owned(
      IORegistryEntryCreateCFProperty(service, CFSTR("ExternalConnected"), kCFAllocatorDefault, 0));
  IOObjectRelease(service);
  if (!value || CFGetTypeID(value.get()) != CFBooleanGetTypeID()) return "unreadable";
  return CFBooleanGetValue(static_cast<CFBooleanRef>(value.get())) ? "on power" : "on battery";
}

}  // namespace

@interface CheckDelegate : NSObject <NSApplicationDelegate, NSMenuDelegate>
@end

@implementation CheckDelegate {
  NSStatusItem* item_;
  std::vector<std::string> lines_;
  std::function<void(std::string)> say_;
}

- (instancetype)init {
  if ((self = [super init])) {
    __weak CheckDelegate* weakSelf = self;
    say_ = [weakSelf](std::string line) {
      if (CheckDelegate* strongSelf = weakSelf) strongSelf->lines_.push_back(std::move(line));
    };
  }
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  (void)notification;
  say_("Foundation: " + text(NSProcessInfo.processInfo.operatingSystemVersionString) + ", " +
       text(NSLocale.currentLocale.localeIdentifier));
  say_("IOKit power sources: " + powerSources());
  say_("IOKit registry: " + registry());
  [self readAppKit];
  [self readPreferences];
  if (@available(macOS 13, *)) {
    SMAppService* service = [SMAppService loginItemServiceWithIdentifier:@"org.kelvane.None"];
    say_("ServiceManagement: status " + std::to_string(service.status));
  } else {
    say_("ServiceManagement: " +
         std::to_string(SMLoginItemSetEnabled(CFSTR("org.kelvane.None"), 0)));
  }
  if (@available(macOS 11, *)) {
    INObject* object = [[INObject alloc] initWithIdentifier:nil displayString:@"good"];
    say_("Intents: " + text(object.displayString));
  }
  [self askNotificationCentre];
}

- (void)readAppKit {
  item_ = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
  item_.button.title = @"…";
  NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
  menu.delegate = self;
  item_.menu = menu;
  NSSize size = [@"100 %" boundingRectWithSize:NSMakeSize(1000, 1000)
                                       options:NSStringDrawingUsesLineFragmentOrigin
                                    attributes:@{NSFontAttributeName : [NSFont systemFontOfSize:13]}
                                       context:nil]
                    .size;
  say_("AppKit: " + std::to_string(size.width) + " points, appearance " +
       text(item_.button.effectiveAppearance.name));
  CAKeyframeAnimation* shake = [CAKeyframeAnimation animationWithKeyPath:@"position.y"];
  shake.values = @[ @0, @4, @0 ];
  say_("QuartzCore: " + std::to_string(shake.values.count) + " values");
}

- (void)readPreferences {
  [NSUserDefaults.standardUserDefaults addObserver:self
                                        forKeyPath:@"kelvaneCheck"
                                           options:NSKeyValueObservingOptionNew
                                           context:nullptr];
  [NSUserDefaults.standardUserDefaults setObject:@YES forKey:@"kelvaneCheck"];
  [NSUserDefaults.standardUserDefaults removeObjectForKey:@"kelvaneCheck"];
  [NSUserDefaults.standardUserDefaults removeObserver:self
                                           forKeyPath:@"kelvaneCheck"
                                              context:nullptr];
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
  (void)object;
  (void)context;
  say_("Key-value observing: " + text(keyPath) + " " +
       text([change[NSKeyValueChangeNewKey] description]));
}

// The notification centre throws in a process that is in no bundle.
- (void)askNotificationCentre {
  @try {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    content.title = @"Kelvane";
    UNNotificationRequest* request = [UNNotificationRequest requestWithIdentifier:@"check"
                                                                          content:content
                                                                          trigger:nil];
    [UNUserNotificationCenter.currentNotificationCenter removeAllDeliveredNotifications];
    say_("UserNotifications: " + text(request.identifier));
  } @catch (NSException* exception) {
    say_("UserNotifications: " + text(exception.reason));
  }
  __weak CheckDelegate* weakSelf = self;
  dispatch_async(dispatch_get_main_queue(), ^{
    [weakSelf end];
  });
}

- (void)end {
  std::ranges::sort(lines_);
  for (const std::string& line : lines_) std::printf("%s\n", line.c_str());
  [NSStatusBar.systemStatusBar removeStatusItem:item_];
  [NSApp terminate:nil];
}

@end

int main() {
  @autoreleasepool {
    CheckDelegate* delegate = [[CheckDelegate alloc] init];
    NSApplication* application = NSApplication.sharedApplication;
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [application run];
  }
  return 0;
}
