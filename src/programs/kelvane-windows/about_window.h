// The about panel. Main thread.
#pragma once

#include <functional>

#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include "platform/application_information.h"
#include "programs/kelvane-windows/dialog_window.h"

namespace kelvane {

class AboutWindow : public DialogWindow {
 public:
  // `closed` may destroy the window.
  explicit AboutWindow(std::function<void()> closed);
  void setInformation(const ApplicationInformation& information);

 private:
  Gtk::Image icon_;
  Gtk::Label name_;
  Gtk::Label version_;
  Gtk::Label copyright_;
};

}  // namespace kelvane
