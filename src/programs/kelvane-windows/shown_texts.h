// Texts as the fonts of this system can show them. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/windows/window_protocol.h"
#include "platform/view_tree.h"

namespace kelvane {

class ShownTexts {
 public:
  // The same with "%" in place of the small percent sign, when no font has that.
  std::string of(std::string text);
  ViewNode of(ViewNode node);
  std::vector<ViewStep> of(std::vector<ViewStep> steps);
  std::vector<ShownLine> of(std::vector<ShownLine> lines);

 private:
  std::optional<bool> isCovered_;  // once it was asked for
};

}  // namespace kelvane
