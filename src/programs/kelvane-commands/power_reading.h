// The battery for a command that reads it once and ends. Main thread.
#pragma once

#include "platform/linux/glib/glib_run_loop.h"
#include "platform/linux/power/linux_power_sources.h"
#include "platform/linux/power/sysfs_device_registry.h"

namespace kelvane {

struct PowerReading {
  // Waits until it is settled whether UPower serves; see `LinuxPowerSources::whenSettled`.
  explicit PowerReading(const PowerOptions& options)
      : registry(options.directory), powerSources(loop, options) {
    powerSources.whenSettled([this] { loop.terminate(0); });
    loop.run();
  }

  GlibRunLoop loop;
  SysfsDeviceRegistry registry;
  LinuxPowerSources powerSources;
};

}  // namespace kelvane
