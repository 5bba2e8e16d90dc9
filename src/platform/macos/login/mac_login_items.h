// Login items by the user's launchd jobs. Main thread; every call reads afresh.
//
// A label is the bundle identifier of a helper application in Contents/Library/LoginItems of this
// one; what is not there is refused.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/login_items.h"

namespace kelvane {

class MacLoginItems : public LoginItems {
 public:
  std::optional<std::vector<PropertyDictionary>> jobs() override;
  bool setEnabled(const std::string& label, bool enabled) override;
};

}  // namespace kelvane
