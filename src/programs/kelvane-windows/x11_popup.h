// A window as a popup of the X Window System: where it belongs, no window manager's, with the
// keyboard and the pointer while it is shown. Main thread.
#pragma once

#include <functional>
#include <optional>

#include <gtk/gtk.h>
#include <sigc++/connection.h>

#include "platform/geometry.h"

namespace kelvane {

class X11Popup {
 public:
  // Before the window is first shown; it outlives this. It appears near `anchor`, pixels of the
  // root window, or else near the pointer, beside a panel that is there, and stays wholly on the
  // monitor whatever its size becomes. `elsewhere` is called when the user presses a button
  // outside; that press does nothing else.
  X11Popup(GtkWindow* window, std::optional<Point> anchor, std::function<void()> elsewhere);
  // Gives the keyboard back to whoever had it.
  ~X11Popup();
  X11Popup(const X11Popup&) = delete;
  X11Popup& operator=(const X11Popup&) = delete;

  // Once the window is shown.
  void takeInput();

 private:
  void place();
  bool grabPointer();
  static gboolean heard(GdkDisplay* display, void* event, X11Popup* self);

  GtkWindow* const window_;
  std::function<void()> elsewhere_;
  GdkSurface* surface_ = nullptr;
  unsigned long xWindow_ = 0;  // Xlib's own names don't go with the toolkit's
  Point anchor_;               // in the toolkit's pixels
  unsigned long hadFocus_ = 0;
  sigc::connection patience_;
};

}  // namespace kelvane
