// The status bar with its items, and menus.
#include <algorithm>

#include "doubles.h"
#include "runtime/abi.h"

namespace kelvane::doubles {
namespace {

PerTest<StatusBar> state;

}  // namespace

StatusBar& statusBar() { return *state; }

void openMenu(NSMenu* menu) {
  [menu.delegate menuNeedsUpdate:menu];
  [menu.delegate menuWillOpen:menu];
}

void act(id target, SEL action, id sender) {
  objc::send<void>((__bridge void*)target, reinterpret_cast<objc::Selector>(action),
                   (__bridge void*)sender);
}

void choose(NSMenuItem* item) {
  if (item.target && item.action) act(item.target, item.action, item);
}

void click(NSView* view) {
  for (NSGestureRecognizer* each in [view.kelvaneRecognizers copy])
    act(each.kelvaneTarget, each.kelvaneAction, each);
}

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
  static PerTest<NSStatusBar*> only;
  if (!*only) *only = [[NSStatusBar alloc] init];
  return *only;
}
- (CGFloat)thickness {
  return statusBar().thickness;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
  NSStatusItem* item = [[NSStatusItem alloc] init];
  item.length = length;
  statusBar().items.push_back(item);
  return item;
}
// As is known of the system: with the item goes what it kept of its place.
- (void)removeStatusItem:(NSStatusItem*)item {
  NSString* key = [@"NSStatusItem Preferred Position " stringByAppendingString:item.autosaveName];
  [NSUserDefaults.standardUserDefaults removeObjectForKey:key];
  std::erase(statusBar().items, item);
}
@end

@interface NSStatusItem ()
@property(nullable, readwrite, strong) NSStatusBarButton* button;
@end

@implementation NSStatusItem
@dynamic autosaveName;
- (instancetype)init {
  if ((self = [super init])) {
    self.button = [[NSStatusBarButton alloc] init];
    self.visible = YES;
  }
  return self;
}
- (NSString*)autosaveName {
  return @"Item-0";
}
@end

@implementation NSStatusBarButton
@end

@interface NSMenu () {
  NSMutableArray<NSMenuItem*>* kept_;
}
@end

@implementation NSMenu
@dynamic itemArray;
@synthesize identifier = identifier_;
- (instancetype)initWithTitle:(NSString*)title {
  if ((self = [super init])) {
    self.title = title;
    self.autoenablesItems = YES;
    kept_ = [NSMutableArray arrayWithCapacity:0];
  }
  return self;
}
- (NSArray*)itemArray {
  return [kept_ copy];
}
- (void)addItem:(NSMenuItem*)item {
  [kept_ addObject:item];
}
- (void)removeAllItems {
  [kept_ removeAllObjects];
}
@end

@implementation NSMenuItem
@synthesize identifier = identifier_;
+ (NSMenuItem*)separatorItem {
  NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:@"---" action:nil keyEquivalent:@""];
  item.enabled = NO;
  return item;
}
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
  if ((self = [super init])) {
    self.title = title;
    self.action = action;
    self.keyEquivalent = key;
    self.keyEquivalentModifierMask = NSEventModifierFlagCommand;
    self.enabled = YES;
  }
  return self;
}
@end
