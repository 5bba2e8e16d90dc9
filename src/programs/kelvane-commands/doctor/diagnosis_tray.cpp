// The tray, and Kelvane's item in it.

#include <charconv>
#include <string>

#include "menubar/status_item_controller.h"
#include "platform/linux/desktop/tray_remedy.h"
#include "platform/linux/power/registry_rules.h"
#include "platform/linux/tray/watcher.h"
#include "platform/memory/memory_preferences.h"
#include "programs/kelvane-commands/doctor/diagnosis.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

using Verdict = Finding::Verdict;

// As short as it can be: "1.5", "22".
std::string plain(double number) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, number).ptr;
  return {text, end};
}

std::string wordsOf(const Slot& slot) {
  const std::string height = plain(slot.height);
  return (slot.shape == Slot::Shape::square ? "a square of " + height + " points"
                                            : height + " points high, as wide as the item") +
         (slot.showsTextBeside ? ", with text beside" : "");
}

const char* nameOf(TrayHost host) {
  switch (host) {
    case TrayHost::xfce:
      return "Xfce";
    case TrayHost::lxqt:
      return "LXQt";
    case TrayHost::mate:
      return "MATE";
    case TrayHost::waybar:
      return "Waybar";
    case TrayHost::plasma:
      return "Plasma";
    case TrayHost::gnome:
      return "GNOME";
    case TrayHost::cinnamon:
      return "Cinnamon";
    case TrayHost::swaybar:
      return "swaybar";
    case TrayHost::unknown:
      break;
  }
  return "a host that Kelvane does not know";
}

Finding findingOfTray(const DoctorFacts& facts) {
  const std::string remedy = trayRemedy(facts.desktops, facts.distributions);
  if (!facts.tray)
    return {Verdict::problem, "tray", std::string("none: nobody has the name ") + Watcher::kName,
            remedy, true};
  const TrayFacts& tray = *facts.tray;
  const std::string process = tray.process.empty() ? "of unknown name" : tray.process;
  const std::string name = std::string(nameOf(tray.host)) + " (process " + process + ")";
  const bool isSeen = tray.isAnswering && tray.showsItems.value_or(true);
  if (!isSeen)
    return {
        Verdict::problem, "tray",
        name + (tray.isAnswering ? " collects items, but nothing shows them"
                                 : std::string(" has the name ") + Watcher::kName +
                                       ", but does not answer as a tray"),
        // The KDE daemon takes the name wherever it runs, but is a tray in its own desktop only.
        "End that process, if it is of another desktop: it keeps a tray from the name. " + remedy,
        true};
  if (tray.host == TrayHost::swaybar)
    return {Verdict::note, "tray", name + ", without menus",
            "For the item’s menu run waybar with its module “tray”."};
  return {Verdict::ok, "tray", name};
}

std::string wordsOfShape(const TrayFacts& tray, TrayIconShape setting) {
  Slot slot = tray.slot;
  const auto wanted = wantedShape(setting);
  slot.shape = wanted.value_or(slot.shape);
  if (wanted) return wordsOf(slot) + ", says the setting trayIconShape";
  if (tray.host == TrayHost::unknown) return wordsOf(slot) + ", which any host shows";
  return wordsOf(slot) + ", which suits " + nameOf(tray.host);
}

std::string wordsOfScale(const TrayFacts& tray) {
  const std::string scale = plain(tray.slot.scale);
  return tray.scaleSource.empty() ? scale + ", as nothing says what it is"
                                  : scale + ", says " + tray.scaleSource;
}

std::string wordsOfColors(const TrayFacts& tray, TrayIconColor setting) {
  const std::string windows = !tray.darkWindows   ? "no preference for windows"
                              : *tray.darkWindows ? "dark windows"
                                                  : "light windows";
  if (const auto wanted = wantedAppearance(setting))
    return std::string("the glyph is ") + (*wanted == Appearance::dark ? "light" : "dark") +
           ", says the setting trayIconColor; " + windows;
  if (!tray.bar) return "unknown bar: the glyph is light on a dark backing; " + windows;
  return (*tray.bar == Appearance::dark ? "dark bar: the glyph is light; "
                                        : "light bar: the glyph is dark; ") +
         windows;
}

std::string wordsOf(const std::vector<std::pair<int, int>>& pictures) {
  std::string words;
  for (const auto& [width, height] : pictures)
    words +=
        (words.empty() ? ": " : " and ") + std::to_string(width) + "×" + std::to_string(height);
  return words.empty() ? "" : words + " pixels";
}

Finding findingOfApplication(const DoctorFacts& facts, const SettingsKeys& settings) {
  const ApplicationFacts& application = facts.application;
  if (!application.isRunning)
    return {Verdict::note, "Kelvane", "it does not run", "Start it: kelvane"};
  if (application.isItemRegistered)
    return {Verdict::ok, "Kelvane",
            "it runs, the tray has its item" + wordsOf(application.pictures)};
  if (settings.hideIconWhenOnPower.get() && externalConnected(facts.power.supplies).value_or(true))
    return {Verdict::note, "Kelvane", "it runs, and hides its item while on power as it is set to",
            "To see it always: kelvane settings set hideIconWhenOnPower false"};
  if (!facts.tray) return {Verdict::ok, "Kelvane", "it runs, and waits for a tray"};
  return {Verdict::problem, "Kelvane", "it runs, but the tray does not have its item",
          "Start it anew: kelvane quit, then kelvane", true};
}

}  // namespace

void diagnoseTray(const DoctorFacts& facts, std::vector<Finding>& findings) {
  MemoryPreferences preferences(facts.preferences.values);
  const SettingsKeys settings(preferences);
  findings.push_back(findingOfTray(facts));
  if (facts.tray) {
    const TrayFacts& tray = *facts.tray;
    findings.push_back({Verdict::ok, "shape", wordsOfShape(tray, settings.trayIconShape.get())});
    findings.push_back({Verdict::ok, "scale", wordsOfScale(tray)});
    findings.push_back({Verdict::ok, "colours", wordsOfColors(tray, settings.trayIconColor.get())});
  }
  findings.push_back(findingOfApplication(facts, settings));
}

}  // namespace kelvane
