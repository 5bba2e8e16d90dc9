// What the system starts at login, as it starts no application but one inside another: opens the
// application around this one, behind what the user is doing, and ends.

#import <AppKit/AppKit.h>

namespace {

// The application is four folders up: Contents/Library/LoginItems/helper.
constexpr int kFoldersUp = 4;

NSURL* surroundingApplication() {
  NSURL* url = NSBundle.mainBundle.bundleURL;
  for (int i = 0; i < kFoldersUp; ++i) url = url.URLByDeletingLastPathComponent;
  return url;
}

// The application's identifier is the helper's without its ending.
bool isApplicationRunning() {
  NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
  NSString* const ending = @"-AutoStartHelper";
  if (!identifier || ![identifier hasSuffix:ending]) return false;
  NSString* application = [identifier substringToIndex:identifier.length - ending.length];
  return [NSRunningApplication runningApplicationsWithBundleIdentifier:application].count > 0;
}

}  // namespace

@interface LoginHelper : NSObject <NSApplicationDelegate>
@end

@implementation LoginHelper

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  (void)notification;
  NSURL* application = surroundingApplication();
  if (!application || isApplicationRunning()) {
    [NSApp terminate:nil];
    return;
  }
  NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
  configuration.activates = NO;
  // Answered on a thread of the system's own.
  [NSWorkspace.sharedWorkspace openApplicationAtURL:application
                                      configuration:configuration
                                  completionHandler:^(NSRunningApplication*, NSError*) {
                                    dispatch_async(dispatch_get_main_queue(), ^{
                                      [NSApp terminate:nil];
                                    });
                                  }];
}

@end

int main() {
  @autoreleasepool {
    // Held weakly by the application.
    __attribute__((objc_precise_lifetime)) LoginHelper* helper = [[LoginHelper alloc] init];
    NSApplication* application = NSApplication.sharedApplication;
    application.delegate = helper;
    [application run];
  }
  return 0;
}
