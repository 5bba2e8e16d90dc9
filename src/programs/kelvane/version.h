// What this build is. Any thread.
#pragma once

#include "platform/application_information.h"

namespace kelvane {

ApplicationInformation builtInformation();

}  // namespace kelvane
