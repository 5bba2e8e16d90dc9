#include "platform/linux/power/sysfs_supply.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <utility>

namespace kelvane {
namespace {

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

}  // namespace kelvane
