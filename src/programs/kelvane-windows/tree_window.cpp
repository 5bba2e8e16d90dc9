#include "programs/kelvane-windows/tree_window.h"

#include <utility>

#include "programs/kelvane-windows/dialog_window.h"

namespace kelvane {

TreeWindow::TreeWindow(const std::string& title, const ViewNode& tree, ViewPart::Acted acted,
                       std::function<void()> closed)
    : closed_(std::move(closed)), renderer_(*this, tree, std::move(acted)) {
  set_title(title);
  set_resizable(false);
  limitToScreen(scrolled_);
  if (Gtk::Widget* widget = renderer_.widget()) scrolled_.set_child(*widget);
  set_child(scrolled_);
  closeByEscape(*this);
}

TreeWindow::~TreeWindow() {
  // Tabs that go would look for the focus in a window that they are no longer in.
  unset_focus();
  scrolled_.unset_child();
}

bool TreeWindow::on_close_request() {
  const auto closed = closed_;
  closed();
  return true;
}

}  // namespace kelvane
