// The desktop's own settings that the item depends on, over the session bus: colour scheme, scale,
// interface font. Only services that run are asked; none is started for it, and those that come
// later are heard when they come. Main thread, never blocks, no timers.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/color.h"
#include "platform/linux/glib/bus.h"
#include "platform/linux/tray/desktop_facts.h"
#include "platform/linux/tray/host_profile.h"

namespace kelvane {

class DesktopSettings {
 public:
  // `changed` is called whenever an answer may have changed, and once when all services of the host
  // have answered.
  DesktopSettings(BusConnection* bus, std::function<void()> changed);
  ~DesktopSettings();
  DesktopSettings(const DesktopSettings&) = delete;
  DesktopSettings& operator=(const DesktopSettings&) = delete;

  // Follows the settings of the desktop that this host belongs to.
  void follow(TrayHost host);

  // All services that were there when `follow` was called have answered.
  bool isComplete() const { return unanswered_ == 0; }

  // The colour behind the item; absent when it can't be known.
  std::optional<Appearance> barAppearance() const;
  // Whether the desktop wants dark windows; absent when it has no preference or can't be asked.
  std::optional<bool> prefersDarkWindows() const;
  // False where nothing says so.
  bool prefersReducedMotion() const;
  // Pixels per point; absent when it can't be known.
  std::optional<double> scale() const;
  // The interface font's family; empty when it can't be known.
  std::string fontFamily() const;

 private:
  void followPortal();
  void followXfconf();
  void followMutter();
  void followKScreen();
  // Calls a method now and whenever the service gets an owner. `use` gets null when a service that
  // is there does not answer as it should.
  void ask(const BusCalls::Target& target, const char* method, std::function<GVariant*()> arguments,
           const char* replyType, std::function<void(GVariant*)> use);
  // Hears a signal of a service.
  void hear(const BusCalls::Target& target, const char* member,
            std::function<void(GVariant*)> handler);
  void tell();

  BusPtr bus_;
  std::function<void()> changed_;
  TrayHost host_ = TrayHost::unknown;
  bool isFollowing_ = false;
  int unanswered_ = 0;

  SettingsTable portalAppearance_;  // org.freedesktop.appearance
  SettingsTable portalInterface_;   // org.gnome.desktop.interface
  SettingsTable xfcePanel_;
  std::optional<SettingsTable> xfceSettings_;  // absent while xfconf has not answered
  std::optional<double> monitorScale_;

  std::unique_ptr<BusCalls> calls_;
  std::vector<std::unique_ptr<NameWatch>> services_;
  std::vector<std::unique_ptr<SignalSubscription>> signals_;
};

}  // namespace kelvane
