// The actions of automation, for other programs on the session bus; `intent_messages.h` has their
// form. Main thread.
#pragma once

#include <functional>
#include <memory>

#include <glib.h>

#include "intents/get_battery_details_intent.h"
#include "platform/linux/glib/exported_object.h"

namespace kelvane {

class IntentService {
 public:
  // A new handler for the intent; null while there is no application that could answer.
  using MakeHandler = std::function<std::unique_ptr<GetBatteryDetailsIntentHandling>(
      const GetBatteryDetailsIntent& intent)>;

  // Answers calls from here on, on the application's object; `bus` outlives this.
  IntentService(BusConnection* bus, MakeHandler makeHandler);
  IntentService(const IntentService&) = delete;
  IntentService& operator=(const IntentService&) = delete;

 private:
  void handle(const ExportedObject::Call& call) const;

  MakeHandler makeHandler_;
  std::unique_ptr<ExportedObject> object_;
};

}  // namespace kelvane
