#include "programs/kelvane-windows/note_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <gtkmm/gestureclick.h>

#include "programs/kelvane-windows/accessibility.h"
#include "programs/kelvane-windows/x11_windows.h"

namespace kelvane {
namespace {

constexpr double kLargest = 2000;  // pixels

int pixels(double points) {
  return std::isfinite(points) ? static_cast<int>(std::lround(std::clamp(points, 0.0, kLargest)))
                               : 0;
}

}  // namespace

NoteWindow::NoteWindow(const ShowPopover& popover, std::function<void()> closed) {
  setAccessibleRole(Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_TOOLTIP);
  setAccessibleName(Gtk::Widget::gobj(), popover.text);
  set_decorated(false);
  set_resizable(false);
  add_css_class("note");
  if (popover.isAnimated) add_css_class("animated");

  text_.set_text(popover.text);
  text_.set_wrap();
  int least = 0, natural = 0, unused = 0;
  text_.measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, unused, unused);
  if (const int widest = pixels(popover.maximumTextWidth); widest > 0 && natural > widest) {
    text_.set_max_width_chars(1);
    text_.set_size_request(widest, -1);
  }
  text_.set_margin(pixels(popover.inset));
  set_child(text_);

  const auto click = Gtk::GestureClick::create();
  click->set_button(0);
  click->signal_pressed().connect([closed = std::move(closed)](int, double, double) {
    const auto close = closed;
    close();
  });
  add_controller(click);
  placeNear(gobj(), *popover.anchor);
}

}  // namespace kelvane
