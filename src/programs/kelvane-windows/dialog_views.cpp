#include "programs/kelvane-windows/dialog_views.h"

#include "programs/kelvane-windows/accessibility.h"

namespace kelvane {
namespace {

constexpr int kSheetMargin = 9;  // pixels

}  // namespace

DialogView::DialogView(const ViewNode& node, ViewContext& context, bool isAlert)
    : ViewWidget(node, context), dialog_(isAlert, [this] { press(); }) {}

void DialogView::appear() {
  dialog_.attachTo(context_.window);
  // The window's title has become its name for assistive programs.
  show();
  dialog_.present();
}

void DialogView::place(ViewWidget& child, const Place& place) {
  const bool isButton = place.row == ViewRow::buttons;
  placeIn(isButton ? dialog_.buttons() : body(), child, place);
  if (isButton) buttonsChanged();
}

void DialogView::remove(ViewWidget& child) {
  const bool isButton = child.widget()->get_parent() == &dialog_.buttons();
  (isButton ? dialog_.buttons() : body()).remove(*child.widget());
  if (isButton) buttonsChanged();
}

SheetView::SheetView(const ViewNode& node, ViewContext& context)
    : DialogView(node, context, false) {
  // The tree has paddings of its own.
  dialog_.content().set_margin_start(kSheetMargin);
  dialog_.content().set_margin_end(kSheetMargin);
  dialog_.content().set_margin_top(kSheetMargin);
}

AlertView::AlertView(const ViewNode& node, ViewContext& context)
    : DialogView(node, context, true), dismiss_(kDismiss) {
  dialog_.content().append(content_.widget());
  dismiss_.add_css_class("suggested-action");
  dismiss_.signal_clicked().connect([this] { press(); });
  buttonsChanged();
  show();
}

void AlertView::show() {
  content_.setTitle(node().label);
  setAccessibleName(dialog_.Gtk::Widget::gobj(), node().label);
}

void AlertView::buttonsChanged() {
  Gtk::Box& row = dialog_.buttons();
  const bool isAlone = !row.get_first_child();
  const bool isIn = dismiss_.get_parent() == &row;
  if (isAlone) {
    row.append(dismiss_);
    dialog_.set_default_widget(dismiss_);
  } else if (isIn && row.get_first_child() != row.get_last_child()) {
    row.remove(dismiss_);
  }
  dialog_.showButtons();
}

}  // namespace kelvane
