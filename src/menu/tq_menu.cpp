#include "menu/tq_menu.h"

namespace kelvane {

void TqMenu::needsUpdate() {
  needsUpdateSubject_.send({});
  if (onUpdate) onUpdate(*this);
}

void TqMenu::setOpen(bool isOpen) {
  isOpen_ = isOpen;
  isOpenSubject_.send(isOpen);
}

}  // namespace kelvane
