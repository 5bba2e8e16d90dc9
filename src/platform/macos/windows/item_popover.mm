#include "platform/macos/windows/item_popover.h"

#include <utility>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/anchor_window.h"
#include "platform/portable/item_popover.h"

@interface KelvanePopoverWatch : NSObject <NSPopoverDelegate>
- (instancetype)initWithClosed:(std::function<void()>)closed;
- (void)stop;
@end

@implementation KelvanePopoverWatch {
  std::function<void()> closed_;
}

- (instancetype)initWithClosed:(std::function<void()>)closed {
  if ((self = [super init])) closed_ = std::move(closed);
  return self;
}

- (void)stop {
  closed_ = nullptr;
}

- (void)popoverDidClose:(NSNotification*)notification {
  (void)notification;
  if (const auto closed = std::exchange(closed_, nullptr)) closed();
}

@end

namespace kelvane {
namespace {

NSViewController* makeContent(const PopoverContent& content) {
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
  ItemPopover(NSView* item, const PopoverContent& content, std::function<void()> closed)
      : anchor_([[KelvaneAnchorWindow alloc] initAtItem:item]), popover_([[NSPopover alloc] init]) {
    NSWindow* anchor = anchor_;
    watch_ = [[KelvanePopoverWatch alloc] initWithClosed:[anchor, closed = std::move(closed)] {
      [anchor orderOut:nil];
      if (closed) closed();
    }];
    popover_.delegate = watch_;
    popover_.behavior = NSPopoverBehaviorSemitransient;
    popover_.animates = content.isAnimated;
    popover_.contentViewController = makeContent(content);
    popover_.contentSize = popover_.contentViewController.view.fittingSize;
    [anchor_ orderFront:nil];
    [popover_ showRelativeToRect:anchor_.contentView.bounds
                          ofView:anchor_.contentView
                   preferredEdge:NSRectEdgeMinY];
  }

  ~ItemPopover() override {
    [watch_ stop];
    [popover_ close];
    [anchor_ orderOut:nil];
  }

  void close() override { [popover_ close]; }

 private:
  NSWindow* anchor_;
  NSPopover* popover_;
  KelvanePopoverWatch* watch_ = nil;
};

}  // namespace

std::unique_ptr<PopoverHandle> showItemPopover(NSView* item, const PopoverContent& content,
                                               std::function<void()> closed) {
  if (!item || !isPopoverShown(content, item.window.screen != nil)) return nullptr;
  return std::make_unique<ItemPopover>(item, content, std::move(closed));
}

}  // namespace kelvane
