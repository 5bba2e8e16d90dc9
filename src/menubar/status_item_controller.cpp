#include "menubar/status_item_controller.h"

#include <utility>

#include "battery/battery.h"
#include "kit/kit_keys.h"
#include "menubar/battery_glyph.h"
#include "menubar/colors.h"
#include "menubar/item_text.h"
#include "menubar/square_glyph.h"

namespace kelvane {
namespace {

constexpr double kPositionPlaceholder = 1000.0;

}  // namespace

std::optional<Slot::Shape> wantedShape(TrayIconShape shape) {
  switch (shape) {
    case TrayIconShape::wide:
      return Slot::Shape::wide;
    case TrayIconShape::square:
      return Slot::Shape::square;
    case TrayIconShape::automatic:
      break;
  }
  return std::nullopt;
}

std::optional<Appearance> wantedAppearance(TrayIconColor color) {
  switch (color) {
    case TrayIconColor::light:
      return Appearance::dark;
    case TrayIconColor::dark:
      return Appearance::light;
    case TrayIconColor::automatic:
      break;
  }
  return std::nullopt;
}

StatusItemController::StatusItemController(StatusBar& statusBar, Preferences& preferences,
                                           const KitKeys& kitKeys, const ItemContext& context,
                                           Menu& menu)
    : statusBar_(statusBar),
      context_(context),
      menu_(menu),
      preferredPosition_("NSStatusItem Preferred Position Item-0", std::nullopt, preferences),
      previousPosition_(kitKeys.statusItemPreviousPosition) {}

StatusItemController::~StatusItemController() = default;

StatusItem& StatusItemController::statusItem() {
  if (!statusItem_) {
    statusItem_ = statusBar_.makeItem(kSquareStatusItemLength);
    setVisiblePreservingPosition(true);
    statusItem_->setBehavior(StatusItemBehavior::removalAllowed |
                             StatusItemBehavior::terminationOnRemoval);
    statusItem_->setMenu(&menu_);
    applyTraySettings();
    slotObservation_ = statusItem_->observeSlot([this] { updateStatusItem(); });
  }
  return *statusItem_;
}

void StatusItemController::setVisiblePreservingPosition(bool visible) {
  StatusItem& item = statusItem();
  if (item.isVisible() && !visible) {
    if (const auto position = preferredPosition_.get();
        position && position != kPositionPlaceholder)
      previousPosition_.set(position);
  }
  const auto restorePosition = [this] {
    if (const auto position = previousPosition_.get()) preferredPosition_.set(position);
  };
  if (!item.isVisible() && visible) restorePosition();
  item.setVisible(visible);
  // The platform has not taken the item away yet, and may be about to forget its place.
  if (item.isVisible() && !visible) restorePosition();
}

void StatusItemController::updateStatusItemVisibility() {
  setVisiblePreservingPosition(!context_.settings.hideIconWhenOnPower.get() ||
                               !context_.battery.externalConnected().value_or(true));
}

void StatusItemController::applyTraySettings() {
  StatusItem& item = statusItem();
  item.setShape(wantedShape(context_.settings.trayIconShape.get()));
  item.setAppearance(wantedAppearance(context_.settings.trayIconColor.get()));
}

void StatusItemController::updateStatusItem() {
  if (statusItem().slot().shape == Slot::Shape::square)
    updateSquare();
  else if (context_.settings.textOnlyIcon.get())
    updateText();
  else
    updateIcon();
}

void StatusItemController::updateIcon() {
  StatusItem& item = statusItem();
  item.setLength(iconItemLength(context_));
  item.setTitle("");
  item.setImage(asButtonImage(makeGlyphImage(context_)));
}

void StatusItemController::updateText() {
  StatusItem& item = statusItem();
  const AttributedText title = makeTitle(context_, item.effectiveAppearance());
  item.setAttributedTitle(title);
  item.setImage(std::nullopt);
  item.setLength(textItemLength(context_, title));
}

void StatusItemController::updateSquare() {
  StatusItem& item = statusItem();
  const Slot slot = item.slot();
  item.setLength(kSquareStatusItemLength);
  item.setTitle(slot.showsTextBeside ? plainItemText(context_) : "");
  item.setImage(asButtonImage(makeSquareImage(context_, slot)));
}

Image StatusItemController::asButtonImage(Image image) {
  image.isTemplate = true;
  if (const NamedColor* color = lowBatteryColor(context_))
    return warningTinted(image, color->under(statusItem().effectiveAppearance()));
  return image;
}

void StatusItemController::installHoverView() {
  hoverStates_.push_back(std::make_shared<HoverState>());
  statusItem().addHoverView(makeHoverView(hoverStates_.back(), [this] { return hoverText(); }));
}

std::string StatusItemController::hoverText() const {
  return context_.settings.showPercentage.get() ? timeOrFullText(context_)
                                                : percentageText(context_);
}

Publisher<std::monostate> StatusItemController::effectiveAppearancePublisher() {
  return Publisher<std::monostate>([this](Publisher<std::monostate>::Handler handler) {
    return Subscription::keeping(statusItem().observeEffectiveAppearance(
        [handler = std::move(handler)] { handler(std::monostate{}); }));
  });
}

}  // namespace kelvane
