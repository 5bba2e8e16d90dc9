#include "platform/macos/windows/tree_window.h"

#include <utility>

#import <AppKit/AppKit.h>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/view_renderer.h"

@interface KelvaneWindowWatch : NSObject <NSWindowDelegate>
- (instancetype)initWithClosed:(std::function<void()>)closed;
@end

@implementation KelvaneWindowWatch {
  std::function<void()> closed_;
}

- (instancetype)initWithClosed:(std::function<void()>)closed {
  if ((self = [super init])) closed_ = std::move(closed);
  return self;
}

- (void)windowWillClose:(NSNotification*)notification {
  (void)notification;
  // Who hears it may let go of the window and of this.
  if (const auto closed = std::exchange(closed_, nullptr)) closed();
}

@end

namespace kelvane {
namespace {

class TreeWindow : public ViewWindow {
 public:
  TreeWindow(const std::string& title, const ViewNode& tree, ViewWindowEvents events)
      : context_{nil, std::move(events.acted)},
        renderer_(tree, context_),
        window_([NSWindow windowWithContentViewController:renderer_.controller()]),
        watch_(
            [[KelvaneWindowWatch alloc] initWithClosed:[this, closed = std::move(events.closed)] {
              isClosed_ = true;
              // This may be gone afterwards, and the closure with it.
              if (const auto tell = closed) tell();
            }]) {
    context_.window = window_;
    // Neither a second size nor a place in the Dock.
    window_.styleMask = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable;
    // Tabs with their pictures above their names, in the middle.
    if (@available(macOS 11, *)) window_.toolbarStyle = NSWindowToolbarStylePreference;
    window_.releasedWhenClosed = NO;
    window_.title = nsString(title);
    // From which the window takes it again.
    renderer_.controller().title = window_.title;
    window_.delegate = watch_;
    [window_ center];
    bringToFront();
    renderer_.appear();
  }

  ~TreeWindow() override {
    window_.delegate = nil;
    if (!isClosed_) [window_ close];
  }

  void apply(const std::vector<ViewStep>& steps) override { renderer_.apply(steps); }

  void bringToFront() override { [window_ makeKeyAndOrderFront:nil]; }

 private:
  ViewContext context_;
  ViewRenderer renderer_;
  NSWindow* window_;
  KelvaneWindowWatch* watch_;
  bool isClosed_ = false;
};

}  // namespace

std::unique_ptr<ViewWindow> openTreeWindow(const std::string& title, const ViewNode& tree,
                                           ViewWindowEvents events) {
  return std::make_unique<TreeWindow>(title, tree, std::move(events));
}

}  // namespace kelvane
