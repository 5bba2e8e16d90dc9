// What a test may not leave behind. Called before and after each one.
#pragma once

#include <string>
#include <vector>

namespace kelvane::doubles {

void begin();
// What is still there: objects, observations, timers, sources.
std::vector<std::string> end();

}  // namespace kelvane::doubles
