#include "platform/linux/windows/click_place.h"

#include <limits>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(ClickPlace, IsWhatTheHostMeansByThePointer) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  const struct {
    Point told, pointer;
    double scale;
    Point meant;
  } rows[] = {
      // The screen's pixels, and larger ones.
      {{2423, 33}, {2423, 33}, 2, {2423, 33}},
      {{1212, 17}, {2423, 33}, 2, {2424, 34}},
      {{1212, 17}, {1212, 17}, 2, {1212, 17}},
      {{808, 11}, {2423, 33}, 3, {2424, 33}},
      // The pointer has moved on a little.
      {{1212, 17}, {2390, 60}, 2, {2424, 34}},
      {{2423, 33}, {2390, 60}, 2, {2423, 33}},
      {{1212, 17}, {2423, 33}, 1, {1212, 17}},
      {{0, 0}, {500, 500}, 2, {0, 0}},
      {{kNone, 17}, {2423, 33}, 2, {2423, 33}},
      {{1212, std::numeric_limits<double>::infinity()}, {2423, 33}, 2, {2423, 33}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(clickPlace(row.told, row.pointer, row.scale), row.meant)
        << row.told.x << " at scale " << row.scale;
}

}  // namespace
}  // namespace kelvane
