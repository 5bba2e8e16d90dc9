// Menu entries in the types of com.canonical.dbusmenu. Pure apart from making variants.
#pragma once

#include <set>
#include <string>

#include <glib.h>

#include "platform/linux/tray/dbus_menu_layout.h"

namespace kelvane {

// How hosts name the keys of shortcuts; see `HostProfile::usesQtKeyNames`.
enum class KeyNames { gtk, qt };

// Names of properties to answer; empty: all of them.
using PropertyFilter = std::set<std::string, std::less<>>;
PropertyFilter propertyFilterOf(GVariant* names);  // an "as"

// a{sv}, floating.
GVariant* menuProperties(const MenuEntry& entry, const PropertyFilter& filter, KeyNames names);

// One property, floating; null when the entry has no such property.
GVariant* menuProperty(const MenuEntry& entry, const std::string& property, KeyNames names);

// (ia{sv}av), floating: the entry with its children `depth` levels deep, all of them when negative.
GVariant* menuLayout(const MenuEntry& entry, int depth, const PropertyFilter& filter,
                     KeyNames names);

}  // namespace kelvane
