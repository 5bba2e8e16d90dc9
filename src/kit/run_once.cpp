#include "kit/run_once.h"

namespace kelvane {

bool runOnce(Preferences& preferences, const std::string& identifier) {
  const std::string key = "Tq_App_runOnce__" + identifier;
  const auto mark = preferences.object(key);
  if (mark && mark->boolean().value_or(false)) return false;
  preferences.setObject(key, true);
  preferences.synchronize();
  return true;
}

}  // namespace kelvane
