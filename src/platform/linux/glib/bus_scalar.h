// Properties with a single plain value, which is all that batteries and power profiles have: taken
// straight from a message, without a variant of GLib for each. Main thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include <glib.h>

struct sd_bus_message;

namespace kelvane {

// Of the D-Bus types b, u, x, d and s; of any other type it is the first, which is no value. Texts
// are valid as long as what they were read from.
using BusScalar =
    std::variant<std::monostate, bool, std::uint32_t, std::int64_t, double, std::string_view>;

// By name, in the order of the sender; a name may be there twice.
using ScalarProperty = std::pair<std::string_view, BusScalar>;
using ScalarProperties = std::vector<ScalarProperty>;

BusScalar scalarOf(GVariant* value);
// Of an a{sv}.
ScalarProperties scalarsOf(GVariant* properties);

// Reads the a{sv} that is next in the message; absent when there is none.
std::optional<ScalarProperties> readScalars(sd_bus_message* message);

}  // namespace kelvane
