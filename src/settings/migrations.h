// Bringing the settings that older versions wrote into the present form. Main thread, at start-up,
// before any setting is read for display.
#pragma once

#include "settings/settings_keys.h"

namespace kelvane {

// Runs what has not run yet on these preferences, the change of format before the split of the one
// list of levels into two. No observer of the store is told. Never removes a key.
void migrate(Preferences& preferences, const SettingsKeys& keys);

}  // namespace kelvane
