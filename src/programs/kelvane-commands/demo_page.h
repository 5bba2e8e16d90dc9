// The demo's pictures and the page that shows them. Main thread.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/device_registry.h"
#include "platform/linux/drawing/bitmap.h"
#include "platform/power_sources.h"
#include "platform/preferences.h"
#include "programs/kelvane-commands/demo_script.h"

namespace kelvane {

class DemoPage {
 public:
  // `folder` exists.
  DemoPage(std::filesystem::path folder, FontFaces& fonts)
      : folder_(std::move(folder)), fonts_(fonts) {}

  // Draws the item as it is now in both shapes and on both bars, two pixels to the point. Absent on
  // success, else why a file could not be written.
  std::optional<std::string> addStep(const DemoStep& step, DeviceRegistry& registry,
                                     PowerSources& powerSources, Preferences& preferences);
  // Writes index.html over all steps so far.
  std::optional<std::string> writeIndex() const;

 private:
  std::filesystem::path folder_;
  FontFaces& fonts_;
  std::string rows_;
};

// A bitmap as lines of half-block characters, two rows of pixels to a line, empty rows left out.
std::string drawnInTerminal(const Bitmap& bitmap);

}  // namespace kelvane
