#include "platform/portable/text_formats.h"

#include <chrono>
#include <cmath>
#include <iterator>

namespace kelvane {
namespace {

std::string twoDigits(std::int64_t value) {
  return (value < 10 ? "0" : "") + std::to_string(value);
}

// `value` rounded to a whole number, a half to the even side, whatever the rounding mode is.
double roundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

}  // namespace

std::optional<std::string> PortableTextFormats::abbreviatedDuration(double seconds) {
  if (!(seconds >= 0) || seconds > 1e15) return std::nullopt;
  const auto minutes = static_cast<std::int64_t>(seconds / 60);
  const std::int64_t hours = minutes / 60;
  const std::int64_t rest = minutes % 60;
  if (hours == 0) return std::to_string(rest) + "m";
  const std::string text = std::to_string(hours) + "h";
  return rest == 0 ? text : text + " " + std::to_string(rest) + "m";
}

std::string PortableTextFormats::shortTime(Date date) {
  const std::int64_t seconds =
      std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
  const std::int64_t local = seconds + (clock_.utcOffset ? clock_.utcOffset(seconds) : 0);
  constexpr std::int64_t kDay = 24 * 60 * 60;
  const std::int64_t ofDay = (local % kDay + kDay) % kDay;
  const std::int64_t hour = ofDay / 3600;
  const std::string minute = twoDigits(ofDay / 60 % 60);
  if (!clock_.use12Hour) return twoDigits(hour) + ":" + minute;
  return std::to_string((hour + 11) % 12 + 1) + ":" + minute + (hour < 12 ? " AM" : " PM");
}

std::optional<std::string> PortableTextFormats::percent(double ratio) {
  // Ratios written in decimals are rarely exact in binary: 0.575 must count as 57.5 %.
  const double scaled = std::round(ratio * 100 * 1e6) / 1e6;
  if (!std::isfinite(scaled) || std::abs(scaled) > 1e15) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(roundHalfEven(scaled));
  std::string digits = std::to_string(std::abs(whole));
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return (whole < 0 ? "-" : "") + digits + "%";
}

std::string PortableTextFormats::informationStorage(double bytes) {
  constexpr const char* kUnits[] = {"B", "kB", "MB", "GB", "TB"};
  double amount = bytes > 0 && std::isfinite(bytes) ? bytes : 0;
  std::size_t unit = 0;
  for (; amount >= 999.5 && unit + 1 < std::size(kUnits); ++unit) amount /= 1000;
  const auto tenths = static_cast<std::int64_t>(std::round(amount * 10));
  std::string text = std::to_string((tenths + 5) / 10);
  if (tenths < 1000)
    text = std::to_string(tenths / 10) + (tenths % 10 ? "." + std::to_string(tenths % 10) : "");
  return text + " " + kUnits[unit];
}

}  // namespace kelvane
