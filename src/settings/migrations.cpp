#include "settings/migrations.h"

#include "kit/run_once.h"
#include "store/format_upgrade.h"
#include "store/propagation.h"

namespace kelvane {
namespace {

// Levels were JSON text once.
void migrateDefaultsToV5(const SettingsKeys& keys) {
  withoutPropagation([&] {
    upgradeFormat(keys.notifyAtPercentagesOnPower);
    upgradeFormat(keys.notifyAtPercentagesOnBattery);
    upgradeFormat(keys.notifyAtPercentages);
  });
}

// One list served both power states once. It stays in the store.
void migrateNotifyAtPercentagesSetting(const SettingsKeys& keys) {
  withoutPropagation([&] {
    keys.notifyAtPercentagesOnBattery.set(keys.notifyAtPercentages.get());
    keys.notifyAtPercentagesOnPower.set(keys.notifyAtPercentages.get());
  });
}

}  // namespace

void migrate(Preferences& preferences, const SettingsKeys& keys) {
  if (runOnce(preferences, "migrateDefaultsToV5")) migrateDefaultsToV5(keys);
  if (runOnce(preferences, "migrateNotifyAtPercentagesSetting"))
    migrateNotifyAtPercentagesSetting(keys);
}

}  // namespace kelvane
