// What an alert says: an icon, a title in bold, and texts below it. Main thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>

#include "platform/picture.h"
#include "programs/kelvane-windows/picture_view.h"

namespace kelvane {

// The toolkit's own default button.
inline constexpr const char* kDismiss = "OK";

class AlertContent {
 public:
  // Without an icon it has the application's.
  explicit AlertContent(const std::optional<Picture>& icon = std::nullopt, bool isCritical = false);

  Gtk::Widget& widget() { return row_; }
  // Where texts below the title go.
  Gtk::Box& body() { return body_; }
  void setTitle(const std::string& title);

 private:
  std::unique_ptr<PictureView> picture_;
  Gtk::Image application_;
  Gtk::Image badge_;
  Gtk::Overlay icon_;
  Gtk::Label title_;
  Gtk::Box body_;
  Gtk::Box column_;
  Gtk::Box row_;
};

// A text of an alert.
void styleAlertText(Gtk::Label& label);

}  // namespace kelvane
