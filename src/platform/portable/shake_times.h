// The moments of a shake, at which each of its offsets is reached. Pure function, any thread.
#pragma once

#include <cstddef>
#include <vector>

namespace kelvane {

// As parts of its duration, evenly spaced: the first offset at once (0.0), the last at the end
// (1.0). Empty for fewer than two offsets, between which nothing moves.
inline std::vector<double> shakeTimes(std::size_t offsets) {
  std::vector<double> times;
  for (std::size_t i = 0; offsets > 1 && i < offsets; ++i)
    times.push_back(static_cast<double>(i) / static_cast<double>(offsets - 1));
  return times;
}

}  // namespace kelvane
