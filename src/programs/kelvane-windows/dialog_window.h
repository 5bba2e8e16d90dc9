// The window of sheets, alerts and the about panel: content above a row of buttons. Main thread.
//
// Escape and closing dismiss it, which is reported and has no other effect; Return presses its
// default button, wherever the focus is, unless that is on another button.
#pragma once

#include <functional>

#include <gtkmm/box.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

namespace kelvane {

class DialogWindow : public Gtk::Window {
 public:
  DialogWindow(bool isAlert, std::function<void()> dismissed);

  Gtk::Box& content() { return content_; }
  // Buttons of equal width, from the left; hidden while there are none.
  Gtk::Box& buttons() { return buttons_; }
  void showButtons();
  // Makes it a modal window of another one.
  void attachTo(Gtk::Window& parent);

 protected:
  bool on_close_request() override;

 private:
  std::function<void()> dismissed_;
  Gtk::Box content_;
  Gtk::ScrolledWindow scrolled_;
  Gtk::Box buttons_;
  Gtk::Box frame_;
};

// Closes a window by Escape, as its frame's button does.
void closeByEscape(Gtk::Window& window);

// Lets what is larger than the screen scroll, and all else have its size.
void limitToScreen(Gtk::ScrolledWindow& scrolled);

}  // namespace kelvane
