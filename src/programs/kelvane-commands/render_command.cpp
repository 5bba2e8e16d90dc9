#include "programs/kelvane-commands/render_command.h"

#include <memory>
#include <ostream>

#include "platform/linux/drawing/png_file.h"
#include "platform/linux/preferences/plist_preferences.h"
#include "platform/memory/memory_preferences.h"
#include "programs/kelvane-commands/power_reading.h"
#include "programs/kelvane-commands/settings_command.h"

namespace kelvane {
namespace {

// The stored settings, or the defaults for a stated battery; what the command line sets besides
// stays in memory.
MemoryPreferences preferencesFor(const RenderOptions& options) {
  if (options.battery) return MemoryPreferences();
  return MemoryPreferences(PlistPreferences().stored());
}

Bitmap sketch(const RenderOptions& options, Preferences& preferences, FontFaces& fonts) {
  if (options.battery) {
    MemoryDeviceRegistry registry;
    MemoryPowerSources powerSources;
    options.battery->apply(registry, powerSources);
    return sketchItem(registry, powerSources, preferences, fonts, options.place);
  }
  PowerReading power(options.power);
  return sketchItem(power.registry, power.powerSources, preferences, fonts, options.place);
}

}  // namespace

int runRenderCommand(const RenderOptions& options, std::ostream& errors) {
  MemoryPreferences preferences = preferencesFor(options);
  for (const auto& [key, value] : options.settings) {
    std::ostream silent(nullptr);
    if (const int failure = runSettingsCommand({"set", key, value}, preferences, silent, errors))
      return failure;
  }
  FontFaces fonts(options.fontFamily);
  if (const auto failure = writePng(sketch(options, preferences, fonts), options.out)) {
    errors << "kelvane: " << *failure << "\n";
    return 1;
  }
  return 0;
}

}  // namespace kelvane
