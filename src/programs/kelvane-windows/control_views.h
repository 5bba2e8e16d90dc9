// The nodes that have no children: text, toggles, radio groups, buttons, dividers. Main thread.
#pragma once

#include <memory>
#include <vector>

#include <giomm/simpleaction.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>
#include <gtkmm/separator.h>

#include "programs/kelvane-windows/view_widget.h"

namespace kelvane {

class TextView : public ViewWidget {
 public:
  TextView(const ViewNode& node, ViewContext& context);
  Gtk::Widget* widget() override { return &label_; }

 private:
  void show() override;
  Gtk::Label label_;
};

class ToggleView : public ViewWidget {
 public:
  ToggleView(const ViewNode& node, ViewContext& context);
  Gtk::Widget* widget() override { return &button_; }

 private:
  void show() override;
  Gtk::CheckButton button_;
  Glib::RefPtr<Gio::SimpleAction> press_;
};

// A label, and one radio button for each option beside it.
class RadioGroupView : public ViewWidget {
 public:
  RadioGroupView(const ViewNode& node, ViewContext& context);
  ~RadioGroupView() override;
  Gtk::Widget* widget() override { return &box_; }

 private:
  struct Option {
    Gtk::CheckButton button;
    Glib::RefPtr<Gio::SimpleAction> press;
  };

  void show() override;
  void showOptions();
  Gtk::Label label_;
  std::vector<std::unique_ptr<Option>> options_;
  Gtk::Box optionsBox_;
  Gtk::Box box_;
  Glib::RefPtr<Gtk::SizeGroup> widths_;
  Glib::RefPtr<Gtk::SizeGroup> heights_;
};

class ButtonView : public ViewWidget {
 public:
  ButtonView(const ViewNode& node, ViewContext& context);
  Gtk::Widget* widget() override { return &button_; }

 private:
  void show() override;
  void showDefault();
  Gtk::Button button_;
};

class DividerView : public ViewWidget {
 public:
  DividerView(const ViewNode& node, ViewContext& context);
  Gtk::Widget* widget() override { return &separator_; }

 private:
  void show() override { showFrame(separator_); }
  Gtk::Separator separator_;
};

}  // namespace kelvane
