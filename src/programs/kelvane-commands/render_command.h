// The command `kelvane render`: the item as a PNG file. Main thread.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/power/linux_power_sources.h"
#include "platform/memory/memory_power.h"
#include "platform/preferences.h"
#include "programs/kelvane-commands/item_sketch.h"

namespace kelvane {

struct RenderOptions {
  std::string out;
  std::string fontFamily;  // empty: the system's
  SketchPlace place;
  PowerOptions power;                    // where the battery is read, unless it is stated
  std::optional<MemoryBattery> battery;  // stated; the settings are then the defaults
  // Settings to use in place of what is stored, as key and JSON value.
  std::vector<std::pair<std::string, std::string>> settings;
};

// Answers the exit code: 0; 1 when the picture could not be written; 2 for an unknown key or a bad
// value. Errors are one line on `errors`.
int runRenderCommand(const RenderOptions& options, std::ostream& errors);

}  // namespace kelvane
