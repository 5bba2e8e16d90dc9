#include "platform/linux/tray/desktop_facts.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

// A factor that a screen can have; everything else is a fault of the sender.
std::optional<double> plausibleScale(double scale) {
  if (scale >= 0.5 && scale <= 8) return scale;
  return std::nullopt;
}

std::optional<double> larger(std::optional<double> a, std::optional<double> b) {
  return a && b ? std::max(*a, *b) : (a ? a : b);
}

// The C library's strtod follows the locale, g_ascii_strtod does not.
std::optional<double> numberOf(std::string_view text) {
  const std::string copy(text);
  char* end = nullptr;
  const double number = g_ascii_strtod(copy.c_str(), &end);
  if (end == copy.c_str() || *end != '\0') return std::nullopt;
  return plausibleScale(number);
}

// "2", "eDP-1=2;HDMI-1=1;" or "2;1": the largest.
std::optional<double> largestFactor(std::string_view list) {
  std::optional<double> largest;
  while (!list.empty()) {
    const auto end = list.find(';');
    std::string_view one = list.substr(0, end);
    if (const auto sign = one.find('='); sign != one.npos) one.remove_prefix(sign + 1);
    largest = larger(largest, numberOf(one));
    list = end == list.npos ? "" : list.substr(end + 1);
  }
  return largest;
}

GVariant* find(const SettingsTable& table, const std::string& key, const char* type) {
  const auto found = table.find(key);
  if (found == table.end() || !g_variant_is_of_type(found->second.get(), G_VARIANT_TYPE(type)))
    return nullptr;
  return found->second.get();
}

std::string lowered(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

// A plain background of the first panel: an array of four doubles, red to alpha. A glassy one lets
// the wallpaper through, so it tells nothing.
std::optional<Appearance> appearanceOfBackground(const SettingsTable& panel) {
  GVariant* style = find(panel, "/panels/panel-1/background-style", "u");
  GVariant* color = find(panel, "/panels/panel-1/background-rgba", "av");
  if (!style || g_variant_get_uint32(style) != 1 || !color || g_variant_n_children(color) != 4)
    return std::nullopt;
  std::array<double, 4> rgba{};
  for (std::size_t i = 0; i < rgba.size(); ++i) {
    const GVariantPtr boxed(g_variant_get_child_value(color, i));
    const GVariantPtr component(g_variant_get_variant(boxed.get()));
    if (!g_variant_is_of_type(component.get(), G_VARIANT_TYPE_DOUBLE)) return std::nullopt;
    rgba[i] = g_variant_get_double(component.get());
  }
  if (rgba[3] < 0.75) return std::nullopt;
  const double luma = 0.2126 * rgba[0] + 0.7152 * rgba[1] + 0.0722 * rgba[2];
  return luma < 0.5 ? Appearance::dark : Appearance::light;
}

}  // namespace

SettingsTable settingsTableOf(GVariant* dictionary) {
  SettingsTable table;
  if (!g_variant_is_of_type(dictionary, G_VARIANT_TYPE_VARDICT)) return table;
  GVariantIter iterator;
  g_variant_iter_init(&iterator, dictionary);
  const char* key = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_next(&iterator, "{&sv}", &key, &value))
    table[key] = std::shared_ptr<GVariant>(value, GVariantDeleter());
  return table;
}

std::optional<Appearance> appearanceOfColorScheme(GVariant* value) {
  if (!value || !g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) return std::nullopt;
  switch (g_variant_get_uint32(value)) {
    case 0:
    case 2:
      return Appearance::light;
    case 1:
      return Appearance::dark;
    default:
      return std::nullopt;
  }
}

std::optional<bool> darkWindowsOfColorScheme(GVariant* value) {
  if (!value || !g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) return std::nullopt;
  const guint32 preference = g_variant_get_uint32(value);
  return preference == 1 || preference == 2 ? std::optional(preference == 1) : std::nullopt;
}

std::optional<Appearance> appearanceOfTheme(const std::string& theme) {
  const std::string name = lowered(theme);
  if (name.find("dark") != name.npos) return Appearance::dark;
  // GTK falls back to Adwaita, and the others are light as they come.
  for (const char* light : {"", "adwaita", "default", "xfce", "raleigh"})
    if (name == light) return Appearance::light;
  if (name.find("light") != name.npos) return Appearance::light;
  return std::nullopt;
}

std::optional<Appearance> appearanceOfXfcePanel(const SettingsTable& panel,
                                                const SettingsTable& settings) {
  if (const auto appearance = appearanceOfBackground(panel)) return appearance;
  GVariant* darkMode = find(panel, "/panels/dark-mode", "b");
  if (darkMode && g_variant_get_boolean(darkMode)) return Appearance::dark;
  GVariant* theme = find(settings, "/Net/ThemeName", "s");
  return appearanceOfTheme(theme ? g_variant_get_string(theme, nullptr) : "");
}

