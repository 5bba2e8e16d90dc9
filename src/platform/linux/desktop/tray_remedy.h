// How the user of a desktop without a tray gets one. Pure functions, any thread, but for those that
// ask the computer: main thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

// What an os-release file calls the distribution, its own name first, then those it is made from.
std::vector<std::string> distributionNames(std::string_view osRelease);

// That of this computer.
std::vector<std::string> currentDistributionNames();

// What to do, in whole sentences, on the first of the desktops that is known (see DesktopSession);
// for none of them what helps anywhere.
std::string trayRemedy(const std::vector<std::string>& desktops,
                       const std::vector<std::string>& distributions);

// That for this session on this computer.
std::string trayRemedyHere();

}  // namespace kelvane
