// Questions to a bus and to the services on it, each answered before it returns. No service is
// started by a question, and one that hangs takes a second at most. Main thread, which runs GLib's
// main loop meanwhile.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/glib_ptr.h"
#include "programs/kelvane-commands/doctor/facts.h"

namespace kelvane {

// Runs the main loop until `condition` or for a second; whether it came.
bool waitASecond(const std::function<bool()>& condition);

class BusProbe {
 public:
  // Joins the bus, and starts none. What goes wrong is in `problem`.
  explicit BusProbe(BusKind kind);

  // Why the bus can't be asked; empty when it can.
  const std::string& problem() const { return problem_; }
  BusConnection* connection() const { return connection_.get(); }

  Presence presence(const std::string& name);
  // Absent for what is not on this computer, or has gone.
  std::optional<std::uint32_t> processOf(const std::string& name);

  // The questions from here on share one second.
  void turnTo(BusCalls::Target service);
  // The reply, of type `replyType`; null when there is none in time.
  GVariantPtr call(const char* method, GVariant* arguments, const char* replyType);
  GVariantPtr callAt(const std::string& path, const char* interface, const char* method,
                     GVariant* arguments, const char* replyType);
  // The value of a property, null when there is none in time.
  GVariantPtr property(const char* name);

 private:
  GVariantPtr callBus(const char* method, GVariant* arguments, const char* replyType);

  BusPtr connection_;
  std::string problem_;
  BusCalls::Target service_;
  std::int64_t deadline_ = 0;  // of the monotonic clock, in microseconds
};

// The texts of an `as`.
std::vector<std::string> textsOf(GVariant* array);

}  // namespace kelvane
