// Doubles of the few classes and functions of a Mac that the adaptors call, written by us from
// their public documentation and compiled from the declarations that the build for macOS uses. What
// they prove is that our code calls them as we believe it has to; AppKit itself is not in them.
//
// Here is what a test asks of the pretended Mac and tells it. Main thread. Everything is new for
// each test; at its end nothing may be left over: no object, no observation.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include "doubles/app_kit/recorded.h"

@interface NSNull : NSObject
+ (NSNull*)null;
@end

namespace kelvane::doubles {

// Called at the end of each test.
std::vector<std::function<void()>>& atEnd();

// Something of the Mac, made when it is first asked for and gone at the end of the test.
template <typename T>
class PerTest {
 public:
  PerTest() {
    atEnd().push_back([this] { value_.reset(); });
  }
  T& operator*() { return value_ ? *value_ : value_.emplace(); }
  T* operator->() { return &**this; }

 private:
  std::optional<T> value_;
};

// --- The run loop. Time stands still until the loop has nothing else to do.

// What the user or the system does when this much time has passed, as an event.
void afterwards(double seconds, std::function<void()> event);
// Runs the loop in its default mode until everything due in this time is done.
void runFor(double seconds);
// What is ready now, in the mode of this name.
void runOnce(NSRunLoopMode mode);
double now();
int timersRunning();

// --- Key-value observing.

// Tells the observers before and after `change`, by the options they chose.
void changeValue(
    id object, NSString* key, id before, id after, const std::function<void()>& change = [] {});
int observations();
void post(NSNotificationName name);

// --- Preferences.

// What another process does, told on the present thread.
void changePreferenceElsewhere(NSString* key, id value);
id storedPreference(NSString* key);

// --- Power.

struct Power {
  id sources;  // of what the list gives to the description; nil: it can't be had
  double timeRemaining = -1;
  int warningLevel = 1;
  int servicesHeld = 0;
  NSDictionary* battery;  // the properties of the service; nil: there is none
};
Power& power();
// One message for each source that listens, delivered when the loop may.
void powerChanged();
int powerListeners();

// --- The application.

struct Application {
  bool abortThrows = false;  // `abortModal` may leave by an exception, or not
  NSAlert* alert;            // the one that is shown
  NSPopover* popover;        // the same
  NSWindow* front;           // the window that was brought to the front last
  NSWindow* sheet;           // what is shown over it
  int activations = 0;
};
Application& application();
void act(id target, SEL action, id sender);
// The user's choice in the alert that is shown.
void press(int button);

// --- Notifications and login items.

struct Services {
  bool isInBundle = true;  // else asking for the notification centre throws
  UNNotificationRequest* posted;
  NSArray* jobs;  // nil: the list can't be had
  bool acceptsLoginItems = true;
  std::vector<std::string> log;  // what else was asked of them
};
Services& services();

// --- The status bar.

struct StatusBar {
  double thickness = 22;
  std::vector<NSStatusItem*> items;  // in the bar
};
StatusBar& statusBar();
// What the system does when a menu is about to be shown, and when the user chooses and clicks.
void openMenu(NSMenu* menu);
void choose(NSMenuItem* item);
void click(NSView* view);

}  // namespace kelvane::doubles
