// The one status item on top of the bus objects: it keeps what the application has set, renders it
// once per turn of the main loop for the slot of the host, and registers where there is a host.
// Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/tray/dbus_menu.h"
#include "platform/linux/tray/host_profile.h"
#include "platform/linux/tray/item_picture.h"
#include "platform/linux/tray/status_notifier_item.h"
#include "platform/portable/observer_list.h"
#include "platform/portable/run_loop_queue.h"
#include "platform/status_bar.h"

namespace kelvane {

struct TrayOptions;

// Where the item is shown: what the host and the desktop's settings come to.
struct TraySurroundings {
  bool hasHost = false;
  HostProfile profile;
  Slot slot;
  bool isScaleKnown = false;
  std::optional<Appearance> barAppearance;  // absent when it can't be known
};

class LinuxStatusItem : public StatusItem {
 public:
  LinuxStatusItem(RunLoopQueue& loop, FontFaces& fonts, const TrayOptions& options,
                  const std::string& busAddress, const TraySurroundings& surroundings,
                  double length, std::function<void()> destroyed);
  ~LinuxStatusItem() override;

  // Another host, the same host anew, or none.
  void hostChanged(const TraySurroundings& surroundings);
  // The same host in other settings.
  void surroundingsChanged(const TraySurroundings& surroundings);
  // What text looks like has changed.
  void fontChanged();
  // What the menu says has changed, whether or not the item looks different.
  void menuChanged();
  bool isRegistered() const { return item_.isRegistered(); }

  bool isVisible() const override { return isVisible_; }
  void setVisible(bool visible) override;
  void setBehavior(StatusItemBehavior) override {}  // no host lets an item be dragged out
  void setLength(double length) override;
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
  // Makes a change to where the item is shown and tells what differs.
  void changePlace(const std::function<void()>& change);
  std::optional<Appearance> barAppearance() const;
  Slot wholeSlot() const;
  void contentChanged();
  void flushLater();
  void flush();
  void renderContent();
  Bitmap rendered(const Slot& slot) const;
  std::string forOthers(std::string text) const;
  void activate(Point where);
  void removeMenu();

  RunLoopQueue& loop_;
  FontFaces& fonts_;
  const TrayOptions& options_;
  TraySurroundings surroundings_;
  std::optional<Slot::Shape> wantedShape_;
  std::optional<Appearance> wantedAppearance_;
  std::function<void()> destroyed_;
  DbusMenu menu_;
  Menu* attachedMenu_ = nullptr;
  StatusNotifierItem item_;

  bool isVisible_ = true;
  ItemContent content_;
  std::vector<HoverView> hoverViews_;
  std::vector<double> shakeOffsets_;  // those still to come, the present one first
  std::unique_ptr<Timer> shaking_;
  ObserverList clickObservers_;
  ObserverList appearanceObservers_;
  ObserverList slotObservers_;

  bool isContentStale_ = true;
  bool isMenuStale_ = false;
  bool mustRegister_ = false;
  bool isFlushWaiting_ = false;       // on the main queue
  bool isActivationWaiting_ = false;  // on the main queue
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace kelvane
