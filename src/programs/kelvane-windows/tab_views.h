// Tabs. Main thread.
#pragma once

#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/notebook.h>
#include <gtkmm/revealer.h>
#include <sigc++/connection.h>

#include "programs/kelvane-windows/view_widget.h"

namespace kelvane {

// One tab: its content, and its label with a symbol beside it.
class TabView : public ViewWidget {
 public:
  TabView(const ViewNode& node, ViewContext& context);
  Gtk::Widget* widget() override { return &page_; }
  void place(ViewWidget& child, const Place& place) override;
  void remove(ViewWidget& child) override;

  Gtk::Widget& tabLabel() { return labelBox_; }
  // A page that is not the current one is as wide as it is, but takes no height.
  void setCurrent(bool isCurrent) { page_.set_reveal_child(isCurrent); }
  // Once it is a page of `tabs`: gives its tab a name and an action.
  void joined(Gtk::Notebook& tabs);

 private:
  void show() override;
  Gtk::Revealer page_;
  Gtk::Box content_;
  Gtk::Box labelBox_;
  Gtk::Image symbol_;
  Gtk::Label label_;
};

class TabsView : public ViewWidget {
 public:
  TabsView(const ViewNode& node, ViewContext& context);
  // The toolkit turns to other pages as it takes one after the other away.
  ~TabsView() override { turns_.disconnect(); }
  Gtk::Widget* widget() override { return &notebook_; }
  void place(ViewWidget& child, const Place& place) override;
  void remove(ViewWidget& child) override;

 private:
  void show() override { showFrame(notebook_); }
  void showCurrent();
  Gtk::Notebook notebook_;
  sigc::connection turns_;
  std::vector<TabView*> tabs_;  // in any order
};

}  // namespace kelvane
