#include "platform/portable/text_formats.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

Date at(std::int64_t seconds) { return Date(std::chrono::seconds(seconds)); }

TEST(TextFormats, durationsAreHoursAndWholeMinutes) {
  PortableTextFormats formats({});
  const struct {
    double seconds;
    std::optional<std::string> text;
  } rows[] = {
      {0, "0m"},
      {59.9, "0m"},
      {60, "1m"},
      {45 * 60, "45m"},
      {3599, "59m"},
      {3 * 3600, "3h"},
      {7500, "2h 5m"},
      {7559, "2h 5m"},
      {100 * 3600, "100h"},
      {-1, std::nullopt},
      {-60, std::nullopt},
      {kNan, std::nullopt},
      {kInfinity, std::nullopt},
      {-kInfinity, std::nullopt},
      {1e300, std::nullopt},
  };
  for (const auto& row : rows) EXPECT_EQ(formats.abbreviatedDuration(row.seconds), row.text);
}

TEST(TextFormats, percentagesRoundHalfToEven) {
  PortableTextFormats formats({});
  const struct {
    double ratio;
    std::optional<std::string> text;
  } rows[] = {
      {0, "0%"},
      {0.87, "87%"},
      {1, "100%"},
      {0.874, "87%"},
      {0.876, "88%"},
      {0.865, "86%"},
      {0.875, "88%"},
      {0.575, "58%"},
      {0.005, "0%"},
      {0.015, "2%"},
      {-0.001, "0%"},
      {-0.05, "-5%"},
      {12.34, "1,234%"},
      {12345.67, "1,234,567%"},
      {kNan, std::nullopt},
      {kInfinity, std::nullopt},
      {-kInfinity, std::nullopt},
  };
  for (const auto& row : rows) EXPECT_EQ(formats.percent(row.ratio), row.text) << row.ratio;
}

TEST(TextFormats, informationStorageInDecimalUnits) {
  PortableTextFormats formats({});
  const struct {
    double bytes;
    const char* text;
  } rows[] = {
      {0, "0 B"},          {999, "999 B"},      {1000, "1 kB"},      {8'449'000, "8.4 MB"},
      {8'000'000, "8 MB"}, {99.96e6, "100 MB"}, {134.4e6, "134 MB"}, {999'600'000, "1 GB"},
      {2e15, "2000 TB"},   {-1, "0 B"},         {kNan, "0 B"},       {kInfinity, "0 B"},
  };
  for (const auto& row : rows) EXPECT_EQ(formats.informationStorage(row.bytes), row.text);
}

TEST(TextFormats, timeOfDayInEitherClock) {
  const struct {
    std::int64_t seconds;
    const char* in24Hours;
    const char* in12Hours;
  } rows[] = {
      {0, "00:00", "12:00 AM"},
      {5 * 60 + 59, "00:05", "12:05 AM"},
      {9 * 3600 + 7 * 60, "09:07", "9:07 AM"},
      {12 * 3600, "12:00", "12:00 PM"},
      {14 * 3600 + 5 * 60, "14:05", "2:05 PM"},
      {86399, "23:59", "11:59 PM"},
      {-60, "23:59", "11:59 PM"},
  };
  PortableTextFormats wide({false, {}});
  PortableTextFormats narrow({true, {}});
  for (const auto& row : rows) {
    EXPECT_EQ(wide.shortTime(at(row.seconds)), row.in24Hours);
    EXPECT_EQ(narrow.shortTime(at(row.seconds)), row.in12Hours);
  }
}

TEST(TextFormats, timeOfDayFollowsTheOffsetOfThatMoment) {
  // A zone that springs forward at 1000 hours after the epoch.
  constexpr std::int64_t kChange = 1000 * 3600;
  PortableTextFormats formats(
      {false, [](std::int64_t seconds) { return seconds < kChange ? -3600 : 5400; }});
  EXPECT_EQ(formats.shortTime(at(kChange - 60)), "14:59");
  EXPECT_EQ(formats.shortTime(at(kChange)), "17:30");
  EXPECT_EQ(formats.shortTime(at(0)), "23:00");  // the day before
}

}  // namespace
}  // namespace kelvane
