#include "platform/linux/power/fake_upower_test.h"

#include <filesystem>
#include <stdexcept>

namespace kelvane {
namespace {

constexpr const char* kUPower = "/org/freedesktop/UPower";
constexpr const char* kInterfaces = R"(
<node>
  <interface name="org.freedesktop.UPower">
    <method name="EnumerateDevices"><arg type="ao" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.DBus.Properties">
    <method name="GetAll">
      <arg type="s" direction="in"/><arg type="a{sv}" direction="out"/>
    </method>
  </interface>
</node>)";

std::string pathOf(const std::string& device) {
  return std::string(kUPower) + "/devices/" + device;
}

GVariantPtr parsed(const std::string& text) {
  GError* rawError = nullptr;
  GVariant* variant = g_variant_parse(nullptr, text.c_str(), nullptr, nullptr, &rawError);
  const GErrorPtr error(rawError);
  if (!variant) throw std::runtime_error(text + ": " + error->message);
  return GVariantPtr(variant);
}

GVariantPtr merged(GVariant* base, GVariant* changes) {
  GVariantDict dictionary;
  g_variant_dict_init(&dictionary, base);
  GVariantIter iterator;
  g_variant_iter_init(&iterator, changes);
  const char* key = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_loop(&iterator, "{&sv}", &key, &value))
    g_variant_dict_insert_value(&dictionary, key, value);
  return sinkVariant(g_variant_dict_end(&dictionary));
}

}  // namespace

FakeUPower::FakeUPower(const PrivateBus& bus)
    : connection_(bus.connectStranger()),
      interfaces_(g_dbus_node_info_new_for_xml(kInterfaces, nullptr)) {
  static const GDBusInterfaceVTable kTable{&FakeUPower::answer, nullptr, nullptr, {}};
  daemon_ = g_dbus_connection_register_object(
      connection_.get(), kUPower, interfaces_->interfaces[0], &kTable, this, nullptr, nullptr);
  set("DisplayDevice", "@a{sv} {}");
  const GVariantPtr reply(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "RequestName", g_variant_new("(su)", "org.freedesktop.UPower", 0u), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

FakeUPower::~FakeUPower() {
  // Calls that have come are not answered any more.
  g_dbus_connection_unregister_object(connection_.get(), daemon_);
  for (const auto& [name, device] : devices_)
    g_dbus_connection_unregister_object(connection_.get(), device.registration);
  g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void FakeUPower::set(const std::string& device, const std::string& properties) {
  static const GDBusInterfaceVTable kTable{&FakeUPower::answer, nullptr, nullptr, {}};
  Device& entry = devices_[device];
  entry.properties = parsed(properties);
  if (entry.registration) return;
  entry.registration = g_dbus_connection_register_object(connection_.get(), pathOf(device).c_str(),
                                                         interfaces_->interfaces[1], &kTable, this,
                                                         nullptr, nullptr);
}

void FakeUPower::announce(const std::string& device) {
  emit(kUPower, "org.freedesktop.UPower", "DeviceAdded", "(objectpath '" + pathOf(device) + "',)");
}

void FakeUPower::remove(const std::string& device) {
  g_dbus_connection_unregister_object(connection_.get(), devices_.at(device).registration);
  devices_.erase(device);
  emit(kUPower, "org.freedesktop.UPower", "DeviceRemoved",
       "(objectpath '" + pathOf(device) + "',)");
}

void FakeUPower::change(const std::string& device, const std::string& properties) {
  Device& entry = devices_.at(device);
  entry.properties = merged(entry.properties.get(), parsed(properties).get());
  emit(pathOf(device), "org.freedesktop.DBus.Properties", "PropertiesChanged",
       "('org.freedesktop.UPower.Device', " + properties + ", @as [])");
}

void FakeUPower::emit(const std::string& path, const std::string& interface,
                      const std::string& member, const std::string& parameters) {
  g_dbus_connection_emit_signal(connection_.get(), nullptr, path.c_str(), interface.c_str(),
                                member.c_str(), parsed(parameters).get(), nullptr);
}

int FakeUPower::getAllCount(const std::string& device) const {
  const auto found = getAllCounts_.find(device);
  return found == getAllCounts_.end() ? 0 : found->second;
}

void FakeUPower::answer(GDBusConnection*, const gchar*, const gchar* path, const gchar*,
                        const gchar* method, GVariant*, GDBusMethodInvocation* invocation,
                        gpointer data) {
  auto& self = *static_cast<FakeUPower*>(data);
  if (std::string(method) == "EnumerateDevices") {
    GVariantBuilder paths;
    g_variant_builder_init(&paths, G_VARIANT_TYPE("ao"));
    for (const auto& [name, device] : self.devices_)
      if (name != "DisplayDevice") g_variant_builder_add(&paths, "o", pathOf(name).c_str());
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(ao)", &paths));
    return;
  }
  const std::string name = std::filesystem::path(path).filename();
  ++self.getAllCounts_[name];
  g_dbus_method_invocation_return_value(
      invocation, g_variant_new("(@a{sv})", self.devices_.at(name).properties.get()));
}

FakeLogin::FakeLogin(const PrivateBus& bus) : connection_(bus.connectStranger()) {
  const GVariantPtr owned(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "RequestName", g_variant_new("(su)", "org.freedesktop.login1", 0u), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

void FakeLogin::prepareForSleep(GVariant* parameters) {
  g_dbus_connection_emit_signal(connection_.get(), nullptr, "/org/freedesktop/login1",
                                "org.freedesktop.login1.Manager", "PrepareForSleep", parameters,
                                nullptr);
}

}  // namespace kelvane
