#include "programs/kelvane-windows/symbols.h"

#include <string_view>

#include <gtkmm/icontheme.h>
#include <gtkmm/window.h>

namespace kelvane {
namespace {

struct Symbol {
  std::string_view name;
  const char* icon;
};
// The toolkit has a gear of its own for themes that have none.
constexpr Symbol kSymbols[] = {
    {"gearshape", "emblem-system-symbolic"},
    {"menubar.rectangle", "kelvane-menu-bar-symbolic"},
};

}  // namespace

const char* symbolIcon(const std::string& symbol) {
  for (const Symbol& each : kSymbols)
    if (each.name == symbol) return each.icon;
  return nullptr;
}

void addIcons() {
  Gtk::IconTheme::get_for_display(Gdk::Display::get_default())
      ->add_resource_path("/org/kelvane/Kelvane/icons");
  Gtk::Window::set_default_icon_name(kApplicationIcon);
}

}  // namespace kelvane
