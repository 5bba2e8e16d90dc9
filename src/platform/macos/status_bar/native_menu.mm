#include "platform/macos/status_bar/native_menu.h"

#include <utility>

#include "platform/macos/status_bar/native_menu_item.h"

@implementation KelvaneNativeMenu {
  std::shared_ptr<kelvane::Menu> menu_;
}

- (instancetype)initWithMenu:(std::shared_ptr<kelvane::Menu>)menu {
  if ((self = [super initWithTitle:@""])) {
    menu_ = std::move(menu);
    // The lines say which of them can be chosen.
    self.autoenablesItems = NO;
    self.delegate = self;
  }
  return self;
}

- (void)detachApplicationMenu {
  menu_.reset();
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
  (void)menu;
  const auto asked = menu_;
  if (!asked) return;
  asked->needsUpdate();
  [self removeAllItems];
  // Detached by the update.
  if (menu_ != asked) return;
  for (const kelvane::MenuLine& line : asked->lines()) [self addItem:kelvane::nativeMenuItem(line)];
}

- (void)menuWillOpen:(NSMenu*)menu {
  (void)menu;
  if (const auto asked = menu_) asked->willOpen();
}

- (void)menuDidClose:(NSMenu*)menu {
  (void)menu;
  if (const auto asked = menu_) asked->didClose();
}

@end
