#include "menubar/colors.h"

#include <array>
#include <string>

#include "kit/fatal_error.h"

namespace kelvane {
namespace {

constexpr Color rgb(unsigned hex) {
  return {((hex >> 16U) & 0xFFU) / 255.0, ((hex >> 8U) & 0xFFU) / 255.0, (hex & 0xFFU) / 255.0, 1};
}

constexpr std::array kColors{
    NamedColor{"EarlyLowBattery", rgb(0xA85B00), rgb(0xFFB43C)},
    NamedColor{"FinalLowBattery", rgb(0xC8102E), rgb(0xFF5C55)},
};

}  // namespace

const NamedColor& namedColor(std::string_view name) {
  for (const NamedColor& color : kColors)
    if (color.name == name) return color;
  fatalError("no colour is named " + std::string(name));
}

}  // namespace kelvane
