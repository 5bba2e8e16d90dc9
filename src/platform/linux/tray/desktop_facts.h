// What desktops' own settings say about the bar: translations from the types they have on the bus.
// Pure, any thread. Nothing is trusted: a value of another type is as good as none.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include <glib.h>

#include "platform/color.h"
#include "platform/linux/tray/host_profile.h"

namespace kelvane {

// Properties of one xfconf channel, or keys of one portal namespace.
using SettingsTable = std::map<std::string, std::shared_ptr<GVariant>>;
SettingsTable settingsTableOf(GVariant* dictionary);  // an a{sv}; others give an empty table

// org.freedesktop.portal.Settings, key color-scheme: 1 prefers dark, 2 light, 0 has no preference,
// which is what desktops with light windows say.
std::optional<Appearance> appearanceOfColorScheme(GVariant* value);

// The same key as it concerns windows, whose toolkit has a theme of its own without a preference.
std::optional<bool> darkWindowsOfColorScheme(GVariant* value);

// The name of a GTK theme ("Adwaita-dark"); absent when it tells nothing.
std::optional<Appearance> appearanceOfTheme(const std::string& theme);

// xfce4-panel: its dark mode and its background from the channel "xfce4-panel", else the theme that
// the channel "xsettings" names.
std::optional<Appearance> appearanceOfXfcePanel(const SettingsTable& panel,
                                                const SettingsTable& settings);

// The channel "xsettings": a factor that is not set is 1.
double scaleOfXfce(const SettingsTable& settings);

// Whether the user wants less motion: the portal's key reduced-motion is 1, or animations are off
// in the interface settings that the portal passes on, or in the channel "xsettings".
bool wantsReducedMotion(const SettingsTable& portalAppearance, const SettingsTable& portalInterface,
                        const SettingsTable& xfceSettings);

// org.gnome.Mutter.DisplayConfig.GetCurrentState: the largest scale of a monitor in use.
std::optional<double> scaleOfMutter(GVariant* state);

// org.kde.kscreen.Backend.getConfig: the largest scale of an output in use.
std::optional<double> scaleOfKScreen(GVariant* reply);

// GDK_SCALE, QT_SCALE_FACTOR and QT_SCREEN_SCALE_FACTORS, in the order that concerns the host.
// `read` answers a variable's value, null when it is not set.
std::optional<double> scaleOfEnvironment(TrayHost host,
                                         const std::function<const char*(const char*)>& read);

// The family of a font description such as "Noto Sans Bold 10"; empty for none.
std::string fontFamilyOf(const std::string& description);

}  // namespace kelvane
