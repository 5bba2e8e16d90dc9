// The item as a picture, without any tray: what `render` writes and `demo` shows. Main thread.
#pragma once

#include "platform/device_registry.h"
#include "platform/linux/drawing/bitmap.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/memory/memory_status_bar.h"
#include "platform/power_sources.h"
#include "platform/preferences.h"

namespace kelvane {

// What a bar would show for the item of an in-memory status bar, in the item's slot.
Bitmap sketchOf(FontFaces& fonts, const MemoryStatusItemState& item);

struct SketchPlace {
  Slot slot;
  Appearance bar = Appearance::light;
};

// The item for a battery and the settings as they are now.
Bitmap sketchItem(DeviceRegistry& registry, PowerSources& powerSources, Preferences& preferences,
                  FontFaces& fonts, const SketchPlace& place);

}  // namespace kelvane
