#include "leftovers.h"

#include <map>

#include "doubles.h"
#include "runtime/abi.h"

namespace kelvane::doubles {
namespace {

std::map<std::string, int> before;
void* pool;

}  // namespace

std::vector<std::function<void()>>& atEnd() {
  static auto* const all = new std::vector<std::function<void()>>;
  return *all;
}

void begin() {
  before = objc::livingObjects();
  pool = objc_autoreleasePoolPush();
}

std::vector<std::string> end() {
  std::vector<std::string> found;
  const auto check = [&](const char* what, int count) {
    if (count != 0) found.push_back(std::string(what) + ": " + std::to_string(count));
  };
  objc_autoreleasePoolPop(pool);
  check("observations", observations());
  check("timers", timersRunning());
  check("sources", powerListeners());
  for (const auto& forget : atEnd()) forget();
  for (const auto& [name, count] : objc::livingObjects()) check(name.c_str(), count - before[name]);
  return found;
}

}  // namespace kelvane::doubles
