// What happens in the demo: a battery's day in a few steps. Constants, any thread.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/memory/memory_power.h"

namespace kelvane {

struct DemoStep {
  std::string name;     // of the step's pictures
  std::string caption;  // what happens, for the reader
  MemoryBattery battery;
  // Settings to change before, as key and JSON value.
  std::vector<std::pair<std::string, std::string>> settings;
};

// From unplugged at full down to the last warning and back to full. Names are unique.
const std::vector<DemoStep>& demoScript();

}  // namespace kelvane
