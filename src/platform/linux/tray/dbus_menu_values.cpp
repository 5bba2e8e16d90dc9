#include "platform/linux/tray/dbus_menu_values.h"

#include <array>
#include <utility>

namespace kelvane {
namespace {

// Letters and digits are called the same everywhere; these are the signs that menus use.
std::string keyNameOf(const std::string& key, KeyNames names) {
  static constexpr std::array<std::pair<const char*, const char*>, 8> kGtkNames{{
      {",", "comma"},
      {".", "period"},
      {"-", "minus"},
      {"+", "plus"},
      {"/", "slash"},
      {"=", "equal"},
      {";", "semicolon"},
      {"?", "question"},
  }};
  if (names == KeyNames::gtk)
    for (const auto& [sign, name] : kGtkNames)
      if (key == sign) return name;
  return key;
}

// aas: one combination, its modifiers first.
void writeShortcut(BusWriter& value, const KeyEquivalent& equivalent, KeyNames names) {
  value.array("as", [&] {
    value.array("s", [&] {
      if (equivalent.command) value.text("Control");
      if (equivalent.option) value.text("Alt");
      value.text(keyNameOf(equivalent.key, names));
    });
  });
}

// Calls `use` with name, type and value of each property; a value is written by calling it.
template <typename Use>
void forEachProperty(const MenuEntry& entry, KeyNames names, const Use& use) {
  if (entry.isSeparator) return use("type", "s", [](BusWriter& value) { value.text("separator"); });
  if (entry.id != DbusMenuLayout::kRootId) {
    use("label", "s", [&entry](BusWriter& value) { value.text(entry.label); });
    use("enabled", "b", [&entry](BusWriter& value) { value.boolean(entry.isEnabled); });
  }
  if (entry.hasSubmenu)
    use("children-display", "s", [](BusWriter& value) { value.text("submenu"); });
  if (!entry.keyEquivalent.key.empty())
    use("shortcut", "aas",
        [&entry, names](BusWriter& value) { writeShortcut(value, entry.keyEquivalent, names); });
}

// i and a{sv}, without a structure around them.
void writeIdAndProperties(BusWriter& body, const MenuEntry& entry, const PropertyFilter& filter,
                          KeyNames names) {
  body.int32(entry.id);
  body.array("{sv}", [&] {
    forEachProperty(entry, names, [&](const char* name, const char* type, const auto& write) {
      if (filter.empty() || filter.contains(name)) body.property(name, type, [&] { write(body); });
    });
  });
}

}  // namespace

PropertyFilter propertyFilterOf(GVariant* names) {
  PropertyFilter filter;
  GVariantIter iterator;
  g_variant_iter_init(&iterator, names);
  const char* name = nullptr;
  while (g_variant_iter_next(&iterator, "&s", &name)) filter.emplace(name);
  return filter;
}

void writeMenuProperties(BusWriter& body, const MenuEntry& entry, const PropertyFilter& filter,
                         KeyNames names) {
  body.structure("ia{sv}", [&] { writeIdAndProperties(body, entry, filter, names); });
}

BusWrite menuProperty(const MenuEntry& entry, std::string_view property, KeyNames names) {
  BusWrite found;
  forEachProperty(entry, names, [&](const char* name, const char* type, const auto& write) {
    if (property == name)
      found = [type, write](BusWriter& body) { body.variant(type, [&] { write(body); }); };
  });
  return found;
}

void writeMenuLayout(BusWriter& body, const MenuEntry& entry, int depth,
                     const PropertyFilter& filter, KeyNames names) {
  body.structure("ia{sv}av", [&] {
    writeIdAndProperties(body, entry, filter, names);
    body.array("v", [&] {
      if (depth == 0) return;
      for (const MenuEntry& child : entry.children)
        body.variant("(ia{sv}av)", [&] {
          writeMenuLayout(body, child, depth < 0 ? depth : depth - 1, filter, names);
        });
    });
  });
}

void writeMenuChange(BusWriter& body, const MenuChange& change, const DbusMenuLayout& layout) {
  body.array("(ia{sv})", [&] {
    for (const MenuChange::Entry& each : change.changed) {
      const MenuEntry& entry = *layout.find(each.id);
      body.structure("ia{sv}", [&] {
        body.int32(each.id);
        body.array("{sv}", [&] {
          if (each.label) body.property("label", "s", [&] { body.text(entry.label); });
          if (each.enabled) body.property("enabled", "b", [&] { body.boolean(entry.isEnabled); });
        });
      });
    }
  });
  body.array("(ias)", [] {});
}

}  // namespace kelvane
