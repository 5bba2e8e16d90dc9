// What the views of the settings are given, and the state that is theirs alone. Main thread.
#pragma once

#include <functional>
#include <utility>

#include "kit/auto_start.h"
#include "platform/run_loop.h"
#include "settings/settings_keys.h"

namespace kelvane {

// The same for all views of a window; it and what it refers to outlive them.
struct ViewContext {
  RunLoop& runLoop;
  const SettingsKeys& settings;
  AutoStart& autoStart;
  // The visibility rule of the item, at once.
  std::function<void()> applyVisibility;
  // Asks for the tree to be made anew in a later turn.
  std::function<void()> redraw;
};

// Something that a view neither owns nor keeps, to be read and written.
template <typename V>
struct Binding {
  std::function<V()> get;
  std::function<void(const V&)> set;
};

// A view's own value, gone with the view.
template <typename V>
class ViewState {
 public:
  ViewState(const ViewContext& context, V value) : context_(context), value_(std::move(value)) {}

  const V& get() const { return value_; }
  void set(V value) {
    value_ = std::move(value);
    context_.redraw();
  }

 private:
  const ViewContext& context_;
  V value_;
};

}  // namespace kelvane
