#include "platform/macos/windows/mac_windows.h"

#import <AppKit/AppKit.h>

#include "platform/macos/windows/item_popover.h"
#include "platform/macos/windows/modal_alert.h"
#include "platform/macos/windows/tree_window.h"

namespace kelvane {

void MacWindows::activate() { [NSApp activateIgnoringOtherApps:YES]; }

std::unique_ptr<AlertHandle> MacWindows::alert(const Alert& alert, std::function<void(int)> done) {
  return showModalAlert(alert, std::move(done));
}

std::unique_ptr<ViewWindow> MacWindows::openWindow(const std::string& title, const ViewNode& tree,
                                                   ViewWindowEvents events) {
  return openTreeWindow(title, tree, std::move(events));
}

void MacWindows::showAboutPanel(const ApplicationInformation&) {
  [NSApp orderFrontStandardAboutPanel:nil];
}

std::unique_ptr<PopoverHandle> MacWindows::showPopover(const PopoverContent& content,
                                                       std::function<void()> closed) {
  return showItemPopover((__bridge NSView*)itemView_(), content, std::move(closed));
}

}  // namespace kelvane
