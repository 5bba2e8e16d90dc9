// `TextFormats` in English, for systems without formatters of their own. Main thread.
//
// Needs no locale of the C library: what depends on the user comes in as `ClockStyle`.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "platform/text_formats.h"

namespace kelvane {

// How the user's clock is read and written.
struct ClockStyle {
  bool use12Hour = false;  // "2:05 PM" in place of "14:05"
  // Seconds to add to universal time at that moment (seconds since 1970, UTC) for the time of day
  // in the user's zone; empty means universal time itself.
  std::function<std::int64_t(std::int64_t secondsSinceEpoch)> utcOffset;
};

class PortableTextFormats : public TextFormats {
 public:
  explicit PortableTextFormats(ClockStyle clock) : clock_(std::move(clock)) {}

  // Whole minutes, what is left over dropped: "2h 5m", "45m", "3h", and "0m" below a minute. Absent
  // also beyond 10^15 seconds, where minutes no longer count.
  std::optional<std::string> abbreviatedDuration(double seconds) override;

  std::string shortTime(Date date) override;

  // Rounded half to even to a whole percentage, thousands grouped by commas ("1,234%").
  std::optional<std::string> percent(double ratio) override;

  // One decimal below 100 of a unit, none from there on: "512 B", "8.4 MB", "134 MB". An amount
  // that is no number or negative counts as 0.
  std::string informationStorage(double bytes) override;

 private:
  ClockStyle clock_;
};

}  // namespace kelvane
