// Answers "get battery details" from the battery, always with success: every reading has a
// fallback.
#pragma once

#include <functional>
#include <memory>

#include "intents/get_battery_details_intent.h"
#include "platform/run_loop.h"

namespace kelvane {

class Battery;

class GetBatteryDetailsIntentHandler : public GetBatteryDetailsIntentHandling {
 public:
  // `battery` answers the application's one battery, asked on the main thread only. Loop and
  // battery outlive what is asked; an answer that is due when the loop has ended is not given.
  GetBatteryDetailsIntentHandler(RunLoop& runLoop, std::function<const Battery&()> battery);

  // The battery is read, and `completion` called, on the main queue.
  void handleGetBatteryDetails(const GetBatteryDetailsIntent& intent,
                               Completion completion) override;

 private:
  RunLoop& runLoop_;
  std::function<const Battery&()> battery_;
};

// A new handler for a `GetBatteryDetailsIntent`, null for any other intent. Any thread.
std::unique_ptr<GetBatteryDetailsIntentHandling> makeHandlerFor(
    const Intent& intent, RunLoop& runLoop, std::function<const Battery&()> battery);

}  // namespace kelvane
