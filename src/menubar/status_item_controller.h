// The one item in the status bar: made, drawn, shown and hidden here. Main thread.
//
// Owned by the application for the whole process; what it is made from outlives it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "menubar/hover_view.h"
#include "menubar/item_context.h"
#include "platform/preferences.h"
#include "platform/status_bar.h"
#include "reactive/publisher.h"
#include "settings/settings_keys.h"
#include "store/setting_key.h"

namespace kelvane {

struct KitKeys;

// What the settings want of the item; absent: what suits the bar.
std::optional<Slot::Shape> wantedShape(TrayIconShape shape);
// A light glyph is what a dark bar gets, and the other way round.
std::optional<Appearance> wantedAppearance(TrayIconColor color);

class StatusItemController {
 public:
  // `menu` is what a click opens.
  StatusItemController(StatusBar& statusBar, Preferences& preferences, const KitKeys& kitKeys,
                       const ItemContext& context, Menu& menu);
  ~StatusItemController();

  // The item, made and shown at the first access.
  StatusItem& statusItem();

  // Asks the bar for the shape and the colour that the settings want.
  void applyTraySettings();
  // Redraws the item as the settings say: glyph, text, or the square form for a bar that is square.
  void updateStatusItem();

  // Shows or hides, and keeps the place in the bar over the hiding.
  void setVisiblePreservingPosition(bool visible);
  // Shows the item unless it is to be hidden on power and there is power (or no telling).
  void updateStatusItemVisibility();

  // Adds a hover view over the button. Called again, it adds another one.
  void installHoverView();
  // What the item itself does not show: the time beside a percentage, the percentage beside a time.
  std::string hoverText() const;

  // One value at once and one for each change of the button's appearance.
  Publisher<std::monostate> effectiveAppearancePublisher();

 private:
  void updateIcon();
  void updateText();
  void updateSquare();
  // A template image, or one in the warning colour.
  Image asButtonImage(Image image);

  StatusBar& statusBar_;
  ItemContext context_;
  Menu& menu_;
  // The platform's own record of the item's place; 1000 stands for "none yet".
  SettingKey<std::optional<double>> preferredPosition_;
  // Our copy of it, taken when the item is hidden.
  const SettingKey<std::optional<double>>& previousPosition_;
  std::vector<std::shared_ptr<HoverState>> hoverStates_;
  std::unique_ptr<StatusItem> statusItem_;
  std::unique_ptr<StatusItemObservation> slotObservation_;
};

}  // namespace kelvane
