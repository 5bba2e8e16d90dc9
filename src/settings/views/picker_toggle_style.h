// A boolean shown as a choice between two options. Main thread.
#pragma once

#include <string>

#include "settings/views/view_context.h"
#include "settings/views/view_scope.h"

namespace kelvane {

enum class PickerStyle { radioGroup, horizontalRadioGroup };

struct PickerToggleStyle {
  std::string trueLabel;
  std::string falseLabel;
  PickerStyle style = PickerStyle::radioGroup;
  bool reverseOrder = false;  // the false option first

  ViewNode body(ViewScope& scope, std::string id, std::string label,
                const Binding<bool>& isOn) const;
};

}  // namespace kelvane
