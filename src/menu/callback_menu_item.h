// A menu item that calls a stored function, to be added to a menu as a line. Main thread.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/menu.h"

namespace kelvane {

class CallbackMenuItem {
 public:
  using Callback = std::function<void()>;

  CallbackMenuItem(std::string title, Callback callback, KeyEquivalent keyEquivalent = {})
      : callback_(std::move(callback)) {
    line_.title = std::move(title);
    line_.keyEquivalent = std::move(keyEquivalent);
  }

  // Says of every item in the process whether it can be chosen now; empty: each one can.
  inline static std::function<bool(const CallbackMenuItem&)> validationHook;

  const std::string& title() const { return line_.title; }
  bool validate() const { return !validationHook || validationHook(*this); }

  void setEnabled(bool isEnabled) { line_.isEnabled = isEnabled; }
  // Shown in place of the line before while the modifiers of its key equivalent are held.
  void setAlternate(bool isAlternate) { line_.isAlternate = isAlternate; }

  // The line for a menu, which takes over what the item holds; enabled when both the item and the
  // hook say so.
  MenuLine line() &&;

 private:
  Callback callback_;
  MenuLine line_;
};

}  // namespace kelvane
