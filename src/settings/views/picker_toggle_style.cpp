#include "settings/views/picker_toggle_style.h"

namespace kelvane {

ViewNode PickerToggleStyle::body(ViewScope& scope, std::string id, std::string label,
                                 const Binding<bool>& isOn) const {
  ViewNode node = makeNode(ViewNode::Kind::radioGroup, std::move(id), std::move(label));
  node.options = {trueLabel, falseLabel};
  if (reverseOrder) std::swap(node.options.front(), node.options.back());
  node.selection = isOn.get() == reverseOrder ? 1 : 0;
  node.isHorizontal = style == PickerStyle::horizontalRadioGroup;
  scope.onValue(node, [set = isOn.set, reversed = reverseOrder](int index) {
    set((index == 0) != reversed);
  });
  return node;
}

}  // namespace kelvane
