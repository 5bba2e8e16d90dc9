// The one status item on top of AppKit's: each call goes on to it at once. Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/status_bar/button_watch.h"
#include "platform/macos/status_bar/hover_view.h"
#include "platform/macos/status_bar/native_menu.h"
#include "platform/portable/observer_list.h"
#include "platform/status_bar.h"

namespace kelvane {

class MacStatusItem : public StatusItem {
 public:
  // An item without a button ends the process.
  MacStatusItem(double length, std::function<void()> destroyed);
  ~MacStatusItem() override;
  MacStatusItem(const MacStatusItem&) = delete;
  MacStatusItem& operator=(const MacStatusItem&) = delete;

  NSStatusBarButton* button() const { return button_; }

  bool isVisible() const override { return item_.visible; }
  void setVisible(bool visible) override { item_.visible = visible; }
  void setBehavior(StatusItemBehavior behavior) override;
  void setLength(double length) override { item_.length = length; }
  void setTitle(const std::string& title) override;
  void setAttributedTitle(const AttributedText& title) override;
  void setImage(std::optional<Image> image) override;
  void setMenu(Menu* menu) override;
  void addHoverView(HoverView view) override;
  void shake(const std::vector<double>& offsets, double seconds) override;
  std::unique_ptr<StatusItemObservation> observeClicks(std::function<void()> callback) override;
  void setShape(std::optional<Slot::Shape> shape) override;
  void setAppearance(std::optional<Appearance> appearance) override;
  Appearance effectiveAppearance() const override;
  std::unique_ptr<StatusItemObservation> observeEffectiveAppearance(
      std::function<void()> callback) override;
  Slot slot() const override;
  std::unique_ptr<StatusItemObservation> observeSlot(std::function<void()> callback) override;

 private:
  void placeMayHaveChanged();

  NSStatusItem* item_;
  NSStatusBarButton* button_;
  KelvaneButtonWatch* watch_;
  KelvaneNativeMenu* menu_ = nil;
  NSMutableArray<KelvaneHoverView*>* hoverViews_;
  std::function<void()> destroyed_;
  std::optional<Slot::Shape> wantedShape_;
  Slot toldSlot_;  // what the observers know
  ObserverList appearanceObservers_;
  ObserverList slotObservers_;
};

}  // namespace kelvane
