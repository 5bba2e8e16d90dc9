#include "platform/linux/power/supply_folder.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace kelvane {
namespace {

// The kernel hands out at most a page per attribute.
constexpr std::size_t kMostBytes = 4096;
// 10 kWh, 10 kAh, 10 kW, 10 kA, 1 kV: beyond any supply of a computer, and safe to add up.
constexpr std::int64_t kMostMicro = 10'000'000'000;
constexpr std::int64_t kMostMicrovolts = 1'000'000'000;

std::optional<std::string> readAttribute(int folder, const char* name) {
  // Non-blocking, for what only looks like an attribute: opening a FIFO waits for its writer.
  const UniqueFd file(openat(folder, name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  if (!file) return std::nullopt;
  // One call gives the whole attribute (Documentation/filesystems/sysfs.rst), and of a file without
  // end more than an attribute has. What has no position to read at, a FIFO or a terminal, is
  // refused (pread(2), ESPIPE), which spares a call to ask what the file is.
  std::array<char, kMostBytes + 1> buffer;
  ssize_t got = 0;
  do {
    got = pread(file.get(), buffer.data(), buffer.size(), 0);
  } while (got < 0 && errno == EINTR);
  if (got < 0) return std::nullopt;  // the device went away, or can't tell now
  const auto size = static_cast<std::size_t>(got);
  if (size > kMostBytes) return std::nullopt;
  return std::string(buffer.data(), size);
}

// Reads attributes of one supply's folder.
class AttributeReader {
 public:
  explicit AttributeReader(int folder) : folder_(folder) {}

  template <typename Parse>
  auto parsed(const char* name, Parse parse) const -> decltype(parse(std::string_view())) {
    const auto text = readAttribute(folder_, name);
    if (!text) return std::nullopt;
    return parse(*text);
  }
  std::optional<std::int64_t> number(const char* name, std::int64_t least,
                                     std::int64_t most) const {
    return parsed(name, [&](std::string_view t) { return parseSupplyNumber(t, least, most); });
  }
  std::optional<std::int64_t> amount(const char* name) const { return number(name, 0, kMostMicro); }
  // A full capacity of 0 is a driver's way to say that it doesn't know.
  std::optional<std::int64_t> fullAmount(const char* name) const {
    return number(name, 1, kMostMicro);
  }
  std::optional<std::int64_t> voltage(const char* name) const {
    return number(name, 1, kMostMicrovolts);
  }
  std::optional<std::int64_t> flow(const char* name) const {
    const auto value = number(name, -kMostMicro, kMostMicro);
    return value ? std::optional(std::abs(*value)) : std::nullopt;
  }

 private:
  int folder_;
};

bool hasFigures(const Supply& supply) {
  return supply.type && supply.type != SupplyType::external && supply.isOfComputer();
}

void readCapacities(Supply& supply, const AttributeReader& reader) {
  supply.chargeFull = reader.fullAmount("charge_full");
  supply.chargeFullDesign = reader.fullAmount("charge_full_design");
  if (supply.chargeFull && supply.chargeFullDesign) return;
  supply.energyFull = reader.fullAmount("energy_full");
  supply.energyFullDesign = reader.fullAmount("energy_full_design");
  if (!supply.energyFull && !supply.energyFullDesign) return;
  supply.voltageMinDesign = reader.voltage("voltage_min_design");
  if (!supply.voltageMinDesign) supply.voltageMaxDesign = reader.voltage("voltage_max_design");
  if (!supply.nominalMicrovolts()) supply.voltageNow = reader.voltage("voltage_now");
}

void readAll(Supply& supply, const AttributeReader& reader) {
  supply.capacity = reader.parsed("capacity", parseSupplyPercent);
  if (const auto end = reader.number("charge_control_end_threshold", 1, 100))
    supply.chargeEndPercent = static_cast<int>(*end);
  supply.energyNow = reader.amount("energy_now");
  supply.energyFull = reader.fullAmount("energy_full");
  supply.energyFullDesign = reader.fullAmount("energy_full_design");
  supply.chargeNow = reader.amount("charge_now");
  supply.chargeFull = reader.fullAmount("charge_full");
  supply.chargeFullDesign = reader.fullAmount("charge_full_design");
  supply.voltageMinDesign = reader.voltage("voltage_min_design");
  supply.voltageMaxDesign = reader.voltage("voltage_max_design");
  supply.voltageNow = reader.voltage("voltage_now");
  supply.powerNow = reader.flow("power_now");
  supply.currentNow = reader.flow("current_now");
}

}  // namespace

SupplyFolder::SupplyFolder(int tree, std::string name)
    : name_(std::move(name)),
      folder_(openat(tree, name_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

Supply SupplyFolder::readState() {
  const AttributeReader reader(folder_.get());
  if (!type_) {
    type_ = reader.parsed("type", parseSupplyType);
    scope_ = reader.parsed("scope", parseSupplyScope);
  }
  Supply supply;
  supply.name = name_;
  supply.type = type_;
  supply.scope = scope_;
  if (!supply.type || !supply.isOfComputer()) return supply;

  if (supply.type == SupplyType::external) {
    if (const auto online = reader.number("online", 0, 2)) supply.online = *online > 0;
    return supply;
  }
  if (const auto present = reader.number("present", 0, 1)) supply.present = *present > 0;
  supply.status = reader.parsed("status", parseSupplyStatus);
  return supply;
}

void SupplyFolder::readFigures(Supply& supply, SupplyFields fields) const {
  if (fields == SupplyFields::state || !hasFigures(supply)) return;
  const AttributeReader reader(folder_.get());
  fields == SupplyFields::all ? readAll(supply, reader) : readCapacities(supply, reader);
}

}  // namespace kelvane
