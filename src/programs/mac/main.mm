// Kelvane in the menu bar until it is asked to end.

#import <AppKit/AppKit.h>

#include "app/app_main.h"
#import "programs/mac/application_delegate.h"
#include "programs/mac/bundle_information.h"
#include "programs/mac/mac_computer.h"
#import "programs/mac/main_menu.h"

int main() {
  @autoreleasepool {
    NSApplication* application = NSApplication.sharedApplication;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    application.mainMenu = kelvane::makeMainMenu();
    kelvane::MacComputer computer;
    kelvane::AppMain appMain(computer.platform(), kelvane::bundleInformation());
    // Held weakly by the application.
    __attribute__((objc_precise_lifetime)) KelvaneApplicationDelegate* delegate =
        [[KelvaneApplicationDelegate alloc] initWithAppMain:&appMain];
    application.delegate = delegate;
    // Counts the launch; the rest of the start waits until the loop runs.
    appMain.appState();
    return computer.runLoop.run();
  }
}
