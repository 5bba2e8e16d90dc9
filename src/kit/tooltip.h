// A popover that points at the status item. Main thread; the windows and preferences outlive it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/preferences.h"
#include "platform/windows.h"

namespace kelvane {

class Tooltip {
 public:
  struct Content {
    std::string text;
    double maximumTextWidth = 0;  // points
    double contentInset = 0;      // points on each of the four sides
    bool isAnimated = true;
  };

  Tooltip(std::string identifier, bool showOnlyOnce, bool showEvenWhenMenuBarItemIsHidden,
          Windows& windows, Preferences& preferences);
  Tooltip(const Tooltip&) = delete;
  Tooltip& operator=(const Tooltip&) = delete;

  // Shows it and answers whether it is shown: not where no popover can be, not at an item that is
  // on no screen unless asked to, and with `showOnlyOnce` at most once ever for the identifier.
  // `didClose` is called once, whoever closes it, and never inside this call.
  bool show(const Content& content, std::function<void()> didClose);
  // Nothing while it is not shown.
  void close();

 private:
  const std::string identifier_;
  const bool showOnlyOnce_;
  const bool showEvenWhenMenuBarItemIsHidden_;
  Windows& windows_;
  Preferences& preferences_;
  std::unique_ptr<PopoverHandle> popover_;
};

}  // namespace kelvane
