// Menu entries as com.canonical.dbusmenu sends them. Main thread.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include <glib.h>

#include "platform/linux/glib/bus_writer.h"
#include "platform/linux/tray/dbus_menu_layout.h"

namespace kelvane {

// How hosts name the keys of shortcuts; see `HostProfile::usesQtKeyNames`.
enum class KeyNames { gtk, qt };

// Names of properties to answer; empty: all of them.
using PropertyFilter = std::set<std::string, std::less<>>;
PropertyFilter propertyFilterOf(GVariant* names);  // an "as"

// (ia{sv}): the entry's id and properties.
void writeMenuProperties(BusWriter& body, const MenuEntry& entry, const PropertyFilter& filter,
                         KeyNames names);

// v: one property; empty when the entry, which must outlive it, has no such property.
BusWrite menuProperty(const MenuEntry& entry, std::string_view property, KeyNames names);

// (ia{sv}av): the entry with its children `depth` levels deep, all of them when negative.
void writeMenuLayout(BusWriter& body, const MenuEntry& entry, int depth,
                     const PropertyFilter& filter, KeyNames names);

// a(ia{sv})a(ias): the new values of what has changed; nothing is taken away.
void writeMenuChange(BusWriter& body, const MenuChange& change, const DbusMenuLayout& layout);

}  // namespace kelvane
