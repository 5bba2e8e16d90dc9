// Marks for what happens once in the life of the preferences. Main thread.
#pragma once

#include <string>

#include "platform/preferences.h"

namespace kelvane {

// True exactly the first time it is asked for this identifier. The mark has been written when it
// answers, so that a crash in the guarded work does not make that run again. A mark that could not
// reach the disk is kept in memory and tried again at the next write.
bool runOnce(Preferences& preferences, const std::string& identifier);

}  // namespace kelvane
