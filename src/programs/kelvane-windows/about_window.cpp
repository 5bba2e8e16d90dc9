#include "programs/kelvane-windows/about_window.h"

#include <utility>

#include "programs/kelvane-windows/accessibility.h"
#include "programs/kelvane-windows/symbols.h"

namespace kelvane {
namespace {

constexpr int kIconSize = 96;  // pixels
constexpr int kWidth = 260;    // pixels
constexpr int kGap = 6;        // pixels between lines

}  // namespace

AboutWindow::AboutWindow(std::function<void()> closed) : DialogWindow(false, std::move(closed)) {
  icon_.set_from_icon_name(kApplicationIcon);
  icon_.set_pixel_size(kIconSize);
  name_.add_css_class("about-name");
  version_.add_css_class("dim-label");
  copyright_.add_css_class("dim-label");
  copyright_.add_css_class("about-copyright");
  content().set_spacing(kGap);
  content().set_size_request(kWidth, -1);
  for (Gtk::Widget* each :
       {static_cast<Gtk::Widget*>(&icon_), static_cast<Gtk::Widget*>(&name_),
        static_cast<Gtk::Widget*>(&version_), static_cast<Gtk::Widget*>(&copyright_)})
    content().append(*each);
}

void AboutWindow::setInformation(const ApplicationInformation& information) {
  set_title("About " + information.name);
  setAccessibleName(Gtk::Widget::gobj(), "About " + information.name);
  name_.set_text(information.name);
  version_.set_text("Version " + information.version + " (" + information.build + ")");
  copyright_.set_text(information.copyright);
  copyright_.set_visible(!information.copyright.empty());
}

}  // namespace kelvane
