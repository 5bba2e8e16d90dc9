// Sheets and alerts of a tree: windows over the tree's own. Main thread.
#pragma once

#include <gtkmm/button.h>

#include "programs/kelvane-windows/alert_content.h"
#include "programs/kelvane-windows/dialog_window.h"
#include "programs/kelvane-windows/view_widget.h"

namespace kelvane {

// Puts children of a dialog where they belong: buttons into the row, the rest above.
class DialogView : public ViewWidget {
 public:
  DialogView(const ViewNode& node, ViewContext& context, bool isAlert);
  Gtk::Widget* widget() override { return nullptr; }
  void appear() override;
  void place(ViewWidget& child, const Place& place) override;
  void remove(ViewWidget& child) override;

 protected:
  // Where children that are no buttons go.
  virtual Gtk::Box& body() { return dialog_.content(); }
  virtual void buttonsChanged() { dialog_.showButtons(); }

  DialogWindow dialog_;
};

class SheetView : public DialogView {
 public:
  SheetView(const ViewNode& node, ViewContext& context);

 private:
  void show() override {}
};

class AlertView : public DialogView {
 public:
  AlertView(const ViewNode& node, ViewContext& context);

 private:
  void show() override;
  Gtk::Box& body() override { return content_.body(); }
  void buttonsChanged() override;

  AlertContent content_;
  Gtk::Button dismiss_;
};

}  // namespace kelvane
