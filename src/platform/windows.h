// Windows: settings, alerts, the about panel, a popover at the status item. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/application_information.h"
#include "platform/geometry.h"
#include "platform/picture.h"
#include "platform/view_tree.h"

namespace kelvane {

enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

struct Alert {
  std::string title;
  std::string message;  // empty: none
  AlertStyle style = AlertStyle::warning;
  std::vector<std::string> buttons;  // empty: the platform's one default button
  double minimumWidth = 0;           // points; 0: by content
  std::optional<Picture> icon;       // absent: the application's own
};

// A modal alert that is being shown. Destroying the handle leaves the alert alone.
class AlertHandle {
 public:
  virtual ~AlertHandle() = default;
  // Ends the alert as if it was dismissed; `done` is called in a later turn. Nothing when it has
  // ended already.
  virtual void abort() = 0;
};

struct PopoverContent {
  std::string identifier;
  std::string text;
  double maximumTextWidth = 0;  // points
  double inset = 0;             // points on each side
  bool isAnimated = true;
  bool showsWithoutItem = false;  // also while the status item is on no screen
};

class PopoverHandle {
 public:
  virtual ~PopoverHandle() = default;
  virtual void close() = 0;
};

// A window that draws a view tree. Destroying it closes the window without calling `closed`.
class ViewWindow {
 public:
  virtual ~ViewWindow() = default;
  virtual void apply(const std::vector<ViewStep>& steps) = 0;
  virtual void bringToFront() = 0;
};

struct ViewWindowEvents {
  // The user acted on a node: its action id, the node's id, and for toggles and radio groups the
  // new value (0 or 1, or the index).
  std::function<void(const std::string& action, const std::string& id, int value)> acted;
  std::function<void()> closed;  // the user or the platform closed the window
};

class Windows {
 public:
  virtual ~Windows() = default;

  // Makes this application the active one, in front of the others.
  virtual void activate() = 0;

  // Shows a modal alert. The run loop is in its modal mode until `done` is called, exactly once and
  // never inside this call, with the index of the pressed button (0 when aborted).
  [[nodiscard]] virtual std::unique_ptr<AlertHandle> alert(const Alert& alert,
                                                           std::function<void(int)> done) = 0;

  // Opens a window with this tree; null when no window can be shown.
  [[nodiscard]] virtual std::unique_ptr<ViewWindow> openWindow(const std::string& title,
                                                               const ViewNode& tree,
                                                               ViewWindowEvents events) = 0;

  virtual void showAboutPanel(const ApplicationInformation& information) = 0;

  // Shows a popover at the status item; null, and no call of `closed`, when it can't be shown.
  [[nodiscard]] virtual std::unique_ptr<PopoverHandle> showPopover(
      const PopoverContent& content, std::function<void()> closed) = 0;
};

}  // namespace kelvane
