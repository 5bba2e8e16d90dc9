#include "platform/memory/memory_status_bar.h"

#include <cstdio>
#include <utility>

namespace kelvane {
namespace {

std::string withNumber(const char* what, double number) {
  char text[64];
  std::snprintf(text, sizeof text, "%s %g", what, number);
  return text;
}

class MemoryStatusItem : public StatusItem {
 public:
  explicit MemoryStatusItem(std::shared_ptr<MemoryStatusItemState> state)
      : state_(std::move(state)) {}
  ~MemoryStatusItem() override { state_->isVisible = false; }

  bool isVisible() const override { return state_->isVisible; }
  void setVisible(bool visible) override {
    state_->calls.push_back(visible ? "visible true" : "visible false");
    if (visible || !state_->hidesLate) state_->isVisible = visible;
  }
  void setBehavior(StatusItemBehavior behavior) override {
    state_->calls.push_back(withNumber("behavior", static_cast<double>(behavior)));
    state_->behavior = behavior;
  }
  void setLength(double length) override {
    state_->calls.push_back(withNumber("length", length));
    state_->length = length;
  }
  void setTitle(const std::string& title) override {
    state_->calls.push_back("title " + title);
    state_->title = title.empty() ? AttributedText{} : AttributedText{{{.text = title}}};
  }
  void setAttributedTitle(const AttributedText& title) override {
    state_->calls.push_back("attributed title " + title.plainText());
    state_->title = title;
  }
  void setImage(std::optional<Image> image) override {
    state_->calls.push_back(!image ? "no image" : image->isTemplate ? "template image" : "image");
    state_->image = std::move(image);
  }
  void setMenu(Menu* menu) override {
    state_->calls.push_back("menu");
    state_->menu = menu;
  }
  void addHoverView(HoverView view) override {
    state_->calls.push_back("hover view");
    state_->hoverViews.push_back(std::move(view));
  }
  void shake(const std::vector<double>& offsets, double seconds) override {
    std::string call = withNumber("shake in", seconds) + ":";
    for (const double offset : offsets) call += withNumber("", offset);
    state_->calls.push_back(call);
  }
  std::unique_ptr<StatusItemObservation> observeClicks(std::function<void()> callback) override {
    return state_->clickObservers.add(std::move(callback));
  }
  void setShape(std::optional<Slot::Shape> shape) override {
    const Slot before = slot();
    state_->wantedShape = shape;
    if (slot() != before) state_->slotObservers.notify();
  }
  void setAppearance(std::optional<Appearance> appearance) override {
    const Appearance before = effectiveAppearance();
    state_->wantedAppearance = appearance;
    if (effectiveAppearance() != before) state_->appearanceObservers.notify();
  }
  Appearance effectiveAppearance() const override { return state_->effectiveAppearance(); }
  std::unique_ptr<StatusItemObservation> observeEffectiveAppearance(
      std::function<void()> callback) override {
    auto observation = state_->appearanceObservers.add(callback);
    callback();
    return observation;
  }
  Slot slot() const override { return state_->effectiveSlot(); }
  std::unique_ptr<StatusItemObservation> observeSlot(std::function<void()> callback) override {
    return state_->slotObservers.add(std::move(callback));
  }

 private:
  std::shared_ptr<MemoryStatusItemState> state_;
};

}  // namespace

Slot MemoryStatusItemState::effectiveSlot() const {
  Slot effective = slot;
  effective.shape = wantedShape.value_or(slot.shape);
  return effective;
}

std::unique_ptr<StatusItem> MemoryStatusBar::makeItem(double length) {
  ++itemCount_;
  item_ = std::make_shared<MemoryStatusItemState>();
  item_->length = length;
  item_->slot = slot;
  item_->appearance = appearance;
  item_->isVisible = true;
  return std::make_unique<MemoryStatusItem>(item_);
}

}  // namespace kelvane
