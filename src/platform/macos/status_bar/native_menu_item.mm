#include "platform/macos/status_bar/native_menu_item.h"

#include <functional>
#include <utility>

#include "platform/macos/drawing/attributed_string.h"
#include "platform/macos/foundation/strings.h"
#include "platform/macos/status_bar/native_menu.h"

// Calls the line's action; its own target.
@interface KelvaneCallbackMenuItem : NSMenuItem
- (instancetype)initWithTitle:(NSString*)title
                     callback:(std::function<void()>)callback NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithTitle:(NSString*)title
                       action:(SEL)action
                keyEquivalent:(NSString*)key NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
@end

@implementation KelvaneCallbackMenuItem {
  std::function<void()> callback_;
}

- (instancetype)initWithTitle:(NSString*)title callback:(std::function<void()>)callback {
  if ((self = [super initWithTitle:title action:@selector(performCallback:) keyEquivalent:@""])) {
    callback_ = std::move(callback);
    self.target = self;
  }
  return self;
}

- (void)performCallback:(id)sender {
  (void)sender;
  // The menu may be built anew inside, and this item be gone with it.
  const auto callback = callback_;
  callback();
}

@end

namespace kelvane {
namespace {

NSEventModifierFlags modifierMask(const KeyEquivalent& keyEquivalent) {
  NSEventModifierFlags mask = 0;
  if (keyEquivalent.command) mask |= NSEventModifierFlagCommand;
  if (keyEquivalent.option) mask |= NSEventModifierFlagOption;
  return mask;
}

void setKeyEquivalent(NSMenuItem* item, const KeyEquivalent& keyEquivalent) {
  item.keyEquivalent = nsString(keyEquivalent.key);
  // An item without either keeps AppKit's own mask, from which an alternate differs.
  const NSEventModifierFlags mask = modifierMask(keyEquivalent);
  if (mask != 0 || !keyEquivalent.key.empty()) item.keyEquivalentModifierMask = mask;
}

NSMenuItem* plainItem(NSString* title) {
  return [[NSMenuItem alloc] initWithTitle:title action:nil keyEquivalent:@""];
}

NSMenuItem* placeholder() {
  NSMenuItem* item = plainItem(@"");
  item.enabled = NO;
  item.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  return item;
}

}  // namespace

NSMenuItem* nativeMenuItem(const MenuLine& line) {
  if (line.kind == MenuLine::Kind::separator) return [NSMenuItem separatorItem];
  if (line.kind == MenuLine::Kind::placeholder) return placeholder();
  NSString* title = nsString(line.title);
  NSMenuItem* item = line.action ? [[KelvaneCallbackMenuItem alloc] initWithTitle:title
                                                                         callback:line.action]
                                 : plainItem(title);
  if (line.attributedTitle) item.attributedTitle = nsAttributedString(*line.attributedTitle);
  setKeyEquivalent(item, line.keyEquivalent);
  item.alternate = line.isAlternate;
  item.enabled = line.isEnabled;
  if (line.submenu) item.submenu = [[KelvaneNativeMenu alloc] initWithMenu:line.submenu];
  return item;
}

}  // namespace kelvane