bool wantsReducedMotion(const SettingsTable& portalAppearance, const SettingsTable& portalInterface,
                        const SettingsTable& xfceSettings) {
  GVariant* preference = find(portalAppearance, "reduced-motion", "u");
  if (preference && g_variant_get_uint32(preference) == 1) return true;
  for (GVariant* animations : {find(portalInterface, "enable-animations", "b"),
                               find(xfceSettings, "/Gtk/EnableAnimations", "b")})
    if (animations && !g_variant_get_boolean(animations)) return true;
  return false;
}

double scaleOfXfce(const SettingsTable& settings) {
  GVariant* factor = find(settings, "/Gdk/WindowScalingFactor", "i");
  if (!factor) return 1;
  return plausibleScale(g_variant_get_int32(factor)).value_or(1);
}

std::optional<double> scaleOfMutter(GVariant* state) {
  constexpr const char* kType = "(ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})a{sv})";
  if (!g_variant_is_of_type(state, G_VARIANT_TYPE(kType))) return std::nullopt;
  const GVariantPtr monitors(g_variant_get_child_value(state, 2));
  std::optional<double> largest;
  for (gsize i = 0; i < g_variant_n_children(monitors.get()); ++i) {
    const GVariantPtr monitor(g_variant_get_child_value(monitors.get(), i));
    double scale = 0;
    g_variant_get_child(monitor.get(), 2, "d", &scale);
    largest = larger(largest, plausibleScale(scale));
  }
  return largest;
}

std::optional<double> scaleOfKScreen(GVariant* reply) {
  if (!g_variant_is_of_type(reply, G_VARIANT_TYPE("(a{sv})"))) return std::nullopt;
  const GVariantPtr dictionary(g_variant_get_child_value(reply, 0));
  const SettingsTable config = settingsTableOf(dictionary.get());
  GVariant* outputs = find(config, "outputs", "av");
  if (!outputs) return std::nullopt;
  std::optional<double> largest;
  for (gsize i = 0; i < g_variant_n_children(outputs); ++i) {
    const GVariantPtr boxed(g_variant_get_child_value(outputs, i));
    const GVariantPtr inner(g_variant_get_variant(boxed.get()));
    const SettingsTable output = settingsTableOf(inner.get());
    GVariant* enabled = find(output, "enabled", "b");
    GVariant* scale = find(output, "scale", "d");
    if (scale && (!enabled || g_variant_get_boolean(enabled)))
      largest = larger(largest, plausibleScale(g_variant_get_double(scale)));
  }
  return largest;
}

std::optional<double> scaleOfEnvironment(TrayHost host,
                                         const std::function<const char*(const char*)>& read) {
  const bool isQt = profileOf(host).usesQtKeyNames;
  std::vector<const char*> variables;
  if (!isQt) variables = {"GDK_SCALE"};
  if (isQt) variables = {"QT_SCREEN_SCALE_FACTORS", "QT_SCALE_FACTOR"};
  for (const char* variable : variables)
    if (const char* value = read(variable))
      if (const auto scale = largestFactor(value)) return scale;
  return std::nullopt;
}

std::string fontFamilyOf(const std::string& description) {
  // What may follow the family, in lower case and without hyphens.
  static constexpr std::array<std::string_view, 31> kStyles{
      "thin",           "ultralight", "extralight",   "light",         "semilight",
      "demilight",      "book",       "regular",      "normal",        "roman",
      "medium",         "semibold",   "demibold",     "bold",          "ultrabold",
      "extrabold",      "heavy",      "black",        "ultrablack",    "extrablack",
      "italic",         "oblique",    "condensed",    "semicondensed", "extracondensed",
      "ultracondensed", "expanded",   "semiexpanded", "extraexpanded", "ultraexpanded",
      "smallcaps"};
  std::vector<std::string> words;
  for (std::size_t at = 0; at < description.size();) {
    const std::size_t end = std::min(description.find(' ', at), description.size());
    if (end > at) words.push_back(description.substr(at, end - at));
    at = end + 1;
  }
  const auto isSize = [](std::string word) {
    if (word.ends_with("px")) word.resize(word.size() - 2);
    return !word.empty() && std::ranges::all_of(word, [](unsigned char c) {
      return std::isdigit(c) != 0 || c == '.';
    });
  };
  if (!words.empty() && isSize(words.back())) words.pop_back();
  // The first word is always the family's: there are fonts called "Black" and the like.
  while (words.size() > 1) {
    std::string word = lowered(words.back());
    std::erase(word, '-');
    if (std::ranges::find(kStyles, word) == kStyles.end()) break;
    words.pop_back();
  }
  std::string family;
  for (const std::string& word : words) family += (family.empty() ? "" : " ") + word;
  // A list of families ends its last one, and separates the others, with a comma.
  return family.substr(0, family.find(','));
}

}  // namespace kelvane
