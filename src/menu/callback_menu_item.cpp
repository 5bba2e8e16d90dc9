#include "menu/callback_menu_item.h"

namespace kelvane {

MenuLine CallbackMenuItem::line() const {
  MenuLine line = line_;
  line.isEnabled = line_.isEnabled && validate();
  line.action = callback_;
  return line;
}

}  // namespace kelvane
