#include "platform/linux/power/sysfs_supply.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace kelvane {
namespace {

// The kernel hands out at most a page per attribute.
constexpr std::size_t kMostBytes = 4096;
// More supplies than any computer has; a tree with more is not read to its end.
constexpr std::size_t kMostSupplies = 64;
// 10 kWh, 10 kAh, 10 kW, 10 kA, 1 kV: beyond any supply of a computer, and safe to add up.
constexpr std::int64_t kMostMicro = 10'000'000'000;
constexpr std::int64_t kMostMicrovolts = 1'000'000'000;

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  explicit operator bool() const { return fd_ >= 0; }
  int get() const { return fd_; }

 private:
  int fd_;
};

std::optional<std::string> readAttribute(int folder, const char* name) {
  // Non-blocking, for what only looks like an attribute: opening a FIFO waits for its writer.
  const FileDescriptor file(openat(folder, name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
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

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kSpace = " \t\r\n";
  const auto first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

template <typename T, std::size_t N>
std::optional<T> wordIn(const std::array<std::pair<std::string_view, T>, N>& words,
                        std::string_view text) {
  const auto found =
      std::ranges::find(words, trimmed(text), [](const auto& word) { return word.first; });
  return found == words.end() ? std::nullopt : std::optional<T>(found->second);
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

Supply readState(std::string name, const AttributeReader& reader) {
  Supply supply;
  supply.name = std::move(name);
  supply.type = reader.parsed("type", parseSupplyType);
  supply.scope = reader.parsed("scope", parseSupplyScope);
  if (!supply.type || !supply.isOfComputer()) return supply;

  if (supply.type == SupplyType::external) {
    if (const auto online = reader.number("online", 0, 2)) supply.online = *online > 0;
    return supply;
  }
  if (const auto present = reader.number("present", 0, 1)) supply.present = *present > 0;
  supply.status = reader.parsed("status", parseSupplyStatus);
  return supply;
}

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

void readFigures(Supply& supply, const AttributeReader& reader, SupplyFields fields) {
  if (fields == SupplyFields::state || !hasFigures(supply)) return;
  fields == SupplyFields::all ? readAll(supply, reader) : readCapacities(supply, reader);
}

FileDescriptor openSupply(const std::string& directory, const std::string& name) {
  return FileDescriptor(open((directory + "/" + name).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

std::vector<std::string> supplyNames(DIR* folder) {
  std::vector<std::string> names;
  while (const dirent* entry = readdir(folder)) {
    if (entry->d_name[0] == '.') continue;
    names.emplace_back(entry->d_name);
    if (names.size() == kMostSupplies) break;
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace

std::optional<SupplyType> parseSupplyType(std::string_view text) {
  // Kernels before 4.16 gave the kind of USB port as the type ("USB_DCP", "USB_PD", "BrickID").
  if (trimmed(text).starts_with("USB_")) return SupplyType::external;
  static constexpr std::array<std::pair<std::string_view, SupplyType>, 6> kWords{{
      {"Battery", SupplyType::battery},
      {"UPS", SupplyType::ups},
      {"Mains", SupplyType::external},
      {"USB", SupplyType::external},
      {"Wireless", SupplyType::external},
      {"BrickID", SupplyType::external},
  }};
  return wordIn(kWords, text);
}

std::optional<SupplyScope> parseSupplyScope(std::string_view text) {
  static constexpr std::array<std::pair<std::string_view, SupplyScope>, 2> kWords{{
      {"System", SupplyScope::system},
      {"Device", SupplyScope::device},
  }};
  return wordIn(kWords, text);
}

std::optional<SupplyStatus> parseSupplyStatus(std::string_view text) {
  static constexpr std::array<std::pair<std::string_view, SupplyStatus>, 5> kWords{{
      {"Unknown", SupplyStatus::unknown},
      {"Charging", SupplyStatus::charging},
      {"Discharging", SupplyStatus::discharging},
      {"Not charging", SupplyStatus::notCharging},
      {"Full", SupplyStatus::full},
  }};
  return wordIn(kWords, text);
}

std::optional<std::int64_t> parseSupplyNumber(std::string_view text, std::int64_t least,
                                              std::int64_t most) {
  const std::string_view digits = trimmed(text);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  if (value < least || value > most) return std::nullopt;
  return value;
}

std::optional<int> parseSupplyPercent(std::string_view text) {
  const auto value = parseSupplyNumber(text, 0, 110);
  if (!value) return std::nullopt;
  return static_cast<int>(std::min<std::int64_t>(*value, 100));
}

std::vector<Supply> readSupplies(const std::string& directory, SupplyFields fields) {
  std::vector<Supply> supplies;
  const std::unique_ptr<DIR, int (*)(DIR*)> tree(opendir(directory.c_str()), closedir);
  if (!tree) return supplies;
  for (std::string& name : supplyNames(tree.get())) {
    const FileDescriptor folder = openSupply(directory, name);
    if (!folder) continue;
    const AttributeReader reader(folder.get());
    Supply& supply = supplies.emplace_back(readState(std::move(name), reader));
    readFigures(supply, reader, fields);
  }
  return supplies;
}

void addFigures(const std::string& directory, std::vector<Supply>& supplies, SupplyFields fields) {
  for (Supply& supply : supplies) {
    if (!hasFigures(supply)) continue;
    if (const FileDescriptor folder = openSupply(directory, supply.name))
      readFigures(supply, AttributeReader(folder.get()), fields);
  }
}

}  // namespace kelvane
