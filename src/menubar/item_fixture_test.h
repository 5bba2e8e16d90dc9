// A battery, the settings and drawing on the in-memory computer, for the tests of the item.
#pragma once

#include <gtest/gtest.h>

#include "battery/battery.h"
#include "menubar/item_context.h"
#include "platform/memory/memory_graphics.h"
#include "platform/memory/memory_power.h"
#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "settings/settings_keys.h"

namespace kelvane {

class ItemTest : public ::testing::Test {
 protected:
  void set(const MemoryBattery& state) { state.apply(registry, powerSources); }

  MemoryDeviceRegistry registry;
  MemoryPowerSources powerSources;
  MemoryRunLoop loop;
  MemoryPreferences preferences;
  MemoryGraphics graphics;
  SettingsKeys settings{preferences};
  Battery battery{registry, powerSources, loop};
  ItemContext context{battery, settings, graphics};
};

}  // namespace kelvane
