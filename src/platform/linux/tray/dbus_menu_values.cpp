#include "platform/linux/tray/dbus_menu_values.h"

#include <array>
#include <utility>

#include "platform/linux/glib/glib_ptr.h"

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
GVariant* shortcutOf(const KeyEquivalent& equivalent, KeyNames names) {
  GVariantBuilder keys;
  g_variant_builder_init(&keys, G_VARIANT_TYPE("as"));
  if (equivalent.command) g_variant_builder_add(&keys, "s", "Control");
  if (equivalent.option) g_variant_builder_add(&keys, "s", "Alt");
  g_variant_builder_add(&keys, "s", keyNameOf(equivalent.key, names).c_str());
  GVariant* combination = g_variant_builder_end(&keys);
  return g_variant_new_array(G_VARIANT_TYPE("as"), &combination, 1);
}

// A text from outside may be cut in the middle of a character; the bus takes UTF-8 only.
GVariant* stringOf(const std::string& text) {
  return g_variant_new_take_string(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
}

template <typename Use>
void forEachProperty(const MenuEntry& entry, KeyNames names, const Use& use) {
  if (entry.isSeparator) {
    use("type", [] { return g_variant_new_string("separator"); });
    return;
  }
  if (entry.id != DbusMenuLayout::kRootId) {
    use("label", [&] { return stringOf(entry.label); });
    use("enabled", [&] { return g_variant_new_boolean(entry.isEnabled); });
  }
  if (entry.hasSubmenu) use("children-display", [] { return g_variant_new_string("submenu"); });
  if (!entry.keyEquivalent.key.empty())
    use("shortcut", [&] { return shortcutOf(entry.keyEquivalent, names); });
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

GVariant* menuProperties(const MenuEntry& entry, const PropertyFilter& filter, KeyNames names) {
  GVariantBuilder properties;
  g_variant_builder_init(&properties, G_VARIANT_TYPE_VARDICT);
  forEachProperty(entry, names, [&](const char* name, const auto& make) {
    if (filter.empty() || filter.contains(name))
      g_variant_builder_add(&properties, "{sv}", name, make());
  });
  return g_variant_builder_end(&properties);
}

GVariant* menuProperty(const MenuEntry& entry, const std::string& property, KeyNames names) {
  GVariant* value = nullptr;
  forEachProperty(entry, names, [&](const char* name, const auto& make) {
    if (property == name) value = make();
  });
  return value;
}

GVariant* menuLayout(const MenuEntry& entry, int depth, const PropertyFilter& filter,
                     KeyNames names) {
  GVariantBuilder children;
  g_variant_builder_init(&children, G_VARIANT_TYPE("av"));
  if (depth != 0)
    for (const MenuEntry& child : entry.children)
      g_variant_builder_add(&children, "v",
                            menuLayout(child, depth < 0 ? depth : depth - 1, filter, names));
  return g_variant_new("(i@a{sv}@av)", entry.id, menuProperties(entry, filter, names),
                       g_variant_builder_end(&children));
}

}  // namespace kelvane
