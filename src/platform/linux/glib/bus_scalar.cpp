#include "platform/linux/glib/bus_scalar.h"

#include <cstring>
#include <type_traits>

#include <systemd/sd-bus.h>

namespace kelvane {
namespace {

template <typename T>
bool readBasic(sd_bus_message* message, char type, BusScalar& scalar) {
  T value{};
  if (sd_bus_message_read_basic(message, type, &value) < 0) return false;
  if constexpr (std::is_same_v<T, int>)
    scalar = value != 0;
  else
    scalar = value;
  return true;
}

// Reads the variant that is next.
bool readVariant(sd_bus_message* message, BusScalar& scalar) {
  char kind = 0;
  const char* type = nullptr;
  if (sd_bus_message_peek_type(message, &kind, &type) <= 0 || kind != 'v') return false;
  const bool isBasic = type[0] != '\0' && type[1] == '\0' && std::strchr("buxds", type[0]);
  if (!isBasic) return sd_bus_message_skip(message, "v") >= 0;
  const char basic = type[0];
  const auto read = [&] {
    switch (basic) {
      case 'b':
        return readBasic<int>(message, basic, scalar);
      case 'u':
        return readBasic<std::uint32_t>(message, basic, scalar);
      case 'x':
        return readBasic<std::int64_t>(message, basic, scalar);
      case 'd':
        return readBasic<double>(message, basic, scalar);
      default:
        return readBasic<const char*>(message, basic, scalar);
    }
  };
  return sd_bus_message_enter_container(message, 'v', type) > 0 && read() &&
         sd_bus_message_exit_container(message) >= 0;
}

}  // namespace

BusScalar scalarOf(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN)) return g_variant_get_boolean(value) != 0;
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) return g_variant_get_uint32(value);
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_INT64))
    return std::int64_t{g_variant_get_int64(value)};
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_DOUBLE)) return g_variant_get_double(value);
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING))
    return std::string_view(g_variant_get_string(value, nullptr));
  return {};
}

ScalarProperties scalarsOf(GVariant* properties) {
  ScalarProperties scalars;
  GVariantIter iterator;
  g_variant_iter_init(&iterator, properties);
  const char* name = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_loop(&iterator, "{&sv}", &name, &value))
    scalars.emplace_back(name, scalarOf(value));
  return scalars;
}

std::optional<ScalarProperties> readScalars(sd_bus_message* message) {
  ScalarProperties scalars;
  if (sd_bus_message_enter_container(message, 'a', "{sv}") < 0) return std::nullopt;
  while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
    const char* name = nullptr;
    if (sd_bus_message_read_basic(message, 's', &name) <= 0) return std::nullopt;
    auto& [key, scalar] = scalars.emplace_back(name, BusScalar());
    if (!readVariant(message, scalar) || sd_bus_message_exit_container(message) < 0)
      return std::nullopt;
  }
  if (sd_bus_message_exit_container(message) < 0) return std::nullopt;
  return scalars;
}

}  // namespace kelvane
