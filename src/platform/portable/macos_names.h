// How versions of macOS name themselves and their settings. Pure functions, any thread.
#pragma once

#include <string>

#include "platform/system_info.h"

namespace kelvane {

// "macOS 11.7.10"; a patch number of 0 is left out.
inline std::string macOSDescription(const SystemVersion& version) {
  std::string text = "macOS " + std::to_string(version.major) + "." + std::to_string(version.minor);
  if (version.patch != 0) text += "." + std::to_string(version.patch);
  return text;
}

// The file of the preference pane; before macOS 11 it is about energy in general.
inline std::string batteryPreferencePane(const SystemVersion& version) {
  const std::string name = version.major >= 11 ? "Battery" : "EnergySaver";
  return "/System/Library/PreferencePanes/" + name + ".prefPane";
}

}  // namespace kelvane
