#include "platform/linux/glib/property_changes.h"

#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {
namespace {

constexpr const char* kPath = "/org/kelvane/Test";
constexpr const char* kInterface = "org.kelvane.Test";

struct Heard {
  std::vector<std::pair<std::string, std::string>> changed;
  bool areOthersInvalid = false;
  bool operator==(const Heard&) const = default;
};

std::string typed(const BusScalar& scalar) {
  struct Print {
    std::string operator()(std::monostate) const { return "none"; }
    std::string operator()(bool value) const { return value ? "b true" : "b false"; }
    std::string operator()(std::uint32_t value) const { return "u " + std::to_string(value); }
    std::string operator()(std::int64_t value) const { return "x " + std::to_string(value); }
    std::string operator()(double value) const { return "d " + std::to_string(value); }
    std::string operator()(std::string_view value) const { return "s " + std::string(value); }
  };
  return std::visit(Print(), scalar);
}

Heard heardOf(const ScalarProperties& properties, bool areOthersInvalid) {
  Heard heard{{}, areOthersInvalid};
  for (const auto& [name, value] : properties)
    heard.changed.emplace_back(std::string(name), typed(value));
  return heard;
}

TEST(PropertyChanges, AreReadAsTheyAreSent) {
  const PrivateBus bus;
  const BusPtr ours = bus.connect();
  const auto stranger = bus.connectStranger();
  std::vector<Heard> heard;
  const PropertyChanges changes(
      ours.get(), {g_dbus_connection_get_unique_name(stranger.get()), kPath, kInterface},
      [&](const ScalarProperties& changed, bool areOthersInvalid) {
        heard.push_back(heardOf(changed, areOthersInvalid));
      });
  askBus(ours.get(), "GetId");
  const auto send = [&](const char* text) {
    g_dbus_connection_emit_signal(stranger.get(), nullptr, kPath, "org.freedesktop.DBus.Properties",
                                  "PropertiesChanged", g_variant_new_parsed(text), nullptr);
  };
  // Nothing of these is heard.
  for (const char* text :
       {"('org.kelvane.Test',)", "('org.kelvane.Test', @a{sv} {})",
        "('org.kelvane.Other', {'A': <true>}, @as [])", "('org.kelvane.Test', {'A': 'x'}, @as [])"})
    send(text);
  const struct {
    const char* text;
    Heard heard;
  } rows[] = {
      {"('org.kelvane.Test', @a{sv} {}, @as [])", {{}, false}},
      {"('org.kelvane.Test', @a{sv} {}, ['A'])", {{}, true}},
      {"('org.kelvane.Test', {'A': <true>, 'B': <uint32 7>, 'C': <int64 -7>, 'D': <1.5>, "
       "'E': <'gr\u00fcn'>, 'F': <false>}, ['G', 'H'])",
       {{{"A", "b true"},
         {"B", "u 7"},
         {"C", "x -7"},
         {"D", "d 1.500000"},
         {"E", "s gr\u00fcn"},
         {"F", "b false"}},
        true}},
      // Values of other types are none, and what comes after them is read all the same.
      {"('org.kelvane.Test', {'A': <7>, 'B': <[uint32 1, 2]>, 'C': <<true>>, 'D': <objectpath "
       "'/a'>, 'E': <{'x': <('y', 1)>}>, 'F': <uint64 1>, 'G': <byte 1>, 'H': <uint32 1>}, @as [])",
       {{{"A", "none"},
         {"B", "none"},
         {"C", "none"},
         {"D", "none"},
         {"E", "none"},
         {"F", "none"},
         {"G", "none"},
         {"H", "u 1"}},
        false}},
  };
  for (const auto& row : rows) {
    heard.clear();
    send(row.text);
    EXPECT_TRUE(runUntil([&] { return !heard.empty(); })) << row.text;
    ASSERT_EQ(heard.size(), 1U) << row.text;
    EXPECT_EQ(heard.front(), row.heard) << row.text;
    // The answer of a call says the same.
    const GVariantPtr whole = sinkVariant(g_variant_new_parsed(row.text));
    const GVariantPtr properties(g_variant_get_child_value(whole.get(), 1));
    EXPECT_EQ(heardOf(scalarsOf(properties.get()), row.heard.areOthersInvalid), row.heard);
  }
}

}  // namespace
}  // namespace kelvane
