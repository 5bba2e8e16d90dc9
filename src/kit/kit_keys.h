// The preferences that the kit keeps for itself. Any thread; the preferences outlive the keys.
#pragma once

#include <cstdint>
#include <optional>

#include "store/setting_key.h"

namespace kelvane {

struct KitKeys {
  explicit KitKeys(Preferences& preferences)
      : firstLaunchDate("Tq_firstLaunchDate", std::nullopt, preferences),
        launchCount("Tq_launchCount", 0, preferences),
        hasLaunched("__hasLaunched__", false, preferences),
        statusItemPreviousPosition("Tq_StatusItem-0_PreviousPosition", std::nullopt, preferences) {}

  // Written once, at the very first launch.
  const SettingKey<std::optional<Date>> firstLaunchDate;
  const SettingKey<std::int64_t> launchCount;
  // Read only: true keeps a launch from counting as the first.
  const SettingKey<bool> hasLaunched;
  // The item's place in the menu bar while it is hidden, in the platform's own measure.
  const SettingKey<std::optional<double>> statusItemPreviousPosition;
};

}  // namespace kelvane
