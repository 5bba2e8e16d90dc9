#include "platform/macos/status_bar/mac_status_item.h"

#include <utility>

#include "platform/macos/drawing/attributed_string.h"
#include "platform/macos/drawing/ns_image.h"
#include "platform/macos/foundation/strings.h"
#include "platform/macos/status_bar/bar_appearance.h"
#include "platform/macos/status_bar/click_watch.h"
#include "platform/macos/status_bar/fatal_error.h"
#include "platform/portable/shake_times.h"

namespace kelvane {
namespace {

NSStatusBarButton* buttonOf(NSStatusItem* item) {
  if (NSStatusBarButton* button = item.button) return button;
  endWithFatalError("the status item has no button");
}

NSArray<NSNumber*>* numbers(const std::vector<double>& values) {
  NSMutableArray<NSNumber*>* array = [NSMutableArray arrayWithCapacity:values.size()];
  for (const double value : values) [array addObject:@(value)];
  return array;
}

// Removing an item makes AppKit forget the place that the user gave it.
void removeKeepingPosition(NSStatusItem* item) {
  NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults;
  NSString* key = [@"NSStatusItem Preferred Position " stringByAppendingString:item.autosaveName];
  const id position = [defaults objectForKey:key];
  [NSStatusBar.systemStatusBar removeStatusItem:item];
  if (position) [defaults setObject:position forKey:key];
}

}  // namespace

MacStatusItem::MacStatusItem(double length, std::function<void()> destroyed)
    : item_([NSStatusBar.systemStatusBar statusItemWithLength:length]),
      button_(buttonOf(item_)),
      hoverViews_([NSMutableArray arrayWithCapacity:1]),
      destroyed_(std::move(destroyed)) {
  toldSlot_ = slot();
  watch_ = [[KelvaneButtonWatch alloc] initWithButton:button_
      appearanceChanged:[this] { appearanceObservers_.notify(); }
      placeChanged:[this] { placeMayHaveChanged(); }];
}

MacStatusItem::~MacStatusItem() {
  [watch_ stop];
  setMenu(nullptr);
  for (KelvaneHoverView* view in hoverViews_) {
    [view detachHoverView];
    [view removeFromSuperview];
  }
  // It would go on to be drawn by what the application has taken down.
  button_.image = nil;
  removeKeepingPosition(item_);
  if (destroyed_) destroyed_();
}

void MacStatusItem::setBehavior(StatusItemBehavior behavior) {
  static_assert(NSUInteger(StatusItemBehavior::removalAllowed) ==
                NSStatusItemBehaviorRemovalAllowed);
  static_assert(NSUInteger(StatusItemBehavior::terminationOnRemoval) ==
                NSStatusItemBehaviorTerminationOnRemoval);
  item_.behavior = static_cast<NSStatusItemBehavior>(behavior);
}

void MacStatusItem::setTitle(const std::string& title) { button_.title = nsString(title); }

void MacStatusItem::setAttributedTitle(const AttributedText& title) {
  button_.attributedTitle = nsAttributedString(title);
}

void MacStatusItem::setImage(std::optional<Image> image) {
  button_.image = image ? nsImage(*image) : nil;
}

void MacStatusItem::setMenu(Menu* menu) {
  [menu_ detachApplicationMenu];
  // The application owns its menu.
  menu_ = menu ? [[KelvaneNativeMenu alloc]
                     initWithMenu:std::shared_ptr<Menu>(std::shared_ptr<Menu>(), menu)]
               : nil;
  item_.menu = menu_;
}

void MacStatusItem::addHoverView(HoverView view) {
  KelvaneHoverView* native = [[KelvaneHoverView alloc] initWithHoverView:std::move(view)];
  [hoverViews_ addObject:native];
  [button_ addSubview:native];
}

void MacStatusItem::shake(const std::vector<double>& offsets, double seconds) {
  const auto times = shakeTimes(offsets.size());
  if (times.empty()) return;
  CAKeyframeAnimation* animation =
      [CAKeyframeAnimation animationWithKeyPath:@"transform.translation.y"];
  animation.values = numbers(offsets);
  animation.keyTimes = numbers(times);
  animation.duration = seconds;
  button_.wantsLayer = YES;
  // The key makes another shake take over.
  [button_.layer addAnimation:animation forKey:@"shake"];
}

std::unique_ptr<StatusItemObservation> MacStatusItem::observeClicks(
    std::function<void()> callback) {
  return kelvane::observeClicks(button_, std::move(callback));
}

void MacStatusItem::setShape(std::optional<Slot::Shape> shape) {
  wantedShape_ = shape;
  placeMayHaveChanged();
}

void MacStatusItem::setAppearance(std::optional<Appearance> appearance) {
  button_.appearance = appearance ? nsAppearance(*appearance) : nil;
}

Appearance MacStatusItem::effectiveAppearance() const {
  return appearanceOf(button_.effectiveAppearance);
}

std::unique_ptr<StatusItemObservation> MacStatusItem::observeEffectiveAppearance(
    std::function<void()> callback) {
  auto observation = appearanceObservers_.add(callback);
  callback();
  return observation;
}

Slot MacStatusItem::slot() const {
  NSWindow* window = button_.window;
  Slot slot;
  slot.shape = wantedShape_.value_or(Slot::Shape::wide);
  slot.height = NSStatusBar.systemStatusBar.thickness;
  // A hidden item may be in no window.
  const double scale = window ? window.backingScaleFactor : NSScreen.mainScreen.backingScaleFactor;
  slot.scale = scale > 0 ? scale : 1;
  return slot;
}

std::unique_ptr<StatusItemObservation> MacStatusItem::observeSlot(std::function<void()> callback) {
  return slotObservers_.add(std::move(callback));
}

void MacStatusItem::placeMayHaveChanged() {
  const Slot now = slot();
  if (std::exchange(toldSlot_, now) != now) slotObservers_.notify();
}

}  // namespace kelvane
