#include "platform/memory/memory_preferences.h"

#include <utility>

namespace kelvane {

bool MemoryPreferences::synchronize() {
  if (failsToSynchronize) return false;
  written_ = stored();
  return true;
}

void MemoryPreferences::changeElsewhere(const std::string& key,
                                        std::optional<PropertyValue> value) {
  written_.erase(key);
  if (value) written_.emplace(key, *value);
  changedElsewhere(key, std::move(value));
}

}  // namespace kelvane
