// A small borderless window with a text, near the item. Main thread.
#pragma once

#include <functional>

#include <gtkmm/label.h>
#include <gtkmm/window.h>

#include "platform/linux/windows/window_protocol.h"

namespace kelvane {

class NoteWindow : public Gtk::Window {
 public:
  // `popover` has an anchor. `closed` is called when the user clicks it; it may destroy the window.
  NoteWindow(const ShowPopover& popover, std::function<void()> closed);

 private:
  Gtk::Label text_;
};

}  // namespace kelvane
