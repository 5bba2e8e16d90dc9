#include "programs/kelvane-windows/alert_content.h"

#include "programs/kelvane-windows/symbols.h"

namespace kelvane {
namespace {

constexpr int kIconSize = 64;        // pixels
constexpr int kBadgeSize = 24;       // pixels
constexpr int kIconGap = 18;         // pixels between icon and texts
constexpr int kTextGap = 10;         // pixels between title and message
constexpr int kLineCharacters = 54;  // where a text breaks

}  // namespace

void styleAlertText(Gtk::Label& label) {
  label.set_wrap();
  label.set_max_width_chars(kLineCharacters);
  label.set_xalign(0);
}

AlertContent::AlertContent(const std::optional<Picture>& icon, bool isCritical)
    : body_(Gtk::Orientation::VERTICAL, kTextGap),
      column_(Gtk::Orientation::VERTICAL, kTextGap),
      row_(Gtk::Orientation::HORIZONTAL, kIconGap) {
  if (icon) {
    picture_ = std::make_unique<PictureView>(*icon, kIconSize);
    icon_.set_child(*picture_);
  } else {
    application_.set_from_icon_name(kApplicationIcon);
    application_.set_pixel_size(kIconSize);
    icon_.set_child(application_);
  }
  if (isCritical) {
    badge_.set_from_icon_name("dialog-warning-symbolic");
    badge_.set_pixel_size(kBadgeSize);
    badge_.add_css_class("alert-badge");
    badge_.set_halign(Gtk::Align::END);
    badge_.set_valign(Gtk::Align::END);
    icon_.add_overlay(badge_);
  }
  icon_.set_valign(Gtk::Align::START);
  styleAlertText(title_);
  title_.add_css_class("alert-title");
  column_.set_hexpand();
  // A title by itself is on the icon's middle.
  column_.set_valign(Gtk::Align::CENTER);
  column_.append(title_);
  column_.append(body_);
  row_.append(icon_);
  row_.append(column_);
  setTitle("");
}

void AlertContent::setTitle(const std::string& title) {
  title_.set_text(title);
  title_.set_visible(!title.empty());
}

}  // namespace kelvane
