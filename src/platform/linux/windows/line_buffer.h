// Puts lines together from the pieces that a stream hands out. Any thread, one at a time.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kelvane {

class LineBuffer {
 public:
  explicit LineBuffer(std::size_t maximumLine) : maximumLine_(maximumLine) {}

  void add(std::string_view bytes) { bytes_.append(bytes); }
  // The next whole line, without its end; absent until there is one.
  std::optional<std::string> next();
  // What comes next is longer, with its end, than a line may be; `next` gives no more lines.
  bool isOverlong() const { return isOverlong_; }
  // The beginning of a line is there, but not its end.
  bool hasRest() const { return taken_ < bytes_.size(); }

 private:
  std::size_t maximumLine_;
  std::string bytes_;
  std::size_t taken_ = 0;     // bytes of lines that were handed out
  std::size_t searched_ = 0;  // bytes known to have no line end, from the beginning
  bool isOverlong_ = false;
};

}  // namespace kelvane
