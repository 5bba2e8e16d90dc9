#include "programs/kelvane-windows/open_windows.h"

#include <utility>

#include <glibmm/main.h>

#include "programs/kelvane-windows/look.h"
#include "programs/kelvane-windows/x11_windows.h"

namespace kelvane {

OpenWindows::~OpenWindows() { burial_.disconnect(); }

void OpenWindows::greet(const Greeting& greeting) {
  setDark(greeting.isDark);
  if (greeting.isMotionReduced) reduceMotion();
}

void OpenWindows::handle(const OpenWindow& request) {
  const std::uint32_t number = request.window;
  if (windows_.contains(number)) return;
  auto window = std::make_unique<TreeWindow>(
      request.title, texts_.of(request.tree),
      [this, number](const std::string& action, const std::string& id, int value) {
        tell_(NodeActed{number, action, id, value});
      },
      [this, number] {
        retire(windows_, number);
        tell_(WindowClosed{number});
      });
  TreeWindow& shown = *window;
  windows_.emplace(number, std::move(window));
  present(shown);
  shown.renderer().appear();
}

void OpenWindows::handle(const ApplySteps& request) {
  if (const auto found = windows_.find(request.window); found != windows_.end())
    found->second->renderer().apply(texts_.of(request.steps));
}

void OpenWindows::handle(const CloseWindow& request) { retire(windows_, request.window); }

void OpenWindows::handle(const FrontWindow& request) {
  const auto found = windows_.find(request.window);
  if (found == windows_.end()) return;
  token_ = request.token;
  present(*found->second);
}

void OpenWindows::handle(const ShowAlert& request) {
  const std::uint32_t number = request.alert;
  if (alerts_.contains(number)) return;
  auto alert = std::make_unique<AlertWindow>(request.content, [this, number](int button) {
    retire(alerts_, number);
    tell_(AlertAnswered{number, button});
  });
  AlertWindow& shown = *alert;
  alerts_.emplace(number, std::move(alert));
  present(shown);
}

void OpenWindows::handle(const AbortAlert& request) { retire(alerts_, request.alert); }

void OpenWindows::handle(const ShowAbout& request) {
  if (!about_)
    about_ = std::make_unique<AboutWindow>([this] {
      retire(std::move(about_));
      tell_(AboutClosed{});
    });
  about_->setInformation(request.information);
  present(*about_);
}

void OpenWindows::handle(const ShowPopover& request) {
  const std::uint32_t number = request.popover;
  if (notes_.contains(number)) return;
  if (!request.anchor || !canPlaceWindows()) {
    tell_(PopoverRefused{number});
    return;
  }
  auto note = std::make_unique<NoteWindow>(request, [this, number] {
    retire(notes_, number);
    tell_(PopoverClosed{number});
  });
  NoteWindow& shown = *note;
  notes_.emplace(number, std::move(note));
  shown.set_visible(true);
}

void OpenWindows::handle(const ClosePopover& request) { retire(notes_, request.popover); }

void OpenWindows::handle(const ActivateWindows& request) {
  token_ = request.token;
  placeOfClick(request.anchor);
  for (const auto& [number, window] : windows_) present(*window);
  if (about_) present(*about_);
  for (const auto& [number, alert] : alerts_) present(*alert);
}

void OpenWindows::handle(const DarkChanged& request) { setDark(request.isDark); }

void OpenWindows::handle(const ShowMenu& request) {
  retireMenu();
  ShowMenu menu = request;
  menu.lines = texts_.of(std::move(menu.lines));
  menu.anchor = placeOfClick(menu.anchor);
  menuNumber_ = menu.menu;
  menu_ = std::make_unique<MenuWindow>(
      menu, MenuWindow::Events{[this](std::uint32_t line) {
                                 retireMenu();
                                 tell_(MenuChosen{menuNumber_, line});
                               },
                               [this](bool hasLostFocus) {
                                 retireMenu();
                                 tell_(MenuClosed{menuNumber_, hasLostFocus});
                               }});
  token_ = menu.token;
  menu_->popUp([this](Gtk::Window& window) { present(window); });
}

void OpenWindows::handle(const CloseMenu& request) {
  if (request.menu == menuNumber_) retireMenu();
}

std::optional<Point> OpenWindows::placeOfClick(const std::optional<Point>& told) {
  if (!told || !canPlaceWindows()) return std::nullopt;
  const Point place = clickPlaceOnScreen(*told);
  if (place != *told) tell_(ItemClicked{*told, place});
  return place;
}

void OpenWindows::present(Gtk::Window& window) {
  if (!token_.empty()) window.set_startup_id(std::exchange(token_, ""));
  presentInFront(window.gobj());
}

void OpenWindows::retire(std::unique_ptr<Gtk::Window> window) {
  window->set_visible(false);
  retired_.push_back(std::move(window));
  if (!burial_.connected())
    burial_ = Glib::signal_idle().connect([this] {
      retired_.clear();
      return false;
    });
}

void OpenWindows::retireMenu() {
  if (!menu_) return;
  menu_->release();
  retire(std::move(menu_));
}

template <typename W>
void OpenWindows::retire(std::map<std::uint32_t, std::unique_ptr<W>>& windows,
                         std::uint32_t number) {
  if (auto found = windows.extract(number)) retire(std::move(found.mapped()));
}

}  // namespace kelvane
