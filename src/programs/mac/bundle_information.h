// What the application's bundle says of it. Any thread.
#pragma once

#include "platform/application_information.h"

namespace kelvane {

// A text is empty where the bundle has none.
ApplicationInformation bundleInformation();

}  // namespace kelvane
