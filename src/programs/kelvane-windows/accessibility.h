// What assistive programs are told of a widget, where the toolkit does not tell it by itself. Main
// thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <giomm/simpleaction.h>
#include <gtk/gtk.h>

namespace kelvane {

// The role can be chosen only before a widget is first shown.
void setAccessibleRole(GtkWidget* widget, GtkAccessibleRole role);
void setAccessibleName(GtkWidget* widget, const std::string& name);
// Shown on hover too; empty: none.
void setHelp(GtkWidget* widget, const std::string& help);

// Gives a widget the action "control.press", which calls `pressed`: check buttons and tabs have
// none of their own. With a state it is for a check button that is bound to it: what is pressed
// then shows the action's state, which only its owner changes.
Glib::RefPtr<Gio::SimpleAction> addPressAction(GtkWidget* widget, std::optional<bool> state,
                                               std::function<void()> pressed);
inline constexpr const char* kPressAction = "control.press";

}  // namespace kelvane
