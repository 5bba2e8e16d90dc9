// The utility kit's central object. Making it is the kit's start-up: the launch is counted, once
// for a process. Main thread; made once, by the application, over preferences that outlive it.
#pragma once

#include "kit/kit_keys.h"
#include "platform/preferences.h"
#include "platform/run_loop.h"

namespace kelvane {

class TqKit {
 public:
  // Dates the first launch, registers the kit's default and adds one to the launches; a count that
  // can't grow any more is a fatal error.
  TqKit(Preferences& preferences, const RunLoop& runLoop);
  TqKit(const TqKit&) = delete;
  TqKit& operator=(const TqKit&) = delete;

  const KitKeys& keys() const { return keys_; }

  // Whether this is the first launch ever, by the count; never while "__hasLaunched__" is true.
  bool isFirstLaunch() const { return isFirstLaunch_; }

 private:
  const KitKeys keys_;
  bool isFirstLaunch_ = false;
};

}  // namespace kelvane
