#include "programs/kelvane-windows/alert_window.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "programs/kelvane-windows/accessibility.h"
#include "programs/kelvane-windows/x11_windows.h"

namespace kelvane {
namespace {

constexpr double kWidest = 2000;  // pixels

}  // namespace

AlertWindow::AlertWindow(const Alert& alert, std::function<void(int)> answered)
    : DialogWindow(true, [answered] { answered(0); }),
      content_(alert.icon, alert.style == AlertStyle::critical) {
  set_title("Kelvane");
  setAccessibleName(Gtk::Widget::gobj(), alert.title);
  content_.setTitle(alert.title);
  if (!alert.message.empty()) {
    styleAlertText(message_);
    message_.set_text(alert.message);
    content_.body().append(message_);
  }
  if (alert.minimumWidth > 0)
    content().set_size_request(static_cast<int>(std::ceil(std::min(alert.minimumWidth, kWidest))),
                               -1);
  content().append(content_.widget());

  // The first one is the default, and stands where the eye ends.
  const std::vector<std::string> own = {kDismiss};
  int index = 0;
  for (const std::string& label : alert.buttons.empty() ? own : alert.buttons) {
    auto button = std::make_unique<Gtk::Button>(label);
    button->signal_clicked().connect([answered, index] {
      const auto answer = answered;
      answer(index);
    });
    buttons().prepend(*button);
    answers_.push_back(std::move(button));
    ++index;
  }
  answers_.front()->add_css_class("suggested-action");
  set_default_widget(*answers_.front());
  set_focus(*answers_.front());
  showButtons();
  signal_map().connect([this] { keepAbove(gobj()); });
}

}  // namespace kelvane
