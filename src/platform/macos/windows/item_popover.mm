#include "platform/macos/windows/item_popover.h"

#include <utility>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/anchor_window.h"
#include "platform/portable/item_popover.h"

// Lives on until its popover has closed, which takes a moment where that is animated.
@interface KelvaneItemPopover : NSObject <NSPopoverDelegate>
- (instancetype)initWithController:(NSViewController*)controller
                          animates:(BOOL)animates
                            closed:(std::function<void()>)closed;
- (void)showAtItem:(NSView*)item;
- (void)close;
// Nobody is told of the end from here on.
- (void)forgetClosed;
@end

@implementation KelvaneItemPopover {
  NSPopover* popover_;
  KelvaneAnchorWindow* anchor_;
  std::function<void()> closed_;
  KelvaneItemPopover* untilClosed_;
}

- (instancetype)initWithController:(NSViewController*)controller
                          animates:(BOOL)animates
                            closed:(std::function<void()>)closed {
  if ((self = [super init])) {
    closed_ = std::move(closed);
    popover_ = [[NSPopover alloc] init];
    popover_.contentViewController = controller;
    popover_.contentSize = controller.view.fittingSize;
    popover_.behavior = NSPopoverBehaviorSemitransient;
    popover_.animates = animates;
    popover_.delegate = self;
  }
  return self;
}

- (void)dealloc {
  [anchor_ orderOut:nil];
}

- (void)showAtItem:(NSView*)item {
  anchor_ = [[KelvaneAnchorWindow alloc] initAtItem:item];
  [anchor_ orderFront:nil];
  NSView* view = anchor_.contentView;
  [popover_ showRelativeToRect:view.bounds ofView:view preferredEdge:NSRectEdgeMinY];
  if (popover_.shown) untilClosed_ = self;
}

- (void)close {
  [popover_ close];
}

- (void)forgetClosed {
  closed_ = nullptr;
}

- (void)popoverDidClose:(NSNotification*)notification {
  (void)notification;
  // Until the end of this.
  __attribute__((objc_precise_lifetime)) KelvaneItemPopover* kept =
      std::exchange(untilClosed_, nil);
  [anchor_ orderOut:nil];
  if (const auto closed = std::exchange(closed_, nullptr)) closed();
}

@end

namespace kelvane {
namespace {

NSViewController* makeController(const PopoverContent& content) {
  NSTextField* label = [NSTextField wrappingLabelWithString:nsString(content.text)];
  label.selectable = NO;
  label.preferredMaxLayoutWidth = content.maximumTextWidth;
  label.translatesAutoresizingMaskIntoConstraints = NO;
  NSView* view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  [view addSubview:label];
  const CGFloat inset = content.inset;
  [NSLayoutConstraint activateConstraints:@[
    [label.leadingAnchor constraintEqualToAnchor:view.leadingAnchor constant:inset],
    [view.trailingAnchor constraintEqualToAnchor:label.trailingAnchor constant:inset],
    [label.topAnchor constraintEqualToAnchor:view.topAnchor constant:inset],
    [view.bottomAnchor constraintEqualToAnchor:label.bottomAnchor constant:inset],
    [label.widthAnchor constraintLessThanOrEqualToConstant:content.maximumTextWidth],
  ]];
  NSViewController* controller = [[NSViewController alloc] init];
  controller.view = view;
  return controller;
}

class ItemPopover : public PopoverHandle {
 public:
  explicit ItemPopover(KelvaneItemPopover* popover) : popover_(popover) {}
  ~ItemPopover() override {
    [popover_ forgetClosed];
    [popover_ close];
  }

  void close() override { [popover_ close]; }

 private:
  KelvaneItemPopover* popover_;
};

}  // namespace

std::unique_ptr<PopoverHandle> showItemPopover(NSView* item, const PopoverContent& content,
                                               std::function<void()> closed) {
  if (!item || !isPopoverShown(content, item.window.screen != nil)) return nullptr;
  KelvaneItemPopover* popover =
      [[KelvaneItemPopover alloc] initWithController:makeController(content)
                                            animates:content.isAnimated
                                              closed:std::move(closed)];
  [popover showAtItem:item];
  return std::make_unique<ItemPopover>(popover);
}

}  // namespace kelvane
