// The kernel's power supplies, read at most once in a turn of the main loop: one change of the
// battery is asked for more than a dozen figures, and some drivers ask the hardware for each file.
// Whoever shares one sees the same. Main thread.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/power/supply_reader.h"

namespace kelvane {

class TurnSupplies {
 public:
  explicit TurnSupplies(std::string directory) : reader_(std::move(directory)) {}

  // At least these fields, as they are in this turn; outside the main loop, as they are now. Valid
  // until the next call.
  const std::vector<Supply>& read(SupplyFields fields);
  // All fields as they are now, for the rest of the turn too.
  const std::vector<Supply>& readAfresh();
  // Something has changed: the next call reads, whatever the turn.
  void forget() { turn_ = 0; }

 private:
  SupplyReader reader_;
  std::int64_t turn_ = 0;  // 0: outside the main loop
  SupplyFields fields_ = SupplyFields::state;
  std::vector<Supply> supplies_;
};

}  // namespace kelvane
