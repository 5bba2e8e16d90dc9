// The item's menu as a window: by pointer and by keys as the menus of a desktop. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

#include "platform/linux/windows/window_protocol.h"
#include "programs/kelvane-windows/menu_view.h"
#include "programs/kelvane-windows/x11_popup.h"

namespace kelvane {

class MenuWindow : public Gtk::Window {
 public:
  // Either may destroy the window.
  struct Events {
    std::function<void(std::uint32_t line)> chosen;
    std::function<void(bool hasLostFocus)> closed;
  };

  MenuWindow(const ShowMenu& menu, Events events);
  ~MenuWindow() override;

  // Shows it, with the keyboard. `present` shows a window that can't be placed.
  void popUp(const std::function<void(Gtk::Window&)>& present);
  // Before it is hidden: lets go of keyboard and pointer, and tells nothing more.
  void release();

 protected:
  bool on_close_request() override;

 private:
  bool keyPressed(guint key, Gdk::ModifierType state);
  void holdWith(guint key, Gdk::ModifierType state, bool isPressed);
  void activityChanged();
  void close(bool hasLostFocus);

  const std::optional<Point> anchor_;
  Events events_;
  MenuView view_;
  Gtk::ScrolledWindow scrolled_;
  std::optional<X11Popup> popup_;
  bool wasActive_ = false;
};

}  // namespace kelvane
