// Upgrading settings that an older version of the store wrote as JSON text. Any thread.
#pragma once

#include "store/bridge.h"
#include "store/setting_key.h"

namespace kelvane {

// Replaces the stored JSON text by the value in its present form. Anything but a string, and text
// that can't be decoded, stays as it is.
template <typename V>
void upgradeFormat(const SettingKey<V>& key) {
  const auto object = key.suite().object(key.name());
  const auto text = object ? object->string() : std::nullopt;
  if (!text) return;
  if (const auto value = decodeJson<V>(*text)) key.set(*value);
}

}  // namespace kelvane
