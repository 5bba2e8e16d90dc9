// The application object, its events and its modal loop.
#include "foundation/run_loop.h"
#include "runtime/abi.h"

__kindof NSApplication* _Null_unspecified NSApp;
NSNotificationName const NSApplicationDidChangeScreenParametersNotification = @"screen parameters";

namespace kelvane::doubles {
namespace {

PerTest<Application> state;
constexpr NSModalResponse kNone = 0;
[[maybe_unused]] const bool kForgets = (atEnd().push_back([] { NSApp = nil; }), true);

}  // namespace

Application& application() { return *state; }

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

@interface NSApplication () {
  bool isStopped_;
  NSModalResponse answer_;
}
@property(nullable, readwrite, strong) NSWindow* modalWindow;
@end

@implementation NSEvent
+ (NSEvent*)otherEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSEventModifierFlags)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)windowNumber
                       context:(NSGraphicsContext*)context
                       subtype:(short)subtype
                         data1:(NSInteger)data1
                         data2:(NSInteger)data2 {
  (void)type, (void)location, (void)flags, (void)time, (void)windowNumber, (void)context;
  (void)subtype, (void)data1, (void)data2;
  return [[NSEvent alloc] init];
}
@end

@implementation NSResponder
@end

@implementation NSApplication
@synthesize appearance = appearance_;
@dynamic applicationIconImage;

+ (NSApplication*)sharedApplication {
  static PerTest<NSApplication*> only;
  if (!*only) NSApp = *only = [[NSApplication alloc] init];
  return *only;
}
- (NSAppearance*)effectiveAppearance {
  return appearance_;
}
// Looks up after an event only, but a modal loop always.
- (void)run {
  isStopped_ = false;
  runLoopUntil(NSDefaultRunLoopMode, [self] { return takeEventHandled() && isStopped_; });
}
- (void)activateIgnoringOtherApps:(BOOL)flag {
  application().activations += flag;
}
- (void)stop:(id)sender {
  (void)sender;
  isStopped_ = true;
}
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart {
  (void)event, (void)atStart;
  afterwards(0, [] {});
}
- (NSModalResponse)kelvaneRunModal:(NSWindow*)window {
  if (self.modalWindow) kelvane::objc::fail("a modal loop inside another");
  self.modalWindow = window;
  answer_ = kNone;
  @try {
    runLoopUntil(NSModalPanelRunLoopMode, [self] { return answer_ != kNone; });
  } @catch (NSException*) {
    answer_ = NSModalResponseAbort;
  }
  self.modalWindow = nil;
  return answer_;
}
- (void)stopModalWithCode:(NSModalResponse)code {
  answer_ = code;
}
- (void)abortModal {
  if (!self.modalWindow) kelvane::objc::fail("nothing modal is there to be aborted");
  if (application().abortThrows) @throw [[NSException alloc] init];
  answer_ = NSModalResponseAbort;
}
@end

@interface NSAlert ()
@property(readwrite, copy) NSArray<NSButton*>* buttons;
@property(readwrite, strong) NSWindow* window;
@end

@implementation NSAlert {
  NSImage* icon_;
}
@dynamic icon;
- (instancetype)init {
  if ((self = [super init])) {
    self.window = [[NSWindow alloc] init];
    self.buttons = [NSArray array];
  }
  return self;
}
- (NSImage*)icon {
  return icon_;
}
- (void)setIcon:(NSImage*)icon {
  icon_ = icon;
}
- (NSButton*)addButtonWithTitle:(NSString*)title {
  NSButton* button = [NSButton buttonWithTitle:title target:nil action:nil];
  NSMutableArray* buttons = [NSMutableArray arrayWithCapacity:0];
  for (NSButton* each in self.buttons) [buttons addObject:each];
  [buttons addObject:button];
  self.buttons = buttons;
  return button;
}
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(void (^)(NSModalResponse))handler {
  application().alert = self;
  [window beginSheet:self.window
      completionHandler:^(NSModalResponse answer) {
        application().alert = nil;
        if (handler) handler(answer);
      }];
}
- (NSModalResponse)runModal {
  application().alert = self;
  const NSModalResponse answer = [NSApp kelvaneRunModal:self.window];
  application().alert = nil;
  return answer;
}
@end

void kelvane::doubles::press(int button) {
  NSWindow* window = application().alert.window;
  if (!window) kelvane::objc::fail("no alert is shown");
  if (window.sheetParent)
    return [window.sheetParent kelvaneEndSheet:window answer:NSAlertFirstButtonReturn + button];
  [NSApp stopModalWithCode:NSAlertFirstButtonReturn + button];
}
