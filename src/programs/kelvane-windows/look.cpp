#include "programs/kelvane-windows/look.h"

#include <gtkmm/cssprovider.h>
#include <gtkmm/settings.h>
#include <gtkmm/stylecontext.h>

namespace kelvane {
namespace {

constexpr const char* kRules = R"(
/* Boxes begin on the line where texts and buttons do. */
checkbutton:dir(ltr) { padding-left: 0; }
checkbutton:dir(rtl) { padding-right: 0; }
/* The dark theme's own is hardly seen. */
separator { background-color: alpha(currentColor, 0.15); }
.alert-title { font-weight: bold; }
.alert-badge { color: @error_color; background: @theme_bg_color; border-radius: 100%; padding: 2px; }
.about-name { font-weight: bold; font-size: 150%; }
.about-copyright { font-size: 85%; margin-top: 6px; }
window.note { border: 1px solid alpha(currentColor, 0.25); }
window.menu, window.menu > scrolledwindow { background: none; }
.menu-lines {
  background-color: mix(@theme_bg_color, @theme_base_color, 0.5);
  border: 1px solid alpha(currentColor, 0.2);
  padding: 5px;
}
.rounded .menu-lines { border-radius: 9px; }
.menu-lines separator { margin: 5px 12px; }
.menu-lines .submenu separator { margin-left: 28px; }
menuline { padding: 4px 12px; border-radius: 5px; }
.submenu menuline { padding-left: 28px; }
menuline image { -gtk-icon-size: 1.1em; margin-right: -4px; }
menuline:focus { background-color: @theme_selected_bg_color; color: @theme_selected_fg_color; }
/* Told, not offered, but meant to be read. */
menuline:disabled label { color: inherit; opacity: 0.7; }
.menu-keys, menuline image { opacity: 0.6; }
menuline:focus .menu-keys, menuline:focus image { opacity: 0.9; }
window.note.animated > label { animation: note-appears 150ms ease-out; }
@keyframes note-appears { from { opacity: 0; } to { opacity: 1; } }
)";

constexpr const char* kDark = "gtk-application-prefer-dark-theme";

}  // namespace

void addLook() {
  const auto rules = Gtk::CssProvider::create();
  rules->load_from_data(kRules);
  Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), rules,
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

void setDark(std::optional<bool> isDark) {
  GtkSettings* settings = gtk_settings_get_default();
  if (isDark)
    g_object_set(settings, kDark, static_cast<gboolean>(*isDark), nullptr);
  else
    gtk_settings_reset_property(settings, kDark);
}

void reduceMotion() {
  g_object_set(gtk_settings_get_default(), "gtk-enable-animations", FALSE, nullptr);
}

}  // namespace kelvane
