// Formats that belong to the user's language. Main thread.
#pragma once

#include <optional>
#include <string>

#include "platform/property_value.h"

namespace kelvane {

class TextFormats {
 public:
  virtual ~TextFormats() = default;

  // Hours and minutes of a duration in seconds, abbreviated ("2h 5m"); absent when it can't be
  // formatted (not finite, negative).
  virtual std::optional<std::string> abbreviatedDuration(double seconds) = 0;

  // The time of day in the user's time zone, short ("14:05", "2:05 PM").
  virtual std::string shortTime(Date date) = 0;

  // A ratio as a percentage ("87%"); absent when it can't be formatted (infinite, not a number).
  virtual std::optional<std::string> percent(double ratio) = 0;

  // An amount of stored information, in the decimal unit that suits it ("8.4 MB").
  virtual std::string informationStorage(double bytes) = 0;
};

}  // namespace kelvane
