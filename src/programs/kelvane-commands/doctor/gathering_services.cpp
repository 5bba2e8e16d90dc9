// What services say of themselves: the tray's watcher, the notification server, UPower.

#include <algorithm>
#include <cstdlib>
#include <string>

#include "platform/linux/application/application_service.h"
#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/power/supply_reader.h"
#include "platform/linux/power/upower_properties.h"
#include "platform/linux/tray/desktop_settings.h"
#include "platform/linux/tray/watcher.h"
#include "programs/kelvane-commands/doctor/gathering.h"

namespace kelvane {
namespace {

// More than any tray has; more are not looked at.
constexpr std::size_t kMostItems = 64;
constexpr std::size_t kMostDevices = 64;
constexpr std::size_t kMostPictures = 8;
constexpr const char* kUPower = "org.freedesktop.UPower";
constexpr const char* kUPowerPath = "/org/freedesktop/UPower";
constexpr const char* kDisplayDevice = "/org/freedesktop/UPower/devices/DisplayDevice";

std::optional<bool> flagOf(const GVariantPtr& value) {
  if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN)) return std::nullopt;
  return g_variant_get_boolean(value.get()) != FALSE;
}

std::string textOf(const GVariantPtr& value) {
  if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING)) return "";
  return g_variant_get_string(value.get(), nullptr);
}

std::string scaleSourceOf(TrayHost host) {
  if (scaleOfEnvironment(host, [](const char* name) { return std::getenv(name); }))
    return "the environment";
  switch (host) {
    case TrayHost::xfce:
      return "xfconf";
    case TrayHost::gnome:
      return "Mutter";
    case TrayHost::plasma:
      return "KScreen";
    default:
      return "";
  }
}

void addSettings(BusConnection* bus, TrayFacts& tray) {
  tray.slot = profileOf(tray.host).slot;
  DesktopSettings settings(bus, [] {});
  settings.follow(tray.host);
  waitASecond([&] { return settings.isComplete(); });
  const auto scale = settings.scale();
  tray.slot.scale = scale.value_or(kScaleWhenUnknown);
  if (scale) tray.scaleSource = scaleSourceOf(tray.host);
  tray.bar = settings.barAppearance();
  tray.darkWindows = settings.prefersDarkWindows();
}

// The item comes from a connection of its own, so it is known by its process. Empty: none.
std::string connectionOfItem(BusProbe& bus, std::uint32_t process, std::vector<std::string> items) {
  items.resize(std::min(items.size(), kMostItems));
  for (const std::string& item : items) {
    // A watcher adds the item's path to the connection, one with "@" between.
    std::string connection = item.substr(0, item.find_first_of("/@"));
    if (!connection.empty() && bus.processOf(connection) == process) return connection;
  }
  return "";
}

std::vector<std::pair<int, int>> sizesOf(const GVariantPtr& pixmaps) {
  std::vector<std::pair<int, int>> sizes;
  if (!pixmaps || !g_variant_is_of_type(pixmaps.get(), G_VARIANT_TYPE("a(iiay)"))) return sizes;
  const gsize count = std::min<gsize>(g_variant_n_children(pixmaps.get()), kMostPictures);
  for (gsize i = 0; i < count; ++i) {
    auto& [width, height] = sizes.emplace_back();
    g_variant_get_child(pixmaps.get(), i, "(ii@ay)", &width, &height, nullptr);
  }
  return sizes;
}

UPowerDevice deviceAt(BusProbe& bus, const char* path, std::string* name, bool& isAnswering) {
  UPowerDevice device;
  const auto reply = bus.callAt(path, "org.freedesktop.DBus.Properties", "GetAll",
                                g_variant_new("(s)", "org.freedesktop.UPower.Device"), "(a{sv})");
  isAnswering = reply != nullptr;
  if (!reply) return device;
  const GVariantPtr properties(g_variant_get_child_value(reply.get(), 0));
  applyProperties(device, scalarsOf(properties.get()));
  if (name)
    *name = textOf(
        GVariantPtr(g_variant_lookup_value(properties.get(), "NativePath", G_VARIANT_TYPE_STRING)));
  return device;
}

