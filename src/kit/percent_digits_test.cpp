#include "kit/percent_digits.h"

#include <limits>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(PercentDigits, AreRoundedAsPrintfRounds) {
  const struct {
    double fraction;
    const char* digits;
  } rows[] = {
      {0, "0"},
      {0.4, "40"},
      {1, "100"},
      {0.999, "100"},
      {0.285, "28"},  // 28.499999999999996 in the arithmetic at hand
      {0.005, "0"},   // halves go to the even one
      {0.015, "2"},
      {0.025, "2"},
      {1.1, "110"},  // what a battery has that outgrew its stated capacity
      {-0.01, "-1"},
      {1e6, "100000000"},
      {std::numeric_limits<double>::infinity(), "inf"},
      {std::numeric_limits<double>::quiet_NaN(), "nan"},
  };
  for (const auto& row : rows) EXPECT_EQ(percentDigits(row.fraction), row.digits) << row.fraction;
}

}  // namespace
}  // namespace kelvane
