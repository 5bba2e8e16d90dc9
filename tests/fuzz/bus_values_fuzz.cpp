// Values that other programs on the bus send: of UPower's types, of the desktop's settings, and of
// any other type.
#include <cmath>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>
#include <glib.h>

#include "platform/linux/glib/glib_ptr.h"
#include "platform/linux/power/power_rules.h"
#include "platform/linux/power/upower_properties.h"
#include "platform/linux/tray/desktop_facts.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

namespace {

constexpr const char* kTypes[] = {
    "a{sv}", "v", "u", "s", "(ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})a{sv})", "ai"};

// As a message from the bus is: of the type that its signature tells, in normal form.
GVariantPtr valueFrom(const std::string& type, const std::string& bytes) {
  // GVariant reads numbers where they lie, so they must lie as in a message.
  void* aligned = g_memdup2(bytes.data(), bytes.size());
  const GVariantPtr raw = sinkVariant(g_variant_new_from_data(
      G_VARIANT_TYPE(type.c_str()), aligned, bytes.size(), FALSE, g_free, aligned));
  return GVariantPtr(g_variant_get_normal_form(raw.get()));
}

// The same as people write it, which gets further than bytes.
GVariantPtr valueOf(const std::string& type, const std::string& text) {
  if (!g_utf8_validate_len(text.data(), text.size(), nullptr)) return nullptr;
  return GVariantPtr(
      g_variant_parse(G_VARIANT_TYPE(type.c_str()), text.c_str(), nullptr, nullptr, nullptr));
}

bool isPlausible(const std::optional<double>& value) {
  return !value || (std::isfinite(*value) && *value >= 0);
}

void checkDevice(GVariant* value) {
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_VARDICT)) return;
  UPowerSnapshot upower;
  applyProperties(upower.display, scalarsOf(value));
  upower.devices.push_back(upower.display);
  for (const auto& figure :
       {upower.display.energy, upower.display.energyFull, upower.display.percentage,
        upower.display.secondsToEmpty, upower.display.secondsToFull})
    require(isPlausible(figure), "a figure is a plausible number or absent");
  for (const PropertyDictionary& description : powerReadings({}, &upower).descriptions) {
    const auto level = description.find("Current Capacity");
    if (level == description.end()) continue;
    const auto percent = level->second.number();
    require(percent && *percent >= 0 && *percent <= 100, "a level is between 0 and 100");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  const std::string type = input.PickValueInArray(kTypes);
  const bool isText = input.ConsumeBool();
  const std::string bytes = input.ConsumeRemainingBytesAsString();
  const GVariantPtr value = isText ? valueOf(type, bytes) : valueFrom(type, bytes);
  if (!value) return 0;

  checkDevice(value.get());
  const SettingsTable table = settingsTableOf(value.get());
  appearanceOfXfcePanel(table, table);
  require(scaleOfXfce(table) > 0, "a scale is more than nothing");
  wantsReducedMotion(table, table, table);
  appearanceOfColorScheme(value.get());
  darkWindowsOfColorScheme(value.get());
  for (const auto& scale : {scaleOfMutter(value.get()), scaleOfKScreen(value.get())})
    require(!scale || (std::isfinite(*scale) && *scale > 0), "a scale is more than nothing");
  return 0;
}
