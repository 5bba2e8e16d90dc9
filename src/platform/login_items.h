// What the desktop starts when the user logs in. Main thread; every call reads afresh.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/property_value.h"

namespace kelvane {

class LoginItems {
 public:
  virtual ~LoginItems() = default;

  // One dictionary per job: "Label" (string) and "OnDemand" (boolean; missing when the job does not
  // say). Absent when the list can't be had.
  virtual std::optional<std::vector<PropertyDictionary>> jobs() = 0;

  // Registers or removes the job of this label. False when the platform refused.
  virtual bool setEnabled(const std::string& label, bool enabled) = 0;
};

}  // namespace kelvane
