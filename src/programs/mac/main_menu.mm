#import "programs/mac/main_menu.h"

namespace kelvane {
namespace {

void addSubmenu(NSMenu* menu, NSString* title, NSMenuItem* only) {
  NSMenu* submenu = [[NSMenu alloc] initWithTitle:title];
  [submenu addItem:only];
  NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:title action:nil keyEquivalent:@""];
  item.submenu = submenu;
  [menu addItem:item];
}

}  // namespace

NSMenu* makeMainMenu() {
  NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
  addSubmenu(menu, @"Kelvane",
             [[NSMenuItem alloc] initWithTitle:@"Quit Kelvane"
                                        action:@selector(terminate:)
                                 keyEquivalent:@"q"]);
  // Sent to the window in front.
  addSubmenu(menu, @"Window",
             [[NSMenuItem alloc] initWithTitle:@"Close"
                                        action:@selector(performClose:)
                                 keyEquivalent:@"w"]);
  return menu;
}

}  // namespace kelvane
