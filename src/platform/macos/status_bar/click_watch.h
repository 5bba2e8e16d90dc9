// The user's clicks on a view, told besides what they do there. Main thread.
#pragma once

#include <functional>
#include <memory>

#import <AppKit/AppKit.h>

#include "platform/status_bar.h"

namespace kelvane {

// Until the observation is destroyed, which the callback may do.
[[nodiscard]] std::unique_ptr<StatusItemObservation> observeClicks(NSView* view,
                                                                   std::function<void()> callback);

}  // namespace kelvane
