#include "programs/kelvane-windows/dialog_window.h"

#include <utility>

#include <gdk/gdkkeysyms.h>
#include <gtkmm/button.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>

#include "programs/kelvane-windows/accessibility.h"

namespace kelvane {
namespace {

constexpr int kMargin = 18;     // pixels around everything
constexpr int kGap = 12;        // pixels above the buttons, scrolled or not
constexpr int kButtonGap = 12;  // pixels between buttons
constexpr double kScreenShare = 0.75;

bool isReturn(guint key) {
  return key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_ISO_Enter;
}

// The toolkit lets Return press a check button that has the focus.
void pressDefaultByReturn(Gtk::Window& window) {
  const auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [&window](guint key, guint, Gdk::ModifierType) {
        if (!isReturn(key) || dynamic_cast<Gtk::Button*>(window.get_focus())) return false;
        Gtk::Widget* button = window.get_default_widget();
        return button && button->activate();
      },
      false);
  window.add_controller(keys);
}

}  // namespace

void closeByEscape(Gtk::Window& window) {
  const auto shortcuts = Gtk::ShortcutController::create();
  shortcuts->add_shortcut(Gtk::Shortcut::create(Gtk::KeyvalTrigger::create(GDK_KEY_Escape),
                                                Gtk::NamedAction::create("window.close")));
  window.add_controller(shortcuts);
}

void limitToScreen(Gtk::ScrolledWindow& scrolled) {
  scrolled.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  // A bar that is only seen under the pointer does not say that there is more.
  scrolled.set_overlay_scrolling(false);
  scrolled.set_propagate_natural_width();
  scrolled.set_propagate_natural_height();
  GListModel* monitors = gdk_display_get_monitors(gdk_display_get_default());
  auto* monitor = static_cast<GdkMonitor*>(g_list_model_get_item(monitors, 0));
  if (!monitor) return;
  GdkRectangle area;
  gdk_monitor_get_geometry(monitor, &area);
  g_object_unref(monitor);
  scrolled.set_max_content_height(static_cast<int>(area.height * kScreenShare));
}

DialogWindow::DialogWindow(bool isAlert, std::function<void()> dismissed)
    : dismissed_(std::move(dismissed)),
      content_(Gtk::Orientation::VERTICAL),
      buttons_(Gtk::Orientation::HORIZONTAL, kButtonGap),
      frame_(Gtk::Orientation::VERTICAL) {
  setAccessibleRole(Gtk::Widget::gobj(),
                    isAlert ? GTK_ACCESSIBLE_ROLE_ALERT_DIALOG : GTK_ACCESSIBLE_ROLE_DIALOG);
  set_resizable(false);
  limitToScreen(scrolled_);
  content_.set_margin(kMargin);
  scrolled_.set_child(content_);
  buttons_.set_halign(Gtk::Align::END);
  buttons_.set_homogeneous();
  buttons_.set_margin(kMargin);
  buttons_.set_margin_top(kGap);
  frame_.append(scrolled_);
  frame_.append(buttons_);
  set_child(frame_);
  closeByEscape(*this);
  pressDefaultByReturn(*this);
  showButtons();
}

void DialogWindow::showButtons() {
  const bool hasSome = buttons_.get_first_child();
  buttons_.set_visible(hasSome);
  content_.set_margin_bottom(hasSome ? kMargin - kGap : kMargin);
}

void DialogWindow::attachTo(Gtk::Window& parent) {
  set_transient_for(parent);
  set_modal();
  set_title(parent.get_title());
}

bool DialogWindow::on_close_request() {
  // It may be destroyed in there.
  const auto dismissed = dismissed_;
  dismissed();
  return true;
}

}  // namespace kelvane
