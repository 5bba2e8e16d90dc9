// What the doubles keep besides the properties that they really have.
#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSNotification ()
@property(readwrite, copy) NSNotificationName name;
@property(nullable, readwrite, retain) id object;
@end

@interface NSView ()
@property(strong) NSMutableArray<NSTrackingArea*>* kelvaneTrackingAreas;
@property(strong) NSMutableArray<NSGestureRecognizer*>* kelvaneRecognizers;
// A view at the top of it.
- (void)kelvanePutIntoWindow:(nullable NSWindow*)window;
@end

@interface NSTrackingArea ()
@property NSRect kelvaneRect;
@property NSTrackingAreaOptions kelvaneOptions;
@property(nullable, weak) id kelvaneOwner;
@end

@interface NSGestureRecognizer ()
@property(nullable, weak) id kelvaneTarget;
@property SEL kelvaneAction;
@end

@interface NSPopover ()
@property(readwrite, getter=isShown) BOOL shown;
@property NSRectEdge kelvaneEdge;
@property(nullable, strong) NSView* kelvaneView;  // where it is shown
@end

@interface NSScreen ()
@property(readwrite) CGFloat backingScaleFactor;
@end

@interface NSWindow ()
@property(readwrite, getter=isVisible) BOOL visible;
@property(readwrite) CGFloat backingScaleFactor;
@property(readwrite) NSRect frame;
@property(nullable, readwrite, strong) NSScreen* screen;
@property(nullable, readwrite, strong) NSWindow* sheetParent;
// What hears of the end of a sheet.
@property(nullable, copy) void (^kelvaneEnded)(NSModalResponse);
- (void)kelvaneEndSheet:(NSWindow*)sheet answer:(NSModalResponse)answer;
@end

@interface NSColor ()
@property(copy) NSArray<NSNumber*>* kelvaneParts;
@end

@interface NSFont ()
@property CGFloat kelvaneSize;
@property CGFloat kelvaneWeight;
@end

@interface NSImage ()
@property(copy) BOOL (^kelvaneDrawing)(NSRect);
@end

@interface CAPropertyAnimation ()
@property(copy) NSString* kelvanePath;
@end

@interface CALayer ()
@property(strong) NSMutableDictionary<NSString*, CAAnimation*>* kelvaneAnimations;
@end

@interface NSAttributedString ()
// Dictionaries with the "text" and the "looks" of each.
- (NSArray<NSDictionary*>*)kelvaneRuns;
@end

NS_ASSUME_NONNULL_END
