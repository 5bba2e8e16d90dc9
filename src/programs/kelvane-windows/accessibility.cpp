#include "programs/kelvane-windows/accessibility.h"

#include <utility>

#include <giomm/simpleactiongroup.h>

namespace kelvane {

void setAccessibleRole(GtkWidget* widget, GtkAccessibleRole role) {
  g_object_set(widget, "accessible-role", role, nullptr);
}

void setAccessibleName(GtkWidget* widget, const std::string& name) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 name.c_str(), -1);
}

void setHelp(GtkWidget* widget, const std::string& help) {
  gtk_widget_set_tooltip_text(widget, help.empty() ? nullptr : help.c_str());
  if (help.empty())
    gtk_accessible_reset_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION);
  else
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                   help.c_str(), -1);
}

Glib::RefPtr<Gio::SimpleAction> addPressAction(GtkWidget* widget, std::optional<bool> state,
                                               std::function<void()> pressed) {
  const auto action =
      state ? Gio::SimpleAction::create_bool("press", *state) : Gio::SimpleAction::create("press");
  action->signal_activate().connect(
      [pressed = std::move(pressed)](const Glib::VariantBase&) { pressed(); });
  const auto group = Gio::SimpleActionGroup::create();
  group->add_action(action);
  gtk_widget_insert_action_group(widget, "control", group->Gio::ActionGroup::gobj());
  return action;
}

}  // namespace kelvane
