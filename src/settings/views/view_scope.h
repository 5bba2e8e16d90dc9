// What a shown tree lives on besides its nodes: what its controls do, and what it is redrawn by.
// Made along with the tree, which the views put together, and dropped as a whole when it is made
// anew. Main thread.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/view_tree.h"
#include "reactive/publisher.h"
#include "store/setting_toggle.h"

namespace kelvane {

class ViewScope {
 public:
  explicit ViewScope(std::function<void()> redraw) : redraw_(std::move(redraw)) {}
  ViewScope(const ViewScope&) = delete;
  ViewScope& operator=(const ViewScope&) = delete;

  // The node's action is its id. A press, or a dismissal.
  void onPress(ViewNode& node, std::function<void()> handler);
  // The new value is 0 or 1 for a toggle, an index of the options for a radio group.
  void onValue(ViewNode& node, std::function<void(int)> handler);

  // The tree shows what is about to change when the publisher sends.
  void redrawOn(const Publisher<std::monostate>& willChange);
  // Kept as long as the tree.
  void keep(std::shared_ptr<const void> part) { parts_.push_back(std::move(part)); }

  // What the user did to a control of this tree, as told by a platform that is not trusted: false,
  // and nothing done, for an action or a value that the tree doesn't have.
  bool perform(const std::string& action, const std::string& id, int value) const;

 private:
  struct Control {
    int values = 0;  // 0: any value is a press
    std::function<void(int)> handler;
  };
  std::function<void()> redraw_;
  std::map<std::string, Control> controls_;
  std::vector<std::shared_ptr<const void>> parts_;
  Cancellables cancellables_;
};

// A node of that kind, id and label.
ViewNode makeNode(ViewNode::Kind kind, std::string id, std::string label = "");

// A setting's toggle, which the scope keeps: a click stores the new value.
ViewNode settingToggle(ViewScope& scope, std::shared_ptr<SettingToggle> toggle, std::string id,
                       std::string help = "");

}  // namespace kelvane
