// Which program shows the power settings of a desktop. Pure function.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/desktop/desktop_session.h"

namespace kelvane {

// The command line of the first program that is installed: those of the running desktop before all
// others. Empty when there is none.
std::vector<std::string> powerSettingsCommand(const DesktopSession& session);

}  // namespace kelvane
