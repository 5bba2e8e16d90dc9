// The application and its delegate.
#pragma once

#import <AppKit/NSAppearance.h>

NS_ASSUME_NONNULL_BEGIN

@class NSApplication, INIntent;

typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseStop = -1000;
static const NSModalResponse NSModalResponseAbort = -1001;

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
  NSApplicationActivationPolicyRegular,
  NSApplicationActivationPolicyAccessory,
  NSApplicationActivationPolicyProhibited,
};

FOUNDATION_EXPORT NSRunLoopMode const NSModalPanelRunLoopMode;
FOUNDATION_EXPORT NSRunLoopMode const NSEventTrackingRunLoopMode;
FOUNDATION_EXPORT NSNotificationName const NSApplicationDidChangeScreenParametersNotification;

typedef NSString* NSAboutPanelOptionKey;
FOUNDATION_EXPORT NSAboutPanelOptionKey const NSAboutPanelOptionApplicationName;
FOUNDATION_EXPORT NSAboutPanelOptionKey const NSAboutPanelOptionApplicationVersion;
FOUNDATION_EXPORT NSAboutPanelOptionKey const NSAboutPanelOptionVersion;

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender
                    hasVisibleWindows:(BOOL)hasVisibleWindows;
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (nullable id)application:(NSApplication*)application
          handlerForIntent:(INIntent*)intent API_AVAILABLE(macos(12.0));
@end

@interface NSApplication : NSResponder <NSAppearanceCustomization>
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
@property(nullable, readonly, strong) NSWindow* modalWindow;
@property(null_resettable, strong) NSImage* applicationIconImage;
@property(nullable, strong) NSMenu* mainMenu;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
@property(readonly, getter=isActive) BOOL active;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (void)run;
- (void)stop:(nullable id)sender;
- (void)postEvent:(NSEvent*)event atStart:(BOOL)atStart;
- (void)terminate:(nullable id)sender;
- (void)stopModalWithCode:(NSModalResponse)code;
- (void)abortModal;
@end

@interface NSApplication (NSStandardAboutPanel)
- (void)orderFrontStandardAboutPanel:(nullable id)sender;
- (void)orderFrontStandardAboutPanelWithOptions:(NSDictionary<NSAboutPanelOptionKey, id>*)options;
@end

FOUNDATION_EXPORT __kindof NSApplication* _Null_unspecified NSApp;

FOUNDATION_EXPORT int NSApplicationMain(int count, const char* _Nonnull arguments[_Nonnull]);

NS_ASSUME_NONNULL_END
