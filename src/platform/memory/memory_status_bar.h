// The status bar of the in-memory computer: remembers what the item shows and the calls in their
// order. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/portable/observer_list.h"
#include "platform/status_bar.h"

namespace kelvane {

// What the bar shows and how a test moves it; outlives the item.
struct MemoryStatusItemState {
  bool isVisible = false;
  // The platform takes the item away only later: it still reports visible after
  // `setVisible(false)`.
  bool hidesLate = false;
  StatusItemBehavior behavior = StatusItemBehavior::none;
  double length = 0;
  AttributedText title;
  std::optional<Image> image;
  Menu* menu = nullptr;
  std::vector<HoverView> hoverViews;
  Appearance appearance = Appearance::light;
  Slot slot;
  std::optional<Slot::Shape> wantedShape;
  std::optional<Appearance> wantedAppearance;
  std::vector<std::string> calls;  // "visible true", "length 28", "image", "title 57%", ...

  // What the bar's own come to with what is wanted.
  Slot effectiveSlot() const;
  Appearance effectiveAppearance() const { return wantedAppearance.value_or(appearance); }

  ObserverList clickObservers;
  ObserverList appearanceObservers;
  ObserverList slotObservers;
};

class MemoryStatusBar : public StatusBar {
 public:
  std::unique_ptr<StatusItem> makeItem(double length) override;

  // Of the latest item; null before there is one. Kept when the item is gone.
  const std::shared_ptr<MemoryStatusItemState>& item() const { return item_; }
  // How many items were made.
  int itemCount() const { return itemCount_; }
  // Taken over by the next item.
  Slot slot;
  Appearance appearance = Appearance::light;

 private:
  std::shared_ptr<MemoryStatusItemState> item_;
  int itemCount_ = 0;
};

}  // namespace kelvane
