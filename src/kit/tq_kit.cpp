#include "kit/tq_kit.h"

#include <limits>

#include "kit/fatal_error.h"

namespace kelvane {

TqKit::TqKit(Preferences& preferences, const RunLoop& runLoop) : keys_(preferences) {
  if (!keys_.firstLaunchDate.get()) keys_.firstLaunchDate.set(runLoop.now());
  // The platform then ends the process on an exception that nobody catches.
  preferences.registerDefaults({{"NSApplicationCrashOnExceptions", true}});
  const std::int64_t before = keys_.launchCount.get();
  if (before == std::numeric_limits<std::int64_t>::max()) fatalError("too many launches to count");
  keys_.launchCount.set(before + 1);

  isFirstLaunch_ = before == 0 && !keys_.hasLaunched.get();
}

}  // namespace kelvane
