#include "platform/linux/desktop/linux_text_formats.h"

#include <langinfo.h>
#include <locale.h>
#include <time.h>

namespace kelvane {

bool isTwelveHourFormat(const std::string& format) {
  for (std::size_t i = 0; i + 1 < format.size(); ++i) {
    if (format[i] != '%') continue;
    ++i;
    // Flags and field widths, as in "%-I" and "%_2l".
    while (i + 1 < format.size() &&
           std::string("-_0^#EO123456789").find(format[i]) != std::string::npos) {
      ++i;
    }
    if (std::string("IlrpP").find(format[i]) != std::string::npos) return true;
  }
  return false;
}

namespace {

bool environmentUses12Hour() {
  const locale_t locale = newlocale(LC_TIME_MASK, "", nullptr);
  if (!locale) return false;
  // Some locales name the 12-hour format but have no words for the halves of the day.
  const bool is12Hour =
      isTwelveHourFormat(nl_langinfo_l(T_FMT, locale)) && *nl_langinfo_l(AM_STR, locale) != '\0';
  freelocale(locale);
  return is12Hour;
}

std::int64_t localOffset(std::int64_t secondsSinceEpoch) {
  const auto moment = static_cast<time_t>(secondsSinceEpoch);
  struct tm local {};
  tzset();  // localtime_r itself need not look whether the zone changed
  return localtime_r(&moment, &local) ? local.tm_gmtoff : 0;
}

}  // namespace

ClockStyle environmentClockStyle() { return {environmentUses12Hour(), localOffset}; }

}  // namespace kelvane
