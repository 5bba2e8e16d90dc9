// The widths of labels that are to be equally wide: of all that go by one name the largest counts.
// Any thread.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>

namespace kelvane {

class EqualWidths {
 public:
  // A label that needs `width` points; an empty name stands for no group.
  void add(const std::string& group, double width) {
    if (group.empty()) return;
    const auto [found, isNew] = widest_.emplace(group, width);
    if (!isNew) found->second = std::max(found->second, width);
  }

  // What each label of the group gets; absent for a name that nothing was added to.
  std::optional<double> of(const std::string& group) const {
    const auto found = widest_.find(group);
    return found == widest_.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  std::map<std::string, double> widest_;
};

}  // namespace kelvane
