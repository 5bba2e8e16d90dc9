// Everything that is on the screen, as the resident program asked for it. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtkmm/window.h>
#include <sigc++/connection.h>

#include "platform/linux/windows/window_protocol.h"
#include "programs/kelvane-windows/about_window.h"
#include "programs/kelvane-windows/alert_window.h"
#include "programs/kelvane-windows/menu_window.h"
#include "programs/kelvane-windows/note_window.h"
#include "programs/kelvane-windows/shown_texts.h"
#include "programs/kelvane-windows/tree_window.h"

namespace kelvane {

class OpenWindows {
 public:
  // Tells what the user does by `tell`.
  explicit OpenWindows(std::function<void(const WindowEvent&)> tell) : tell_(std::move(tell)) {}
  ~OpenWindows();
  OpenWindows(const OpenWindows&) = delete;
  OpenWindows& operator=(const OpenWindows&) = delete;

  void greet(const Greeting& greeting);

  void handle(const OpenWindow& request);
  void handle(const ApplySteps& request);
  void handle(const CloseWindow& request);
  void handle(const FrontWindow& request);
  void handle(const ShowAlert& request);
  void handle(const AbortAlert& request);
  void handle(const ShowAbout& request);
  void handle(const ShowPopover& request);
  void handle(const ClosePopover& request);
  void handle(const ActivateWindows& request);
  void handle(const DarkChanged& request);
  void handle(const ShowMenu& request);
  void handle(const CloseMenu& request);

 private:
  // In front of the others, with the token if there is one.
  void present(Gtk::Window& window);
  // Takes a window off the screen now and destroys it later, as this may be its own signal.
  void retire(std::unique_ptr<Gtk::Window> window);
  template <typename W>
  void retire(std::map<std::uint32_t, std::unique_ptr<W>>& windows, std::uint32_t number);
  void retireMenu();
  // Where on the screen the item was clicked.
  std::optional<Point> placeOfClick(const std::optional<Point>& told);

  std::function<void(const WindowEvent&)> tell_;
  ShownTexts texts_;
  std::string token_;
  std::map<std::uint32_t, std::unique_ptr<TreeWindow>> windows_;
  std::map<std::uint32_t, std::unique_ptr<AlertWindow>> alerts_;
  std::map<std::uint32_t, std::unique_ptr<NoteWindow>> notes_;
  std::unique_ptr<AboutWindow> about_;
  std::unique_ptr<MenuWindow> menu_;
  std::uint32_t menuNumber_ = 0;
  std::vector<std::unique_ptr<Gtk::Window>> retired_;
  sigc::connection burial_;
};

}  // namespace kelvane
