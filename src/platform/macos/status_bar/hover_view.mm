#include "platform/macos/status_bar/hover_view.h"

#include <optional>
#include <utility>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/status_bar/fatal_error.h"
#include "platform/portable/item_popover.h"

// What the popover is anchored to; it blends with the bar.
@interface KelvaneVibrantView : NSView
@end

@implementation KelvaneVibrantView
- (BOOL)allowsVibrancy {
  return YES;
}
@end

@interface KelvaneHoverView () <NSPopoverDelegate>
@end

namespace {

void pin(NSView* view, NSView* around, CGFloat horizontal, CGFloat vertical) {
  view.translatesAutoresizingMaskIntoConstraints = NO;
  [NSLayoutConstraint activateConstraints:@[
    [view.leadingAnchor constraintEqualToAnchor:around.leadingAnchor constant:horizontal],
    [around.trailingAnchor constraintEqualToAnchor:view.trailingAnchor constant:horizontal],
    [view.topAnchor constraintEqualToAnchor:around.topAnchor constant:vertical],
    [around.bottomAnchor constraintEqualToAnchor:view.bottomAnchor constant:vertical],
  ]];
}

}  // namespace

@implementation KelvaneHoverView {
  std::optional<kelvane::HoverRest> rest_;
  NSView* anchor_;
  NSTrackingArea* trackingArea_;
  NSPopover* popover_;
}

- (instancetype)initWithHoverView:(kelvane::HoverView)hoverView {
  if ((self = [super initWithFrame:NSMakeRect(0, 0, 0, 0)])) {
    rest_.emplace(std::move(hoverView));
    anchor_ = [[KelvaneVibrantView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    [self addSubview:anchor_];
    pin(anchor_, self, 0, 0);
  }
  return self;
}

- (instancetype)initWithFrame:(NSRect)frame {
  (void)frame;
  kelvane::endWithFatalError("unimplemented initializer 'initWithFrame:' of a hover view");
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  (void)coder;
  kelvane::endWithFatalError("Not yet implemented.");
}

- (void)detachHoverView {
  rest_->detach();
  [popover_ close];
  popover_ = nil;
}

- (void)viewDidMoveToSuperview {
  [super viewDidMoveToSuperview];
  if (self.superview) pin(self, self.superview, 0, 0);
}

- (NSView*)hitTest:(NSPoint)point {
  (void)point;
  return nil;
}

- (void)updateTrackingAreas {
  [super updateTrackingAreas];
  if (trackingArea_) [self removeTrackingArea:trackingArea_];
  trackingArea_ =
      [[NSTrackingArea alloc] initWithRect:self.bounds
                                   options:NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways
                                     owner:self
                                  userInfo:nil];
  [self addTrackingArea:trackingArea_];
}

- (void)mouseEntered:(NSEvent*)event {
  (void)event;
  self.appearance = NSApp.effectiveAppearance;
  [self pointerRests:YES];
}

- (void)mouseExited:(NSEvent*)event {
  (void)event;
  [self pointerRests:NO];
}

// Also when the user closes it while the pointer rests.
- (void)popoverDidClose:(NSNotification*)notification {
  if (notification.object != popover_) return;
  popover_ = nil;
  [self pointerRests:NO];
}

- (void)pointerRests:(BOOL)isHovered {
  if (!rest_->setHovered(isHovered)) return;
  if (isHovered)
    [self showHoverPopover];
  else
    [popover_ close];
}

- (void)showHoverPopover {
  const std::string text = rest_->text();
  if (text.empty() || !self.window) return;
  NSView* content = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  NSTextField* label = [NSTextField labelWithString:kelvane::nsString(text)];
  [content addSubview:label];
  pin(label, content, rest_->horizontalPadding(), rest_->verticalPadding());

  NSViewController* controller = [[NSViewController alloc] init];
  controller.view = content;
  popover_ = [[NSPopover alloc] init];
  popover_.contentViewController = controller;
  popover_.contentSize = content.fittingSize;
  popover_.behavior = NSPopoverBehaviorTransient;
  popover_.delegate = self;
  // Below the bar, so that its arrow is on its top edge.
  [popover_ showRelativeToRect:anchor_.bounds ofView:anchor_ preferredEdge:NSRectEdgeMinY];
}

@end
