#include "programs/kelvane-windows/menu_window.h"

#include <utility>

#include <gdk/gdkkeysyms.h>
#include <gdkmm/seat.h>
#include <gtkmm/eventcontrollerkey.h>

#include "programs/kelvane-windows/accessibility.h"
#include "programs/kelvane-windows/dialog_window.h"
#include "programs/kelvane-windows/x11_windows.h"

namespace kelvane {
namespace {

constexpr const char* kName = "Kelvane";

bool has(Gdk::ModifierType state, Gdk::ModifierType modifier) {
  return (state & modifier) == modifier;
}

bool isAlt(guint key) { return key == GDK_KEY_Alt_L || key == GDK_KEY_Alt_R; }
bool isControl(guint key) { return key == GDK_KEY_Control_L || key == GDK_KEY_Control_R; }

}  // namespace

MenuWindow::MenuWindow(const ShowMenu& menu, Events events)
    : anchor_(menu.anchor),
      events_(std::move(events)),
      view_(menu.lines, [this](std::uint32_t line) {
        const auto chosen = events_.chosen;
        release();
        chosen(line);
      }) {
  setAccessibleRole(Gtk::Widget::gobj(), GTK_ACCESSIBLE_ROLE_MENU);
  setAccessibleName(Gtk::Widget::gobj(), kName);
  set_title(kName);
  set_decorated(false);
  set_resizable(false);
  add_css_class("menu");
  if (get_display()->is_composited()) add_css_class("rounded");
  limitToScreen(scrolled_);
  // The lines are as wide as the window, so a bar of its own would hide their ends.
  scrolled_.set_overlay_scrolling();
  scrolled_.set_child(view_.widget());
  set_child(scrolled_);

  const auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](guint key, guint, Gdk::ModifierType state) { return keyPressed(key, state); }, false);
  keys->signal_key_released().connect(
      [this](guint key, guint, Gdk::ModifierType state) { holdWith(key, state, false); });
  add_controller(keys);
  property_is_active().signal_changed().connect([this] { activityChanged(); });
}

MenuWindow::~MenuWindow() {
  unset_focus();
  scrolled_.unset_child();
}

void MenuWindow::popUp(const std::function<void(Gtk::Window&)>& present) {
  if (canPlaceWindows()) {
    popup_.emplace(gobj(), anchor_, [this] { close(false); });
    set_visible();
    popup_->takeInput();
  } else {
    present(*this);
  }
  // The toolkit has given it to the first line, but none is lit up before one is gone to.
  unset_focus();
  const auto keyboard = get_display()->get_default_seat()->get_keyboard();
  holdWith(0, keyboard->get_modifier_state(), true);
}

bool MenuWindow::keyPressed(guint key, Gdk::ModifierType state) {
  holdWith(key, state, true);
  switch (key) {
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
    case GDK_KEY_ISO_Left_Tab:
      view_.step(-1);
      return true;
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
    case GDK_KEY_Tab:
      view_.step(1);
      return true;
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
    case GDK_KEY_Page_Up:
      view_.goToEnd(-1);
      return true;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
    case GDK_KEY_Page_Down:
      view_.goToEnd(1);
      return true;
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
      view_.enterSubmenu();
      return true;
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
      view_.leaveSubmenu();
      return true;
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
    case GDK_KEY_ISO_Enter:
    case GDK_KEY_space:
    case GDK_KEY_KP_Space:
      view_.chooseFocused();
      return true;
    case GDK_KEY_Escape:
      close(false);
      return true;
    default:
      break;
  }
  const gunichar character = gdk_keyval_to_unicode(key);
  if (character == 0) return false;
  const bool isCommand = has(state, Gdk::ModifierType::CONTROL_MASK);
  const bool isOption = has(state, Gdk::ModifierType::ALT_MASK);
  if (!view_.chooseKey(character, isCommand, isOption) && !isCommand) view_.goToInitial(character);
  return true;
}

// A modifier's own event tells what was held before it.
void MenuWindow::holdWith(guint key, Gdk::ModifierType state, bool isPressed) {
  view_.hold(isControl(key) ? isPressed : has(state, Gdk::ModifierType::CONTROL_MASK),
             isAlt(key) ? isPressed : has(state, Gdk::ModifierType::ALT_MASK));
}

void MenuWindow::activityChanged() {
  const bool isActive = property_is_active();
  if (std::exchange(wasActive_, isActive) && !isActive) close(true);
}

void MenuWindow::release() {
  events_.closed = nullptr;
  popup_.reset();
}

void MenuWindow::close(bool hasLostFocus) {
  const auto closed = events_.closed;
  release();
  if (closed) closed(hasLostFocus);
}

bool MenuWindow::on_close_request() {
  close(false);
  return true;
}

}  // namespace kelvane
