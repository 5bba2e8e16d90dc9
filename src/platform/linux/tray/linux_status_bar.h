// The status bar of Linux desktops: one StatusNotifierItem with its menu, for whatever host the
// session has, now or later. Main thread.
//
// Hiding the item is leaving the bus, because a host may show a passive item all the same. What the
// application sets within one turn of the main loop is rendered once, at the end of the turn; while
// the item is hidden, or nobody is there to show it, nothing is rendered.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <glib.h>

#include "platform/geometry.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/linux/glib/bus_connection.h"
#include "platform/portable/run_loop_queue.h"
#include "platform/status_bar.h"

namespace kelvane {

// What the status bar asks of, and tells to, whoever makes it. Empty functions are allowed.
struct TrayOptions {
  // The session bus, for watching hosts and reading the desktop's settings; the item itself opens a
  // connection of its own to the same bus. Null: no bus, and the item is never shown.
  BusConnection* sessionBus = nullptr;
  // The address the item connects to; empty: that of the session bus.
  std::string busAddress;

  // The user clicked the item and the host left it to us: its menu is to be shown, if it has one,
  // at `where`, in pixels of the root window, when the host says so. Runs on the main queue.
  std::function<void(Menu* menu, std::optional<Point> where)> activated;
  // The menu is no longer the item's and may go at any time.
  std::function<void()> menuRemoved;
  // A token that lets the window opened next take the focus; comes before `activated`.
  std::function<void(const std::string& token)> activationToken;
  // The desktop wants dark windows, light ones, or has no preference; called when that is first
  // known and when it changes.
  std::function<void(std::optional<bool> isDark)> windowAppearance;
  // Rewrites a text for programs that may have no glyph for one of its characters.
  std::function<std::string(std::string text)> replaceUncoveredCharacters;
};

class LinuxStatusBar : public StatusBar {
 public:
  // Draws texts with `fonts` and keeps their family the desktop's.
  LinuxStatusBar(RunLoopQueue& loop, FontFaces& fonts, TrayOptions options);
  ~LinuxStatusBar() override;

  // An item outlives neither the bar nor the loop. One item at a time is shown.
  std::unique_ptr<StatusItem> makeItem(double length) override;

  // What the menu says has changed apart from the item: at the end of the turn the menu is asked
  // to update, and hosts are told.
  void menuChanged();

  // For reports on the state of the tray: the process that shows it, empty while there is none, and
  // whether it has taken the item.
  std::string hostName() const;
  bool isRegistered() const;
  // The application has an item that it does not hide, whether or not somebody shows it.
  bool isItemWanted() const;

  // The user's wish for less motion, from the desktop's settings; false where nothing says so.
  bool prefersReducedMotion() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace kelvane
