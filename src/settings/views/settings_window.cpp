#include "settings/views/settings_window.h"

#include <utility>

#include "kit/view_diff.h"
#include "settings/views/settings_view.h"

namespace kelvane {

// One window from its opening to its end.
class SettingsWindow::Session : public std::enable_shared_from_this<Session> {
 public:
  explicit Session(SettingsWindow& owner)
      : owner_(owner),
        context_{.runLoop = owner.runLoop_,
                 .settings = owner.settings_,
                 .autoStart = owner.autoStart_,
                 .applyVisibility = owner.applyVisibility_,
                 .redraw = [this] { redrawLater(); }} {}

  // False when no window can be shown.
  bool open() {
    tree_ = makeTree();
    const auto whileOpen = [weak = weak_from_this()](auto&& job) {
      if (const auto self = weak.lock(); self && self->owner_.session_ == self) job(*self);
    };
    ViewWindowEvents events;
    events.acted = [whileOpen](const std::string& action, const std::string& id, int value) {
      whileOpen([&](Session& self) { self.scope_->perform(action, id, value); });
    };
    events.closed = [whileOpen] { whileOpen([](Session& self) { self.owner_.closed(); }); };
    window_ = owner_.windows_.openWindow(owner_.title_, tree_, std::move(events));
    return window_ != nullptr;
  }

  void bringToFront() {
    // What nobody tells us of, such as the login item, may have changed meanwhile.
    redrawLater();
    if (window_) window_->bringToFront();
  }

 private:
  ViewNode makeTree() {
    auto scope = std::make_unique<ViewScope>(context_.redraw);
    ViewNode tree = view_.body(*scope);
    scope_ = std::move(scope);
    return tree;
  }

  // Observers run before a change, and several settings may change in one turn.
  void redrawLater() {
    if (std::exchange(isRedrawQueued_, true)) return;
    context_.runLoop.async([weak = weak_from_this()] {
      if (const auto self = weak.lock()) self->redraw();
    });
  }

  void redraw() {
    isRedrawQueued_ = false;
    if (owner_.session_.get() != this || !window_) return;
    ViewNode tree = makeTree();
    const auto steps = viewDifferences(tree_, tree);
    tree_ = std::move(tree);
    if (!steps.empty()) window_->apply(steps);
  }

  SettingsWindow& owner_;
  const ViewContext context_;
  SettingsView view_{context_};
  std::unique_ptr<ViewScope> scope_;
  ViewNode tree_;
  bool isRedrawQueued_ = false;
  std::unique_ptr<ViewWindow> window_;
};

SettingsWindow::SettingsWindow(Windows& windows, RunLoop& runLoop, const SettingsKeys& settings,
                               AutoStart& autoStart, std::string applicationName,
                               std::function<void()> applyVisibility)
    : windows_(windows),
      runLoop_(runLoop),
      settings_(settings),
      autoStart_(autoStart),
      title_(std::move(applicationName) + " Settings"),
      applyVisibility_(std::move(applyVisibility)) {}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::show() {
  if (session_) {
    session_->bringToFront();
    return;
  }
  session_ = std::make_shared<Session>(*this);
  if (const auto session = session_; !session->open() && session_ == session) session_.reset();
}

void SettingsWindow::closed() {
  closing_ = std::move(session_);
  runLoop_.async([this, closing = std::weak_ptr(closing_)] {
    if (!closing.expired()) closing_.reset();
  });
}

}  // namespace kelvane
