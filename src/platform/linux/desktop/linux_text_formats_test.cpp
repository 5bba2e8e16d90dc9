#include "platform/linux/desktop/linux_text_formats.h"

#include <clocale>
#include <cstdlib>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(LinuxTextFormats, twelveHoursByTheTimeFormat) {
  const struct {
    const char* format;
    bool is12Hour;
  } rows[] = {
      {"%r", true},          {"%I:%M:%S %p", true}, {"%l:%M:%S", true},  {"%-I.%M %P", true},
      {"%p %I:%M:%S", true}, {"%T", false},         {"%H:%M:%S", false}, {"%H.%M.%S", false},
      {"%OH:%M", false},     {"%OI:%M", true},      {"%%I", false},      {"%", false},
      {"", false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(isTwelveHourFormat(row.format), row.is12Hour) << row.format;
}

TEST(LinuxTextFormats, readsTheZoneAndLeavesTheLocaleAlone) {
  setenv("LC_ALL", "C", 1);
  LinuxTextFormats formats;
  const Date noon(std::chrono::hours(12));
  setenv("TZ", "AAA-5:30", 1);  // east of Greenwich in POSIX's notation
  EXPECT_EQ(formats.shortTime(noon), "17:30");
  setenv("TZ", "BBB+3", 1);
  EXPECT_EQ(formats.shortTime(noon), "09:00");
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST(LinuxTextFormats, unknownLocaleReads24Hours) {
  setenv("LC_ALL", "xx_NOWHERE.UTF-8", 1);
  EXPECT_FALSE(environmentClockStyle().use12Hour);
}

}  // namespace
}  // namespace kelvane
