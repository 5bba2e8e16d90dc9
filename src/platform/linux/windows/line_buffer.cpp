#include "platform/linux/windows/line_buffer.h"

#include <algorithm>

namespace kelvane {

std::optional<std::string> LineBuffer::next() {
  if (isOverlong_) return std::nullopt;
  const auto end = bytes_.find('\n', std::max(taken_, searched_));
  if (end == std::string::npos) {
    bytes_.erase(0, taken_);
    taken_ = 0;
    searched_ = bytes_.size();
    isOverlong_ = searched_ >= maximumLine_;
    return std::nullopt;
  }
  isOverlong_ = end - taken_ >= maximumLine_;
  if (isOverlong_) return std::nullopt;
  std::string line = bytes_.substr(taken_, end - taken_);
  taken_ = searched_ = end + 1;
  return line;
}

}  // namespace kelvane
