// The application's named pictures, as outlines. Any thread; the pictures live as long as the
// process.
#pragma once

#include <string_view>

#include "menubar/path_builder.h"
#include "platform/geometry.h"
#include "platform/picture.h"

namespace kelvane {

// "BatteryIcon": the body of the battery, its terminal in the rightmost two points.
// "BatteryChargingIcon": the same body, with a bolt in extra width on its left.
// "PowerIcon": a plug, for full on power.
// "LowBatteryIcon": the coloured icon of the low-battery alert.
// Any other name is a fatal error.
const Picture& namedPicture(std::string_view name);

// A bolt that fills `rect`.
PathBuilder boltOutline(const Rect& rect);

}  // namespace kelvane
