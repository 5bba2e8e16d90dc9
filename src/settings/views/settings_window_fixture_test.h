// The settings window on an in-memory desktop that follows its steps.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "kit/view_diff.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "settings/views/settings_window.h"

namespace kelvane {

inline const ViewNode* findNode(const ViewNode& node,
                                const std::function<bool(const ViewNode&)>& matches) {
  if (matches(node)) return &node;
  for (const ViewNode& child : node.children)
    if (const ViewNode* found = findNode(child, matches)) return found;
  return nullptr;
}

class SettingsWindowTest : public ::testing::Test {
 protected:
  MemoryWindows::Window& shown() { return *windows.windows.back(); }

  // The tree as the desktop shows it now.
  ViewNode tree() {
    loop.run();
    ViewNode result = shown().tree;
    EXPECT_EQ(applySteps(result, shown().steps), std::nullopt);
    return result;
  }
  // The ids of what was changed since the last call, in order.
  std::vector<std::string> changes() {
    loop.run();
    std::vector<std::string> ids;
    for (const ViewStep& step : shown().steps)
      ids.push_back(step.kind == ViewStep::Kind::set ? "set " + step.node.label
                    : step.kind == ViewStep::Kind::insert
                        ? "insert " + step.node.label
                        : "remove " + step.id.substr(step.id.rfind('/') + 1));
    applySteps(shown().tree, std::exchange(shown().steps, {}));
    return ids;
  }

  std::optional<ViewNode> labelled(const std::string& label) {
    const ViewNode all = tree();
    const ViewNode* found =
        findNode(all, [&](const ViewNode& node) { return node.label == label; });
    return found ? std::optional(*found) : std::nullopt;
  }
  std::optional<ViewNode> ofKind(ViewNode::Kind kind) {
    const ViewNode all = tree();
    const ViewNode* found = findNode(all, [&](const ViewNode& node) { return node.kind == kind; });
    return found ? std::optional(*found) : std::nullopt;
  }
  void act(const ViewNode& node, int value = 0) {
    shown().events.acted(node.action, node.id, value);
  }
  void act(const std::string& label, int value = 0) {
    const auto node = labelled(label);
    ASSERT_TRUE(node && !node->action.empty()) << label;
    act(*node, value);
  }

  MemoryPreferences preferences;
  MemoryRunLoop loop;
  MemoryWindows windows{loop};
  MemoryLoginItems loginItems;
  SettingsKeys settings{preferences};
  AutoStart autoStart{loginItems, "org.kelvane.Kelvane"};
  std::vector<std::string> visibility;  // what the rule found when it was applied
  std::optional<SettingsWindow> window{
      std::in_place, windows, loop, settings, autoStart, "Kelvane", [this] {
        visibility.push_back(settings.hideIconWhenOnPower.get() ? "hide" : "show");
      }};
};

}  // namespace kelvane
