// Tells when the kernel's power supplies may have changed, for computers without UPower: on the
// kernel's uevents, soon after each (the files of a slow embedded controller lag behind its event),
// and every 30 seconds, because many drivers send no event for a falling level. Main thread.
//
// A tree of ordinary files in place of the kernel's is watched by inotify, which sysfs does not
// serve.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/run_loop.h"

struct udev;
struct udev_monitor;

namespace kelvane {

class SupplyWatch {
 public:
  // `look` is told to read again; often nothing has changed. When the kernel's events can't be had,
  // as in some containers, that is said once on standard error and the timer serves alone.
  SupplyWatch(RunLoop& loop, std::string directory, std::function<void()> look);
  ~SupplyWatch();
  SupplyWatch(const SupplyWatch&) = delete;
  SupplyWatch& operator=(const SupplyWatch&) = delete;

 private:
  bool watchKernel();
  void kernelSpoke();
  void watchFiles();
  void filesChanged();

  RunLoop& loop_;
  std::string directory_;
  std::function<void()> look_;
  std::unique_ptr<Timer> everyHalfMinute_;
  std::vector<std::unique_ptr<Timer>> soon_;

  udev* udev_ = nullptr;
  udev_monitor* monitor_ = nullptr;
  int inotify_ = -1;
  unsigned kernelSource_ = 0;  // GLib's source ids; 0 is none
  unsigned fileSource_ = 0;
};

}  // namespace kelvane
