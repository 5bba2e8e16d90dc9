// A window that shows a view tree. Main thread.
#pragma once

#include <functional>
#include <string>

#include <gtkmm/scrolledwindow.h>
#include <gtkmm/window.h>

#include "programs/kelvane-windows/view_renderer.h"

namespace kelvane {

class TreeWindow : public Gtk::Window {
 public:
  // `closed` is called when the user closes it; it may destroy the window. Nothing is shown before
  // `present`.
  TreeWindow(const std::string& title, const ViewNode& tree, ViewPart::Acted acted,
             std::function<void()> closed);
  ~TreeWindow() override;

  ViewRenderer& renderer() { return renderer_; }

 protected:
  bool on_close_request() override;

 private:
  std::function<void()> closed_;
  Gtk::ScrolledWindow scrolled_;
  ViewRenderer renderer_;
};

}  // namespace kelvane
