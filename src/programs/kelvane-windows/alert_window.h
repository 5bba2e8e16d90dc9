// A modal alert of the application's own. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include "platform/windows.h"
#include "programs/kelvane-windows/alert_content.h"
#include "programs/kelvane-windows/dialog_window.h"

namespace kelvane {

class AlertWindow : public DialogWindow {
 public:
  // `answered` is called with the index of the pressed button, 0 when it was dismissed; it may
  // destroy the window. Nothing is shown before `present`.
  AlertWindow(const Alert& alert, std::function<void(int)> answered);

 private:
  AlertContent content_;
  Gtk::Label message_;
  std::vector<std::unique_ptr<Gtk::Button>> answers_;
};

}  // namespace kelvane
