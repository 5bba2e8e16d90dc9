#include "store/setting_toggle.h"

#include <utility>

namespace kelvane {

SettingToggle::SettingToggle(std::string label, const SettingKey<bool>& key, RunLoop& runLoop,
                             OnChange onChange)
    : label_(std::move(label)),
      observable_(key, runLoop),
      changes_(observe(key, {}, [onChange = std::move(onChange)](const KeyChange<bool>& change) {
        // Storing a value equal to the default changes nothing that is shown.
        if (onChange && change.newValue != change.oldValue) onChange(change.newValue);
      })) {}

}  // namespace kelvane