void readDevices(BusProbe& bus, UPowerFacts& facts) {
  facts.version = textOf(bus.property("DaemonVersion"));
  const auto reply = bus.call("EnumerateDevices", nullptr, "(ao)");
  if (!reply) return;
  facts.isAnswering = true;
  bool isAnswering = true;
  facts.display = deviceAt(bus, kDisplayDevice, nullptr, isAnswering);
  const GVariantPtr paths(g_variant_get_child_value(reply.get(), 0));
  const gsize count = std::min<gsize>(g_variant_n_children(paths.get()), kMostDevices);
  for (gsize i = 0; i < count; ++i) {
    const char* path = nullptr;
    g_variant_get_child(paths.get(), i, "&o", &path);
    std::string name;
    const UPowerDevice device = deviceAt(bus, path, &name, isAnswering);
    if (name.empty()) name = std::string(path).substr(std::string(path).rfind('/') + 1);
    // Some kernel drivers give a whole path.
    if (isAnswering) facts.devices.emplace_back(name.substr(name.rfind('/') + 1), device);
  }
}

}  // namespace

void gatherTray(BusProbe& bus, DoctorFacts& facts) {
  const auto running = bus.processOf(ApplicationService::kName);
  facts.application.isRunning = bus.presence(ApplicationService::kName) == Presence::running;
  if (bus.presence(Watcher::kName) != Presence::running) return;
  TrayFacts& tray = facts.tray.emplace();
  if (const auto process = bus.processOf(Watcher::kName)) tray.process = nameOfProcess(*process);
  tray.host = hostOfProcess(tray.process);
  bus.turnTo({Watcher::kName, "/StatusNotifierWatcher", Watcher::kName});
  const auto items = bus.property("RegisteredStatusNotifierItems");
  tray.isAnswering = items != nullptr;
  if (tray.isAnswering) tray.showsItems = flagOf(bus.property("IsStatusNotifierHostRegistered"));
  const std::string item =
      items && running ? connectionOfItem(bus, *running, textsOf(items.get())) : "";
  facts.application.isItemRegistered = !item.empty();
  if (!item.empty()) {
    bus.turnTo({item, "/StatusNotifierItem", "org.kde.StatusNotifierItem"});
    facts.application.pictures = sizesOf(bus.property("IconPixmap"));
  }
  addSettings(bus.connection(), tray);
}

NotifierFacts gatherNotifier(BusProbe& bus) {
  constexpr const char* kName = "org.freedesktop.Notifications";
  NotifierFacts facts;
  facts.presence = bus.presence(kName);
  if (facts.presence != Presence::running) return facts;
  bus.turnTo({kName, "/org/freedesktop/Notifications", kName});
  const auto information = bus.call("GetServerInformation", nullptr, "(ssss)");
  const auto abilities = bus.call("GetCapabilities", nullptr, "(as)");
  if (!information || !abilities) return facts;
  facts.isAnswering = true;
  const char* name = nullptr;
  const char* version = nullptr;
  g_variant_get(information.get(), "(&s&s&s&s)", &name, nullptr, &version, nullptr);
  facts.name = name;
  facts.version = version;
  facts.abilities = textsOf(GVariantPtr(g_variant_get_child_value(abilities.get(), 0)).get());
  return facts;
}

PowerFacts gatherPower(const PowerOptions& power) {
  PowerFacts facts;
  facts.directory = power.directory;
  facts.supplies = SupplyReader(power.directory).read(SupplyFields::all);
  UPowerFacts& upower = facts.upower;
  upower.isWanted = power.useUPower;
  if (!upower.isWanted) return facts;
  BusProbe bus(BusKind::system);
  upower.busProblem = bus.problem();
  if (!upower.busProblem.empty()) return facts;
  upower.presence = bus.presence(kUPower);
  if (upower.presence != Presence::running) return facts;
  bus.turnTo({kUPower, kUPowerPath, kUPower});
  readDevices(bus, upower);
  return facts;
}

}  // namespace kelvane
