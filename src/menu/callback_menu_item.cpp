#include "menu/callback_menu_item.h"

namespace kelvane {

MenuLine CallbackMenuItem::line() && {
  line_.isEnabled = line_.isEnabled && validate();
  line_.action = std::move(callback_);
  return std::move(line_);
}

}  // namespace kelvane
