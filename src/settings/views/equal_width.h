// Making several labels equally wide. Plain values, any thread.
#pragma once

#include <string>
#include <utility>

#include "platform/view_tree.h"

namespace kelvane {

// Under which name the widths of labels travel. Only a platform measures, so it collects them: of
// all that go by one name the largest counts.
struct EqualWidthWithBindingPreferenceKey {
  std::string name;
};

class EqualWidthWithBinding {
 public:
  EqualWidthWithBinding(EqualWidthWithBindingPreferenceKey width, ViewNode::Alignment alignment)
      : width_(std::move(width)), alignment_(alignment) {}

  // The content with its label in the common width.
  ViewNode body(ViewNode content) const {
    content.equalWidthGroup = width_.name;
    content.alignment = alignment_;
    return content;
  }

 private:
  EqualWidthWithBindingPreferenceKey width_;
  ViewNode::Alignment alignment_;
};

}  // namespace kelvane
