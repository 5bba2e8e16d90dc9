// The texts of the item and the states they depend on. Main thread; read afresh at each call.
#pragma once

#include <string>

#include "menubar/item_context.h"
#include "platform/color.h"
#include "platform/text.h"

namespace kelvane {

struct NamedColor;

// The small percent sign U+FE6A, which the item uses throughout.
inline constexpr const char* kPercentSign = "\uFE6A";

// Plugged in and not yet full. It decides between the two bodies, not the registry's "IsCharging".
bool showsChargingIcon(const ItemContext& context);
bool isFullyChargedOnPower(const ItemContext& context);

// The colour of the whole item while the system warns of a low battery; null for the bar's own.
// Only on battery, and an adapter state that can't be read gives none.
const NamedColor* lowBatteryColor(const ItemContext& context);

// The level as a whole percentage with the small percent sign.
std::string percentageText(const ItemContext& context);
// "∞" when full on power, else the battery's time text.
std::string timeOrFullText(const ItemContext& context);
// The text of the item: the level or the time, as the settings want it.
std::string plainItemText(const ItemContext& context);
// The title in text mode: that text, with a bolt before it on power.
std::string itemText(const ItemContext& context);

// The level without its sign where the settings do not want it.
std::string withoutUnwantedSign(const ItemContext& context, std::string text);

// The title in text mode with its colour and size.
AttributedText makeTitle(const ItemContext& context, Appearance appearance);
// The length of the item for a title, in points.
double textItemLength(const ItemContext& context, const AttributedText& title);

}  // namespace kelvane
